// SPDX-License-Identifier: GPL-3.0-or-later
// The tool as users start it.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>

#include "support/cal_bytes.h"
#include "support/cli_run.h"
#include "support/sweeps.h"
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
  EXPECT_NE(fit.find("\t2\t600\t297\t0\t0\t0\t0\t0\t0\n|orvane-cli: b.CLB: channel 1: not usable"),
            std::string::npos)
      << fit;
  EXPECT_EQ(fit[0], '1');
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

TEST_F(CalibrationCommands, TellHowFarACalibrationIsToBeTrusted) {
  Sweeps box;
  box.parts = NominalParameters(0);
  WriteAll(dir_ / "a.CLB", BoxBytes(box, 1));
  EXPECT_EQ(Run("fit a.CLB").substr(0, 2), "0 ");
  EXPECT_NE(Run("fit a.CLB").find("|orvane-cli: a.CLB: channel 1: well\n"), std::string::npos);
  WriteAll(dir_ / "t.TBL", HeaderV2() + RecordV2("CHEX", 0, IntPT, IntBytes(1)));
  const std::string bands =
      Run("response a.CLB --table t.TBL --band 0 --frequency 1 --uncertainty");
  EXPECT_EQ(std::count(bands.begin(), bands.end(), '\t'), 8) << bands;
  box.parts[4] *= 1.03;  // the second capacitor, which pass 8 shows
  WriteAll(dir_ / "b.CLB", BoxBytes(box, 1));
  const std::string same = Run("compare a.CLB a.CLB --amplitude 0 --phase 0");
  EXPECT_EQ(same.substr(0, 2), "0 ") << same;
  EXPECT_EQ(std::count(same.begin(), same.end(), '\n'), 15) << "passes";
  const std::string drifted = Run("compare b.CLB a.CLB --phase 0.8");
  EXPECT_EQ(drifted.substr(0, 2), "1 ") << drifted;
  EXPECT_NE(drifted.find("1\t8\tx 1, filter 1\t-0.98"), std::string::npos) << drifted;
  std::size_t beyond = 0;
  for (std::size_t at = 0; (at = drifted.find("\tbeyond\n", at)) != std::string::npos; ++at) {
    ++beyond;
  }
  EXPECT_EQ(beyond, 1U) << drifted;
  EXPECT_EQ(Run("compare b.CLB a.CLB --amplitude 5% --phase 2").substr(0, 2), "0 ");
  EXPECT_EQ(Run("compare b.CLB a.CLB --amplitude x").substr(0, 2), "2 ");
  WriteAll(dir_ / "7.CLC", CalHeaderBytes(2, 1) + CalRecordBytes(2, 10, 1, {1, 2, 3, 4, -3, 0}));
  EXPECT_EQ(Run("compare a.CLB 7.CLC"),
            "2 |orvane-cli: a.CLB: the calibrations are of different kinds\n");
  WriteAll(dir_ / "cut.CLB", BoxBytes(box, 1) + "x");
  EXPECT_NE(Run("fit cut.CLB").find("the last record is cut short and left out"),
            std::string::npos);
  EXPECT_EQ(
      Run("fit 7.CLC"),
      "0 |orvane-cli: 7.CLC: channel 1: usable with care: there is a single record, at 10 Hz; "
      "the header names another serial number, -2\n");
}

}  // namespace
}  // namespace orvane::testing
