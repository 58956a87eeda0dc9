// SPDX-License-Identifier: GPL-3.0-or-later
// The tool as users start it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>

#include "support/cal_bytes.h"
#include "support/cli_run.h"
#include "support/temp_dir.h"

namespace orvane::testing {
namespace {

class CalibrationCommands : public ::testing::Test {
 protected:
  // Exit code, then what stands on stdout and, behind a bar, on stderr.
  std::string Run(const std::string& arguments) const {
    const std::string command = "cd '" + dir_.Path().string() + "' && '" + testing::ToolPath() +
                                "' calibration " + arguments + " >out 2>err";
    const int status = std::system(command.c_str());
    return std::to_string(WEXITSTATUS(status)) + " " + ReadAll(dir_ / "out") + "|" +
           ReadAll(dir_ / "err");
  }
  TempDir dir_;
};

TEST_F(CalibrationCommands, CurvesAndTextAndInfo) {
  WriteAll(dir_ / "s.CLC", CalHeaderBytes(3, 2) +
                               CalRecordBytes(1, 0.1F, 1, {1, 2, 3, 4, -1, 0}, 2) +
                               CalRecordBytes(1, 1000, 1, {1, 2, 3, 4, -3, 4}, 2));
  EXPECT_EQ(Run("curves s.CLC"),
            "0 1\t1000\t5\t-53.1301024\n1\t0.100000001\t1\t0\n"
            "2\t1000\t5\t-53.1301024\n2\t0.100000001\t1\t0\n|");
  EXPECT_EQ(Run("info s.CLC"),
            "0 kind\t3\nstatus\t0\nUTC\t2026/11/21 08:30:00\nSNUM\t-2\nNCHN\t2\nSTAT\t7\nCTYP\t3\n"
            "HW\tZLA5K\nVER\t5.0\nTCMB\t1\nTALS\t2\nLFRQ\t3\nQ2SR\t4\nLPFR\t5\nHSN\tCOIL12345678\n"
            "HATT\t0.5\nHNOM\t1234.25\nCPHC\t-2.125\nrecords\t2\npasses\t2\n"
            "pass\tfirst record\tlast record\n1\t1\t1\n2\t2\t2\nchannel\tflags\n1\t0\n2\t0\n|");
  EXPECT_EQ(Run("info --kind 1 s.CLC"),
            "1 |orvane-cli: s.CLC: CTYP at offset 16 is 3, not 1 (1230)\n");
  EXPECT_EQ(Run("info --kind 4 s.CLC").substr(0, 3), "2 |");
  EXPECT_EQ(Run("text s.CLC none.CLB").substr(0, 9), "1 s.txt\n|");
  WriteAll(dir_ / "b.CLB", CalHeaderBytes(1, 1));
  EXPECT_EQ(Run("info b.CLB"), "1 |orvane-cli: b.CLB: no record (1247)\n");
}

TEST_F(CalibrationCommands, FitAndResponses) {
  std::string box = CalHeaderBytes(1, 1);
  for (int pass = 0; pass < 3; ++pass) {  // none that the model is fitted to
    box += CalRecordBytes(1, 1, 1, {1, 0, 0, 2, 1, 0});
  }
  WriteAll(dir_ / "b.CLB", box);
  WriteAll(dir_ / "t.TBL", HeaderV2() + RecordV2("CHEX", 0, IntPT, IntBytes(1)) +
                               RecordV2("ACDC", 0, IntPT, IntBytes(1)) +
                               RecordV2("TCMB", 0, IntPT, IntBytes(0)));
  const std::string fit = Run("fit b.CLB");
  EXPECT_EQ(std::count(fit.begin(), fit.end(), '\t'), 26) << fit;
  EXPECT_NE(fit.find("\t2\t600\t297\t0\t0\t0\t0\t0\t0\n|orvane-cli: b.CLB: channel 1: no model"),
            std::string::npos)
      << fit;
  EXPECT_EQ(Run("response b.CLB --table t.TBL --band 0 --frequency 0 1").substr(0, 28),
            "1 1\t0\t0\t0\t-1\n1\t1\t0.998173582");
  EXPECT_EQ(Run("response b.CLB --table t.TBL --band 0 --frequency 1").substr(0, 5), "1 1\t1");
  const std::string nominal = Run("response --nominal b.CLB --table t.TBL --band 0 --frequency 1");
  EXPECT_EQ(nominal.substr(0, 5), "0 1\t1");
  EXPECT_NE(nominal.find("|orvane-cli: b.CLB: no model fits"), std::string::npos) << nominal;
  EXPECT_EQ(Run("response b.CLB --table t.TBL --band 0 --channels 2 --frequency 1"),
            "1 |orvane-cli: b.CLB: the calibration and the recording differ in their "
            "number of channels (1246)\n");
  EXPECT_EQ(Run("response b.CLB --table t.TBL --frequency 1").substr(0, 3), "2 |");
  WriteAll(dir_ / "s.CLC", CalHeaderBytes(2, 1) + CalRecordBytes(2, 10, 1, {1, 2, 3, 4, -3, 0}));
  WriteAll(dir_ / "h.TBL", HeaderV2() + RecordV2("HNOM", 0, FltPT, RealBytes(2468.5)));
  EXPECT_EQ(Run("response s.CLC --table h.TBL --frequency 10 20"), "0 10\t-6\t0\n20\t-6\t0\n|");
}

}  // namespace
}  // namespace orvane::testing
