// SPDX-License-Identifier: GPL-3.0-or-later
// The tool as users start it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>

#include "support/cal_bytes.h"
#include "support/temp_dir.h"

namespace orvane::testing {
namespace {

class CalibrationCommands : public ::testing::Test {
 protected:
  // Exit code, then what stands on stdout and, behind a bar, on stderr.
  std::string Run(const std::string& arguments) const {
    const std::string command = "cd '" + dir_.Path().string() +
                                "' && '" ORVANE_CLI "' calibration " + arguments + " >out 2>err";
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

}  // namespace
}  // namespace orvane::testing
