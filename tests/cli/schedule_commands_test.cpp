// SPDX-License-Identifier: GPL-3.0-or-later
// The tool as users start it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "support/cli_run.h"
#include "support/temp_dir.h"
#include "support/tfs_bytes.h"

namespace orvane::testing {
namespace {

class ScheduleCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    WriteAll(dir_ / "t.tbl", HeaderV2() + RecordV2("TTOT", kMaskAnyMode, IntPT, IntBytes(2700)) +
                                 RecordV2("AUTO", kMaskAnyMode, IntPT, IntBytes(0)));
  }
  // Exit code, then what stands on stdout and, behind a bar, on stderr.
  std::string Run(const std::string& arguments) const {
    const std::string command = "cd '" + dir_.Path().string() + "' && '" + testing::ToolPath() +
                                "' schedule " + arguments + " >out.txt 2>err.txt";
    const int status = std::system(command.c_str());
    return std::to_string(WEXITSTATUS(status)) + " " + ReadAll(dir_ / "out.txt") + "|" +
           ReadAll(dir_ / "err.txt");
  }

  TempDir dir_;
};

TEST_F(ScheduleCommands, PresetMakeShowAndText) {
  const std::string partial =
      "0 |orvane-cli: t.tbl: holds 2 of 719 parameters; the others have their defaults\n";
  EXPECT_EQ(Run("preset t.tbl sip --cycle 480 --to p.tbl"), partial);
  EXPECT_EQ(Run("make p.tbl --to s.TFS"), "0 |");
  EXPECT_EQ(ReadAll(dir_ / "s.TFS"), StepBytes(60, 4, 1, 5) + StepBytes(120, 4, 0.5, 5) +
                                         StepBytes(240, 4, 0.125, 5) +
                                         StepBytes(480, 4, 0.0625, 5));
  EXPECT_EQ(Run("show s.TFS"),
            "0 60\t4\t1\t5\n120\t4\t0.5\t5\n240\t4\t0.125\t5\n480\t4\t0.0625\t5\n|");
  EXPECT_EQ(Run("text s.TFS nowhere.TFS"),
            "1 s.txt\n|orvane-cli: nowhere.TFS: No such file or directory\n");
  EXPECT_EQ(ReadAll(dir_ / "s.txt").substr(0, 58),
            "   1,         60,       FD,       1.00000000,     5.0000,\n");
  EXPECT_EQ(Run("preset t.tbl FDEM --to p.tbl"), partial) << "the stored cycle has a preset";
  EXPECT_EQ(Run("preset t.tbl SIP --to p.tbl"),
            partial + "orvane-cli: no preset for a cycle of 2700 s; it is 900 s\n");
}

TEST_F(ScheduleCommands, RefuseAndWarn) {
  EXPECT_EQ(Run("make t.tbl --to s.TFS"),
            "1 |orvane-cli: t.tbl: holds 2 of 719 parameters; the others have their defaults\n"
            "orvane-cli: t.tbl: no schedule: no frequency is requested\n");
  EXPECT_FALSE(std::filesystem::exists(dir_ / "s.TFS"));
  EXPECT_EQ(Run("fdem --seconds 60 --cycles 60 --current 500 --reduced --to f.TFS"),
            "0 |orvane-cli: f.TFS: written, but cannot be read back: row 1: current 500 A\n");
  EXPECT_EQ(ReadAll(dir_ / "f.TFS").size(), 78U * 22);
  for (const char* usage : {"fdem --seconds -1 --cycles 6 --current 5 --to g.TFS",
                            "fdem --seconds 1 --cycles 6 --current nan --to g.TFS",
                            "preset t.tbl MT --to g.tbl", "make t.tbl --to ''"}) {
    EXPECT_EQ(Run(usage)[0], '2') << usage;
  }
}

TEST_F(ScheduleCommands, BecomeJsonAndComeBack) {
  const std::string steps = StepBytes(60, 4, 0.1, 5) + StepBytes(120, 1, 8, 0.25);
  WriteAll(dir_ / "s.TFS", steps);
  const std::string json =
      "{\n  \"format\": \"orvane-schedule\",\n  \"format_version\": 1,\n  \"steps\": [\n"
      "    {\n      \"end_time\": 60,\n      \"waveform\": \"FD\",\n"
      "      \"frequency\": 0.1,\n      \"current\": 5.0\n    },\n"
      "    {\n      \"end_time\": 120,\n      \"waveform\": \"TD50\",\n"
      "      \"frequency\": 8.0,\n      \"current\": 0.25\n    }\n  ]\n}\n";
  EXPECT_EQ(Run("json s.TFS"), "0 " + json + "|");
  EXPECT_EQ(Run("json s.TFS --to s.json"), "0 |");
  EXPECT_EQ(ReadAll(dir_ / "s.json"), json);
  EXPECT_EQ(Run("from-json s.json --to t.TFS"), "0 |");
  EXPECT_EQ(ReadAll(dir_ / "t.TFS"), steps);
  WriteAll(dir_ / "wrong.json", std::string(json).replace(json.find("0.1"), 3, "\"x\""));
  for (const auto& [arguments, place] :
       {std::pair{"json nowhere.TFS", "nowhere.TFS: "},
        {"json s.TFS --to ./s.TFS", "is the input file and was not written"},
        {"from-json s.json --to ./s.json", "is the input file and was not written"},
        {"from-json wrong.json --to t.TFS", "wrong.json: "},
        {"from-json s.json --to no/t.TFS", "no/t.TFS: "}}) {
    const std::string told = Slashed(Run(arguments));
    EXPECT_EQ(told.substr(0, 3), "1 |") << arguments;
    EXPECT_NE(told.find(place), std::string::npos) << told;
  }
  EXPECT_EQ(ReadAll(dir_ / "s.TFS"), steps);
  EXPECT_EQ(ReadAll(dir_ / "t.TFS"), steps);
}

}  // namespace
}  // namespace orvane::testing
