// SPDX-License-Identifier: GPL-3.0-or-later
// The tool as users start it.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/cli_run.h"
#include "support/tbl_bytes.h"
#include "support/temp_dir.h"
#include "support/ts_bytes.h"

namespace orvane::testing {
namespace {

class SurveyCommands : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(dir_ / "s" / "day");
    const auto text = [](const char* key, const char* value) {
      return RecordV2(key, kMaskAnyMode, StrPT, value);
    };
    WriteAll(dir_ / "s/day/1.TBL",
             HeaderV2() + text("HW", "main6") + RecordV2("TECH", kMaskAnyMode, IntPT, IntBytes(5)) +
                 text("SITE", "S\t1") + text("VER", "5.0") + text("PPPPSWD", "wintergreen") +
                 text("PPPNAME", "nightowl") + text("PHNE", "5550100") + text("EKEY", "k3yk3y") +
                 RecordV2("SNUM", kMaskAnyMode, IntPT, IntBytes(2417)));
    WriteAll(dir_ / "s/day/1.TSS", TsBytes{.samples = {1, 2, 3}}.Bytes());
  }
  Outcome Scan(const std::string& arguments) const {
    return RunCli(dir_, "survey scan " + arguments);
  }

  TempDir dir_;
};

TEST_F(SurveyCommands, ListsRowsFindingsAndNotes) {
  setenv("XDG_CACHE_HOME", (dir_ / "cache").c_str(), 1);
  const Outcome tsv = Scan("s");
  EXPECT_EQ(tsv.exit_code, 1);
  EXPECT_EQ(tsv.err, "");
  EXPECT_EQ(tsv.out.substr(tsv.out.find('\n') + 1),
            "row\trecording\tday/1.TSS\t2417\tmain6\tS\\x091\t\tMT/AMT\t2009/06/30 03:04:05\t"
            "2009/06/30 03:04:06\t1\t2400\t4\t1\t0\t\tthere\t2\t5.0\t\t2417.CLB missing\t\t"
            "1.TBL, 1.TSS\n"
            "finding\twarning\tcalibration-missing\t2417\tday/1.TSS\t"
            "The calibration 2417.CLB is missing\n");
  for (const char* format : {"tsv", "json", "html"}) {
    for (const char* more : {"", " --no-index", " --deep", " --checksums"}) {
      const Outcome one = Scan(std::string("s --format ").append(format).append(more));
      EXPECT_EQ(one.exit_code, 1);
      EXPECT_EQ(one.out, Scan(std::string("s --format ").append(format).append(more)).out);
      EXPECT_NE(one.out.find("calibration-missing"), std::string::npos);
      for (const char* secret : {"wintergreen", "nightowl", "5550100", "k3yk3y"}) {
        EXPECT_EQ(one.out.find(secret), std::string::npos) << format << more;
      }
      const bool has_sum = one.out.find("SHA-256") != std::string::npos ||
                           one.out.find("sha256") != std::string::npos;
      EXPECT_EQ(has_sum, std::string(more) == " --checksums" && std::string(format) != "tsv");
    }
  }
  EXPECT_EQ(Scan("s --since '2010/01/01 00:00:00'").exit_code, 0);
  EXPECT_EQ(Scan("s --since 2010-01-01T00:00:00Z").exit_code, 0);
  if (WindowsTool() != nullptr) {
    return;  // where names are Unicode
  }
  std::filesystem::create_symlink("nowhere", dir_ / "s/\xFF");
  const Outcome odd = Scan("s --since '2010/01/01 00:00:00'");
  EXPECT_EQ(odd.exit_code, 1) << "what could not be looked at may be anything";
  EXPECT_NE(odd.out.find("note\t\\xFF\tNo such file or directory\n"), std::string::npos);
}

TEST_F(SurveyCommands, RefusesWhatItCannotDo) {
  const std::pair<const char*, int> kCases[] = {{"", 2},
                                                {"s --format pdf", 2},
                                                {"s --since noon", 2},
                                                {"s --since 07:00:00", 2},
                                                {"s --out s/day/x.html", 2},
                                                {"s/../s --out s/x.html", 2},
                                                {"nowhere", 2},
                                                {"s/day/1.TBL", 2},
                                                {"s --calibrations nowhere", 2},
                                                {"s --no-index --out nowhere/x.html", 2}};
  for (const auto& [arguments, code] : kCases) {
    const Outcome outcome = Scan(arguments);
    EXPECT_EQ(outcome.exit_code, code) << arguments;
    EXPECT_NE(outcome.err, "") << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
  }
  EXPECT_EQ(Scan("s --no-index --format html --out x.html").out, "");
  EXPECT_EQ(ReadAll(dir_ / "x.html").substr(0, 15), "<!DOCTYPE html>");
}

}  // namespace
}  // namespace orvane::testing
