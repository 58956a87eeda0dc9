// SPDX-License-Identifier: GPL-3.0-or-later
// The tool as users start it.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

#include "support/cli_run.h"

namespace orvane::testing {
namespace {

class TableCommands : public ::testing::Test {
 protected:
  // A version-2 file of two records: TECH 1 and STIM.
  void SetUp() override {
    std::string bytes("\x03\0.TBL2%", 8);
    bytes.resize(32);
    bytes += Record("TECH", 0, std::string("\1\0\0\0", 4));
    bytes += Record("SITN", 2, "a\tb");
    WriteAll(dir_ / "two.tbl", bytes);
  }

  static std::string Record(std::string key, char type, std::string value) {
    key.resize(15);
    value.resize(16);
    return key + type + value;
  }

  Outcome Run(const std::string& arguments) const { return RunCli(dir_, arguments); }

  TempDir dir_;
};

TEST_F(TableCommands, ShowPrintsAHeaderAndEveryParameter) {
  const Outcome shown = Run("table show two.tbl");
  EXPECT_EQ(shown.exit_code, 0);
  EXPECT_EQ(std::count(shown.out.begin(), shown.out.end(), '\n'), 720);
  EXPECT_EQ(shown.out.substr(0, shown.out.find('\n')), "No.\tCode\tType\tWrite Permission\tValue");
  EXPECT_NE(shown.out.find("\n1\tTBVO\tIntPT\tAny Mode\t2\n"), std::string::npos);
  EXPECT_NE(shown.out.find("\tSITN\tStrPT\tAny Mode\ta\\x09b\n"), std::string::npos);
  EXPECT_EQ(shown.err,
            "orvane-cli: two.tbl: holds 2 of 719 parameters; the others have their defaults\n");
}

TEST_F(TableCommands, ShowAsABoxTakesIt) {
  WriteAll(dir_ / "start.tbl", ReadAll(dir_ / "two.tbl") + Record("SNUM", 0, "\x18") +
                                   Record("NONE", 0, "") + Record("LINE", 0, "") +
                                   Record("RQST", 2, "") +
                                   Record("RQST", 0, std::string("\x9\0\0\0", 4)) + "cut");
  const Outcome shown = Run("table show start.tbl --as-box");
  EXPECT_EQ(shown.exit_code, 0);
  const std::string rows = shown.out.substr(shown.out.find('\n') + 1);
  EXPECT_EQ(std::count(rows.begin(), rows.end(), '\n'), 4) << rows << "TBVI twice";
  EXPECT_NE(rows.find("\tTECH\tIntPT\tSetup Only\t1\n"), std::string::npos) << rows;
  EXPECT_NE(rows.find("\tSITN\tStrPT\tAny Mode\ta\\x09b\n"), std::string::npos) << rows;
  const std::string named = "orvane-cli: start.tbl: ";
  EXPECT_EQ(shown.err, named + "SNUM is left out: writing is not permitted in the current mode\n" +
                           named + "NONE is left out: no such parameter\n" + named +
                           "LINE is left out: the parameter has another type\n" + named +
                           "RQST is left out: the parameter has another type\n" + named +
                           "RQST is left out: the action 9 is no request\n" + named +
                           "the record at offset 256 is cut and left out: 3 bytes\n" + named +
                           "a box takes 3 parameters of it; the others keep their values\n");
  EXPECT_EQ(Run("table show --as-box nowhere.tbl").exit_code, 1);
}

// Tables hold Latin-1; what is typed and read is UTF-8, whatever the locale.
TEST_F(TableCommands, TextsAreLatin1InTablesAndUtf8Outside) {
  const bool has_bytes = WindowsTool() == nullptr;  // there arguments are Unicode
  for (const char* locale : {"LC_ALL=C ", "LC_ALL=de_DE "}) {
    const std::string tool = (has_bytes ? locale : "") + ("'" + ToolPath()) + "' ";
    const std::string set = "cd '" + dir_.Path().string() + "' && " + tool +
                            "table set two.tbl 'SITE=Z\xc3\xbcrich' 'LINE=\xc2\x9f\\' --to a.tbl";
    ASSERT_EQ(std::system((set + " 2>err.txt").c_str()), 0);
    const std::string bytes = ReadAll(dir_ / "a.tbl");
    EXPECT_NE(bytes.find(Record("SITE", 2, "Z\xfcrich").substr(15)), std::string::npos);
    EXPECT_EQ(Run("table get a.tbl SITE LINE").out, "SITE=Z\xc3\xbcrich\nLINE=\\x9F\\\n");
  }
  const Outcome greek = Run("table set a.tbl 'SITE=\xce\xa9' TECH=2");
  EXPECT_EQ(greek.exit_code, 1);
  EXPECT_NE(greek.err.find("has the character \"\xce\xa9\" (U+03A9)"), std::string::npos);
  if (has_bytes) {
    EXPECT_NE(Run("table set a.tbl 'SITE=Z\xfcrich'").err.find("is not UTF-8 at byte 2"),
              std::string::npos);
  }
  EXPECT_NE(Run("table diff a.tbl two.tbl").out.find("SITE\tZ\xc3\xbcrich\t\n"), std::string::npos);
  EXPECT_EQ(Run("table text a.tbl").exit_code, 0);
  EXPECT_NE(ReadAll(dir_ / "a.txt").find("Z\xfcrich,"), std::string::npos) << "as stored";
}

TEST_F(TableCommands, DamagedTablesAreToldAndGetNoStartUpFiles) {
  std::string part = ReadAll(dir_ / "two.tbl").substr(0, 32);
  for (int i = 0; i < 400; ++i) {
    part += Record("SNUM", 0, "\x18");  // the same again and again
  }
  WriteAll(dir_ / "zeros.tbl", std::string(7150, '\0'));
  WriteAll(dir_ / "part.tbl", part);
  ASSERT_EQ(Run("table set two.tbl SNUM=24 SNTX=0 --to whole.tbl").exit_code, 0);
  const std::string whole = ReadAll(dir_ / "whole.tbl");
  WriteAll(dir_ / "half.tbl", whole.substr(0, 32 + 32 * 359));
  std::string no_serial = whole;
  no_serial.replace(no_serial.find("SNUM"), 4, "XXXX");
  WriteAll(dir_ / "serial.tbl", no_serial);
  for (const auto& [name, held] :
       {std::pair{"zeros.tbl", 0}, {"part.tbl", 1}, {"half.tbl", 376}, {"serial.tbl", 718}}) {
    const Outcome refused = Run(std::string("table startup --out boxes ") + name);
    EXPECT_EQ(refused.exit_code, 1) << name;
    EXPECT_NE(refused.err.find("holds " + std::to_string(held) + " of 719"), std::string::npos)
        << refused.err;
    EXPECT_FALSE(std::filesystem::exists(dir_ / "boxes")) << name;
  }
  EXPECT_EQ(Run("table get part.tbl TECH").out, "TECH=5\n") << "a file without the method";
  EXPECT_EQ(Slashed(Run("table startup --out boxes --partial part.tbl").out), "boxes/24.tbl\n");
}

TEST_F(TableCommands, GetSetAndDiff) {
  EXPECT_EQ(Run("table get two.tbl tech SITN").out, "TECH=1\nSITN=a\\x09b\n");
  const Outcome missing = Run("table get two.tbl TECH nowhere MODEXXXXX");
  EXPECT_EQ(missing.exit_code, 1);
  EXPECT_EQ(missing.out, "TECH=1\n");
  EXPECT_NE(missing.err.find("nowhere: no such parameter"), std::string::npos);

  EXPECT_EQ(
      Run("table set two.tbl tech=3 'STIM=2026/02/28 5:06' FDRIFT=-1.5e-3 --to new.tbl").exit_code,
      0);
  EXPECT_EQ(ReadAll(dir_ / "new.tbl").size(), 23040U);
  const Outcome diff = Run("table diff two.tbl new.tbl");
  EXPECT_EQ(diff.exit_code, 1);
  EXPECT_EQ(diff.out, "STIM\t00:00:00\t2026/02/28 05:06:00\nTECH\t1\t3\nFDRIFT\t0\t-0.0015\n");
  const Outcome explained = Run("table diff two.tbl new.tbl --explain");
  EXPECT_EQ(explained.exit_code, 1);
  EXPECT_NE(explained.out.find("\nTECH\t1\t3\tSurvey method\t\tSIP\tTDEM\nFDRIFT\t0\t-0.0015\t"
                               "Drift correction frequency\tHz\t\t\n"),
            std::string::npos);
  const Outcome same = Run("table diff new.tbl new.tbl");
  EXPECT_EQ(same.exit_code, 0);
  EXPECT_EQ(same.out + same.err, "");
}

// What one table has more than another is a file of lines, which makes the other the same.
TEST_F(TableCommands, DifferencesAsValuesMakeOneTableTheOther) {
  ASSERT_EQ(
      Run("table set two.tbl FDRIFT=0.3333333333333333 'SITE= a' EKEY=77 --to b.tbl").exit_code, 0);
  const std::string lines =
      "FDRIFT=0.3333333333333333\n# shown as  a\nSITE=hex:2061" + std::string(28, '0') + "\n";
  const Outcome some = Run("table diff two.tbl b.tbl --as-values");
  EXPECT_EQ(some.exit_code, 1);
  EXPECT_EQ(some.out, lines + "# left out: EKEY\n");
  EXPECT_NE(some.err.find("(--with-secrets): 1"), std::string::npos) << some.err;
  const Outcome all = Run("table diff two.tbl b.tbl --as-values --with-secrets");
  EXPECT_NE(all.out.find("EKEY=77\n"), std::string::npos) << all.out;
  WriteAll(dir_ / "v.txt", all.out);
  ASSERT_EQ(Run("table set two.tbl --from v.txt --to c.tbl").exit_code, 0);
  EXPECT_EQ(ReadAll(dir_ / "c.tbl"), ReadAll(dir_ / "b.tbl"));
  const Outcome same = Run("table diff b.tbl c.tbl --as-values");
  EXPECT_EQ(std::to_string(same.exit_code) + same.out + same.err, "0");
  ASSERT_EQ(Run("table set b.tbl EKEY=5 --from v.txt").exit_code, 0);
  EXPECT_EQ(Run("table get b.tbl EKEY").out, "EKEY=5\n") << "arguments come after the file";

  WriteAll(dir_ / "bad.txt", "TECH=2\n\nNOKEY=1\nTBVO=7\nTECH=x\nCOMBON=1\nTBVI=1\nwhat\n");
  const std::string before = ReadAll(dir_ / "b.tbl");
  const Outcome refused = Run("table set b.tbl --tbl-version 1 --from bad.txt");
  EXPECT_EQ(refused.exit_code, 1);
  EXPECT_EQ(ReadAll(dir_ / "b.tbl"), before);
  for (const char* named : {"bad.txt: line 3: NOKEY: no such", "line 4: TBVO: the value is not a",
                            "line 5: TECH: \"x\" is", "line 6: COMBON: a version-1", "line 7: TBVI",
                            "line 8: is not of the form", "nothing was written"}) {
    EXPECT_NE(refused.err.find(named), std::string::npos) << refused.err;
  }
  EXPECT_EQ(std::count(refused.err.begin(), refused.err.end(), '\n'), 7);
  WriteAll(dir_ / "large.txt", std::string((1 << 20) + 1, '\n'));
  for (const char* file : {"large.txt", "nowhere.txt", "."}) {
    const Outcome outcome = Run(std::string("table set b.tbl --from ") + file);
    EXPECT_EQ(outcome.exit_code, 1);
    EXPECT_NE(outcome.err.find(file), std::string::npos) << outcome.err;
  }
  EXPECT_EQ(Run("table diff b.tbl b.tbl --with-secrets").exit_code, 2);
}

TEST_F(TableCommands, RecordsWithoutAPlaceAreToldAndCompared) {
  const std::string two = ReadAll(dir_ / "two.tbl");
  WriteAll(dir_ / "a.tbl", two + Record("NEWKEY", 0, "\1") + Record("SNUM", 2, "x") + "cut");
  WriteAll(dir_ / "b.tbl", two + Record("NEWKEY", 0, "\2") + Record("SNUM", 2, "x"));
  const Outcome shown = Run("table show a.tbl --report");
  EXPECT_EQ(shown.out, Run("table show two.tbl").out);
  EXPECT_EQ(shown.err.substr(shown.err.find('\n') + 1),
            "orvane-cli: a.tbl: 2 records are left out: NEWKEY, SNUM\n"
            "orvane-cli: a.tbl: offset 96: NEWKEY is left out: no such parameter\n"
            "orvane-cli: a.tbl: offset 128: SNUM is left out: the parameter has another type\n"
            "orvane-cli: a.tbl: the record at offset 160 is cut and left out: 3 bytes\n");
  const Outcome differ = Run("table diff a.tbl b.tbl");
  EXPECT_EQ(differ.exit_code, 1);
  EXPECT_EQ(differ.out, "");
  EXPECT_NE(differ.err.find("differ in records that are left out"), std::string::npos);
  EXPECT_EQ(Run("table diff b.tbl b.tbl").exit_code, 0);
  EXPECT_EQ(Run("table diff two.tbl b.tbl").exit_code, 1);
  WriteAll(dir_ / "c.tbl", two + "cut");
  const Outcome end = Run("table diff two.tbl c.tbl");
  EXPECT_EQ(end.exit_code, 1);
  EXPECT_NE(end.err.find("c.tbl: the record at offset 96 is cut and left out: 3 bytes\n"),
            std::string::npos);
  const Outcome set = Run("table set a.tbl TECH=2");
  EXPECT_EQ(set.exit_code, 0);
  EXPECT_NE(set.err.find("a.tbl: is written without 2 records of a.tbl: NEWKEY, SNUM\n"),
            std::string::npos)
      << set.err;
}

TEST_F(TableCommands, ExplainsParameters) {
  const std::string header =
      "Code\tType\tWrite Permission\tName\tUnit\tRange\tCoded Values\tWhere\n";
  const Outcome two = Run("table explain hsmp nowhere SITN");
  EXPECT_EQ(two.exit_code, 1);
  EXPECT_EQ(two.out, header +
                         "HSMP\tIntPT\tSetup Only\tTime slot length\ts\t1 to 3600\t\t"
                         "Acquisition Parameters: Time slot length (s)\n"
                         "SITN\tStrPT\tAny Mode\tnot used by Orvane\t\t\t\t\n");
  EXPECT_NE(two.err.find("nowhere: no such parameter"), std::string::npos);
  const std::string all = Run("table explain").out;
  EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 701) << "those that stand twice once";
  for (const char* as_box : {"", "--as-box "}) {
    const Outcome shown = Run(std::string("table show --explain ") + as_box + "two.tbl");
    EXPECT_EQ(shown.out.find("No.\tCode\tType\tWrite Permission\tValue\tName\tUnit\tMeans\n"), 0U);
    EXPECT_NE(shown.out.find("\tTECH\tIntPT\tSetup Only\t1\tSurvey method\t\tSIP\n"),
              std::string::npos);
  }
}

TEST_F(TableCommands, SetRefusesWhatIsNotWhollyRight) {
  const std::string before = ReadAll(dir_ / "two.tbl");
  struct Case {
    const char* arguments;
    const char* named;
  };
  for (const auto& [arguments, named] : {
           Case{"TECH=3x", "TECH"},
           Case{"TECH=", "TECH"},
           Case{"TECH=2147483648", "TECH"},
           Case{"SITE=1234567890123456", "SITE"},
           Case{"FDRIFT=0,5", "FDRIFT"},
           Case{"FDRIFT=nan", "FDRIFT"},
           Case{"FDRIFT=1e999", "FDRIFT"},
           Case{"STIM=2026/02/29", "STIM"},
           Case{"STIM=2026/02/28T05:06", "STIM"},
           Case{"TECHX=1", "TECHX"},
           Case{"TBVI=1", "TBVI"},
           Case{"TBVO=7", "TBVO"},
           Case{"COMBON=1 --tbl-version 1", "COMBON"},
           Case{"SITN=123456789 --tbl-version 1", "SITN"},
       }) {
    const Outcome outcome = Run(std::string("table set two.tbl MODE=1 ") + arguments);
    EXPECT_EQ(outcome.exit_code, 1) << arguments;
    EXPECT_NE(outcome.err.find(named), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(ReadAll(dir_ / "two.tbl"), before) << arguments;
  }
}

TEST_F(TableCommands, SetKeepsVersionsStraight) {
  ASSERT_EQ(Run("table set two.tbl TBVO=1 --tbl-version 1 --to one.tbl").exit_code, 0);
  EXPECT_EQ(ReadAll(dir_ / "one.tbl").size(), 7150U);
  EXPECT_EQ(Run("table get one.tbl TBVO TBVI").out, "TBVO=1\nTBVI=1\n");
  const Outcome rewritten = Run("table set one.tbl TECH=2");
  EXPECT_EQ(rewritten.exit_code, 0);
  EXPECT_NE(rewritten.err.find("version 1, is written as version 2"), std::string::npos);
  EXPECT_EQ(ReadAll(dir_ / "one.tbl").size(), 23040U);
  EXPECT_EQ(Run("table get one.tbl TBVO TBVI TECH").out, "TBVO=1\nTBVI=2\nTECH=2\n");
}

TEST_F(TableCommands, TellsWhyAFileFails) {
  WriteAll(dir_ / "empty.tbl", "");
  WriteAll(dir_ / "text.tbl", "This is a text and no parameter table at all.");
  struct Case {
    const char* arguments;
    const char* message;
  };
  for (const auto& [arguments, message] : {
           Case{"table show nowhere.tbl", "nowhere.tbl: No such file or directory (173)"},
           Case{"table show .", ".: Is a directory (173)"},
           Case{"table show empty.tbl", "empty.tbl: too short for a TBL file (173)"},
           Case{"table get text.tbl TECH", "text.tbl: not a TBL file (174)"},
           Case{"table diff two.tbl text.tbl", "text.tbl: not a TBL file (174)"},
           Case{"table set text.tbl TECH=1 --to x.tbl", "text.tbl: not a TBL file (174)"},
           Case{"table set two.tbl TECH=1 --to no/x.tbl",
                "no/x.tbl: No such file or directory (172)"},
           Case{"table set two.tbl TECH=1 --to /dev/full",
                "/dev/full: No space left on device (172)"},
       }) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exit_code, 1) << arguments;
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find(message), std::string::npos) << outcome.err;
  }
  EXPECT_FALSE(std::filesystem::exists(dir_ / "x.tbl"));
  // Results that cannot be delivered are a failure too.
  const std::string to_full = "cd '" + dir_.Path().string() + "' && '" + testing::ToolPath() +
                              "' table show two.tbl >/dev/full 2>err.txt";
  EXPECT_EQ(WEXITSTATUS(std::system(to_full.c_str())), 1);
}

TEST_F(TableCommands, UsageErrorsAreTwoHelpAndVersionAreNone) {
  for (const char* arguments : {"", "table", "table show", "table get two.tbl", "table set two.tbl",
                                "table set two.tbl TECH", "table show two.tbl --nonsense",
                                "table set two.tbl TECH=1 --tbl-version 3", "nonsense",
                                "table set two.tbl TECH=1 --to ''"}) {
    const Outcome outcome = Run(arguments);
    EXPECT_EQ(outcome.exit_code, 2) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
    EXPECT_NE(outcome.err, "") << arguments;
  }
  for (const char* arguments :
       {"", "table", "table show", "table get", "table set", "table diff"}) {
    const Outcome help = Run(std::string(arguments) + " --help");
    EXPECT_EQ(help.exit_code, 0);
    EXPECT_NE(help.out.find("Usage: orvane-cli"), std::string::npos) << arguments;
    EXPECT_EQ(Run(std::string(arguments) + " --version").out, "orvane-cli 5.1\n") << arguments;
  }
}

TEST_F(TableCommands, CheckSaysWhatIsWrong) {
  const std::string right =
      "table set two.tbl SNUM=7 SNTX=8 CSSN=1 CNOM=1 CREQ=8 FLAG1=0 FLAG2=0 FLAG3=0 --to ";
  ASSERT_EQ(Run(right + "right.tbl").exit_code, 0);
  ASSERT_EQ(Run(right + "hint.tbl MODE=2").exit_code, 0);
  ASSERT_EQ(Run(right + "wrong.tbl LFRQ=16 \"CHDEF1=\xC3\xBC\"").exit_code, 0);
  const Outcome good = Run("table check right.tbl --now '2026/11/20 06:00'");
  EXPECT_EQ(good.exit_code, 0);
  EXPECT_EQ(good.out, "");
  EXPECT_EQ(Run("table check right.tbl --format json").out, "[]\n");
  const std::string hint =
      "\thint\tmode\t\tMODE\tMODE is 2: the table is not one of a box in set-up\n";
  const Outcome hinted = Run("table check right.tbl hint.tbl");
  EXPECT_EQ(hinted.exit_code, 0);
  EXPECT_EQ(hinted.out, "hint.tbl" + hint);
  const Outcome both = Run("table check none.tbl wrong.tbl hint.tbl");
  EXPECT_EQ(both.exit_code, 1);
  EXPECT_NE(both.err.find("none.tbl"), std::string::npos);
  EXPECT_EQ(both.out,
            "wrong.tbl\twarning\tline-code\t\tLFRQ\tLFRQ is 16: mains have 50 or 60 Hz\n"
            "wrong.tbl\thint\tchannel-off\tLocal Box 7\tFLAG1\t"
            "Defined, but not recorded (flag 0): channel 1\n"
            "hint.tbl" +
                hint);
  EXPECT_EQ(Run("table check wrong.tbl --set none").exit_code, 1);
  const std::string json = Run("table check hint.tbl --format json").out;
  EXPECT_EQ(json,
            "[\n  {\n    \"file\": \"hint.tbl\",\n    \"severity\": \"hint\",\n"
            "    \"id\": \"mode\",\n    \"box\": \"\",\n    \"keys\": [\n      \"MODE\"\n    ],\n"
            "    \"sentence\": \"MODE is 2: the table is not one of a box in set-up\"\n  }\n]\n");
  for (const char* usage : {"", "right.tbl --now yesterday", "right.tbl --format xml"}) {
    EXPECT_EQ(Run(std::string("table check ") + usage).exit_code, 2) << usage;
  }
}

TEST_F(TableCommands, StartupWritesAFileForEachBox) {
  const std::string boxes = "SNUM=2417 SNTX=3105 SN01=1203 SN02=0 SN03=1211";
  ASSERT_EQ(Run("table set two.tbl " + boxes + " --to a.tbl").exit_code, 0);
  const Outcome serial = Run("table startup a.tbl --out boxes");
  EXPECT_EQ(serial.exit_code, 0);
  EXPECT_EQ(Slashed(serial.out), "boxes/3105.tbl\nboxes/2417.tbl\nboxes/1203.tbl\n");
  EXPECT_NE(serial.err.find("auxiliary box 1211 comes after an empty place"), std::string::npos);
  EXPECT_EQ(Run("table get boxes/1203.tbl SNUM").out, "SNUM=1203\n");

  const Outcome startup = Run("table startup a.tbl --out boxes --names startup --tbl-version 1");
  EXPECT_EQ(Slashed(startup.out),
            "boxes/3105/StartUp.tbl\nboxes/2417/StartUp.tbl\nboxes/1203/StartUp.tbl\n");
  EXPECT_NE(startup.err.find("\"TBVO\" is not 1"), std::string::npos);

  const Outcome with_verify = Run("table startup a.tbl --out boxes --verify");
  EXPECT_EQ(with_verify.exit_code, 1) << "1211 has none";
  const std::string verified = Slashed(with_verify.out);
  EXPECT_EQ(verified.find("boxes/3105.tbl\t2\t23040\t"), 0U) << verified;
  EXPECT_TRUE(verified.ends_with("\tverified\n") || verified.ends_with("\tread back from memory\n"))
      << "the second on disks that are memory: " << verified;

  // Neither the table read nor a file made a moment ago is written over.
  ASSERT_EQ(Run("table set a.tbl SN02=3105 SN03=0 --to boxes/2417.tbl").exit_code, 0);
  std::filesystem::remove(dir_ / "boxes/1203.tbl");
  std::filesystem::create_symlink("3105.tbl", dir_ / "boxes/1203.tbl");
  const std::string before = ReadAll(dir_ / "boxes/2417.tbl");
  const Outcome refused = Run("table startup boxes/2417.tbl --out boxes");
  EXPECT_EQ(refused.exit_code, 1);
  EXPECT_EQ(Slashed(refused.out), "boxes/3105.tbl\n");
  EXPECT_EQ(Run("table get boxes/3105.tbl SNUM").out, "SNUM=3105\n");
  EXPECT_EQ(ReadAll(dir_ / "boxes/2417.tbl"), before);
}

TEST_F(TableCommands, BecomeJsonAndComeBack) {
  WriteAll(dir_ / "s.tbl", ReadAll(dir_ / "two.tbl") + Record("FTPSPWD", 4, "k3yk3y"));
  const Outcome open = Run("table json s.tbl");
  EXPECT_EQ(open.exit_code, 0);
  EXPECT_EQ(open.out.find("k3yk3y"), std::string::npos);
  EXPECT_NE(open.err.find("are left out (--with-secrets): "), std::string::npos) << open.err;
  EXPECT_EQ(Run("table json s.tbl --with-secrets --to s.json").exit_code, 0);
  EXPECT_EQ(Run("table from-json s.json --to t.tbl").exit_code, 0);
  EXPECT_EQ(Run("table get t.tbl TECH FTPSPWD").out, "TECH=1\nFTPSPWD=k3yk3y\n");
  WriteAll(dir_ / "open.json", open.out);
  const Outcome partial = Run("table from-json open.json --to t.tbl");
  EXPECT_EQ(partial.exit_code, 0);
  EXPECT_NE(partial.err.find("so they have their defaults: "), std::string::npos);
  for (const char* refused :
       {"table json s.tbl --to ./s.tbl", "table json nowhere.tbl",
        "table from-json s.json --to ./s.json", "table from-json s.tbl --to u.tbl"}) {
    EXPECT_EQ(Run(refused).exit_code, 1) << refused;
  }
  EXPECT_FALSE(std::filesystem::exists(dir_ / "u.tbl"));
}

}  // namespace
}  // namespace orvane::testing
