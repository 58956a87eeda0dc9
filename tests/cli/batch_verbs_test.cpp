// SPDX-License-Identifier: GPL-3.0-or-later
// Verbs that convert many files, as users start them.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/cli_run.h"

namespace orvane::testing {
namespace {

// A frequency-domain record without items, all numbers 0.
std::string StackRecord() { return std::string(70, '\0'); }
constexpr const char* kStackLine =
    "        ,          00:00:00, 0000, 0, 00,     0.000000,    0.00, \n";

TEST(BatchVerbs, ConvertsAThousandFilesButForTheBadOnes) {
  const TempDir dir;
  std::string expected;
  for (int i = 0; i < 1000; ++i) {
    const std::string name = "f" + std::to_string(1000 + i);
    if (i % 200 == 150) {
      std::filesystem::create_directory(dir / (name + ".trs"));
    } else {
      WriteAll(dir / (name + ".trs"), StackRecord());
      expected += name + ".csv\n";
    }
  }
  const Outcome outcome = RunCli(dir, "stack csv --frequency-domain --jobs 3 f*.trs");
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_EQ(outcome.out, expected);
  EXPECT_EQ(outcome.err,
            "orvane-cli: f1150.trs: Is a directory\norvane-cli: f1350.trs: Is a directory\n"
            "orvane-cli: f1550.trs: Is a directory\norvane-cli: f1750.trs: Is a directory\n"
            "orvane-cli: f1950.trs: Is a directory\n");
  EXPECT_EQ(ReadAll(dir / "f1999.csv"), kStackLine);
}

TEST(BatchVerbs, TellWhatHappenedToEachFile) {
  const TempDir dir;
  const std::string table = std::string("TECH\0\0\0\0\0\0\0\0\5", 13) + std::string(12, '\0');
  WriteAll(dir / "a.tbl", table + table.substr(0, 10));
  WriteAll(dir / "[a,b]", StackRecord());
  WriteAll(dir / "x.csv", StackRecord());
  WriteAll(dir / "bad.tbl", std::string(40, '!'));
  WriteAll(dir / "file", "");
  struct Case {
    const char* arguments;
    int exit_code;
    const char* out;
    const char* named;
  };
  // Windows does not tell a file in the place of a folder from nothing there.
  const char* in_file = WindowsTool() != nullptr ? "No such file" : "Not a directory";
  for (const auto& [arguments, exit_code, out, named] : {
           Case{"table text a.tbl", 0, "a.txt\n",
                "holds 1 of 719 parameters, the record at offset 25 is cut"},
           Case{"table text a bad.tbl no.tbl", 1, "a.txt\n", "bad.tbl: not a TBL file (6)"},
           Case{"table text --out o/p a.tbl", 0, "o/p/a.txt\n", "offset 25"},
           Case{"table to-v1 --out v1 a.tbl bad.tbl", 1, "v1/a.tbl\n",
                "bad.tbl: left alone: not a TBL file (174)"},
           Case{"table to-v1 --out . a.tbl", 1, "", "is the input itself"},
           Case{"table to-v1 a.tbl", 0, "a.tbl\n", "already version 1"},
           Case{"stack csv --time-domain '[a,b]'", 0, "./[a,b].csv\n", ""},
           Case{"stack csv --time-domain x.csv", 1, "", "x.csv: x.csv: is the input itself"},
           Case{"stack csv --time-domain --out file '[a,b]'", 1, "", in_file},
           Case{"stack csv --time-domain -- -x.trs", 1, "", "-x.trs: No such file"},
           Case{"stack csv --time-domain --out /dev/full/x '[a,b]'", 1, "", in_file},
           Case{"stack csv '[a,b]'", 2, "", "--time-domain"},
           Case{"stack csv --time-domain --frequency-domain '[a,b]'", 2, "", "Exactly 1"},
           Case{"stack csv --time-domain --jobs 0 '[a,b]'", 2, "", "--jobs"},
           Case{"stack csv --time-domain --jbs 2 '[a,b]'", 2, "", "--jbs"},
           Case{"table text", 2, "", "FILE"},
           Case{"table text ''", 2, "", "the name is empty"},
       }) {
    const Outcome outcome = RunCli(dir, arguments);
    EXPECT_EQ(outcome.exit_code, exit_code) << arguments;
    EXPECT_EQ(Slashed(outcome.out), out) << arguments;
    EXPECT_NE(outcome.err.find(named), std::string::npos) << arguments << ": " << outcome.err;
  }
  EXPECT_EQ(ReadAll(dir / "a.txt"), "TECH    ,     ,    ,    ,    ,  Int,  5,\n");
  EXPECT_EQ(ReadAll(dir / "v1/a.tbl").size(), 7150U);
  EXPECT_EQ(ReadAll(dir / "a.tbl.bak"), table + table.substr(0, 10));
}

}  // namespace
}  // namespace orvane::testing
