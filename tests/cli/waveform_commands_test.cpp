// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "base/number_text.h"
#include "support/cli_run.h"
#include "support/decay_bytes.h"
#include "support/stack_bytes.h"
#include "support/ts_bytes.h"

namespace orvane::testing {
namespace {

TEST(WaveformCommands, ReadAndConvert) {
  const TempDir dir;
  const TsBytes good{.samples = {1, 2}};
  const TsBytes bad{.frequency = 0.5, .samples = {3}, .status = 6, .scans = 3};
  WriteAll(dir / "a.TSS", good.Bytes() + bad.Bytes());
  const Outcome missing = RunCli(dir, "waveform info a.TSS");
  EXPECT_EQ(missing.exit_code, 1);
  EXPECT_NE(missing.err.find("Failed to open file a.TBL!"), std::string::npos) << missing.err;
  EXPECT_NE(missing.err.find("--header 252 or 196"), std::string::npos) << missing.err;

  const std::string info =
      "header\t252\nrecords\t2\nbad records\t1\nbad at\t2\n"
      "record\toffset\ttime\tbox\tchannels\tscans\tscans in file\tbytes per sample\trate "
      "(Hz)\tstatus\ttrailing scans\tfrequency (Hz)\n"
      "1\t0\t2009/06/30 03:04:05\t2417\t1\t2\t2\t3\t2400\t0\t0\t4\n"
      "2\t258\t2009/06/30 03:04:05\t2417\t1\t3\t1\t3\t2400\t6\t0\t0.5\n";
  EXPECT_EQ(RunCli(dir, "waveform info --header 252 a.TSS").out, info);
  WriteAll(dir / "A.tbl", HeaderV2() + RecordV2("VER", 0, StrPT, "5A"));
  const Outcome titles = RunCli(dir, "waveform titles --header 252 a.TSS");
  EXPECT_EQ(titles.err, "orvane-cli: There are 1 bad records starting at segment2!\n");
  EXPECT_EQ(titles.out,
            "Freq(Hz):    4.0000, Sample Rate:  2400.0,  Scans: 2,  Time: 2009/06/30 03:04:05,  "
            "(1 / 2 )\n"
            "Freq(Hz):    0.5000, Sample Rate:  2400.0,  Scans: 3,  Time: 2009/06/30 03:04:05,  "
            "(2 / 2 )\n");
  EXPECT_EQ(RunCli(dir, "waveform info a.TSS").out.substr(0, 11), "header\t196\n");

  const Outcome stack = RunCli(dir, "waveform restack a.TSS --out o");
  EXPECT_EQ(stack.exit_code, 0);
  EXPECT_EQ(Slashed(stack.out), "o/A.TSK\no/A.TBL\n");
  EXPECT_EQ(ReadAll(dir / "o/A.TBL"), ReadAll(dir / "A.tbl"));
  EXPECT_NE(stack.err.find("\"VER\" 5A"), std::string::npos) << stack.err;
  EXPECT_NE(stack.err.find("record 2"), std::string::npos) << stack.err;
  EXPECT_EQ(ReadAll(dir / "o/A.TSK").substr(252), Little(1, 3) + Little(2, 3));
  EXPECT_EQ(Slashed(RunCli(dir, "waveform restack a.TSS --out o").out), "o/A.TSK\n")
      << "the same table";
  EXPECT_EQ(RunCli(dir, "waveform text a.TSS none.TSS").exit_code, 1);
  EXPECT_EQ(ReadAll(dir / "a.txt").substr(0, 22), " Time:                ");
  EXPECT_EQ(RunCli(dir, "waveform text --header 100 a.TSS").exit_code, 2);
}

// By the closed form 27.7 mV/V in these windows: 50 (exp(-t1 / tau) - exp(-t2 / tau)) tau / (t2 -
// t1).
TEST(WaveformCommands, DecayOfKnownChargeability) {
  const TempDir dir;
  const DecayBytes record{.noise = 1e-6};
  WriteAll(dir / "a.TSS", record.Bytes(1) + record.Bytes(2));
  WriteAll(dir / "a.TBL", DecayBytes::Table());
  const Outcome one = RunCli(dir, "waveform decay a.TSS --windows 20-60,60-500");
  EXPECT_EQ(one.exit_code, 0) << one.err;
  EXPECT_EQ(one.out.substr(0, one.out.find('\n')),
            "record\tchannel\twindow\tstart (ms)\tend (ms)\tvalue\tspread\tmark");
  const std::string row = "all\tEx1 (mV)\tchargeability (mV/V)\t20\t500\t";
  const std::size_t at = one.out.find(row);
  ASSERT_NE(at, std::string::npos) << one.out;
  const double expected = 1000 * record.Mean(1, 0.02, 0.5);
  EXPECT_NEAR(ParseRealPrefix(std::string_view(one.out).substr(at + row.size())) / expected, 1,
              0.005);
  const Outcome many = RunCli(dir, "waveform decay a.TSS --record 2 --reference 1 --out o");
  EXPECT_EQ(Slashed(many.out), "o/a_decay.tsv\n") << many.err;
  EXPECT_EQ(ReadAll(dir / "o/a_decay.tsv").find("\nall\t"), std::string::npos);
  EXPECT_EQ(RunCli(dir, "waveform decay a.TSS --windows 60-20").exit_code, 2);
  WriteAll(dir / "b.trs", StackBytes("A", Extension(0), 4, 2, FloatBytes(1) + FloatBytes(-3)));
  const std::string titles = "label\titem\trecords\tmedian\tspread\n";
  EXPECT_EQ(RunCli(dir, "stack stats b.trs").out, titles + "A\t1\t1\t1\t0\nA\t2\t1\t-3\t0\n");
  EXPECT_EQ(RunCli(dir, "stack stats b.trs --time-domain --second").out,
            titles + "A\t1\t1\t-3\t0\n");
  EXPECT_EQ(RunCli(dir, "stack stats b.trs --frequency-domain --second").exit_code, 2);
}

TEST(WaveformCommands, RestackLeavesOutBadRecordsAndOtherTables) {
  const TempDir dir;
  const std::string good = TsBytes{.samples = {1, 2}}.Bytes();
  const std::string bad = TsBytes{.samples = {9, 9}, .status = 6}.Bytes();
  WriteAll(dir / "A.TSS", good + bad);
  WriteAll(dir / "B.TSS", bad);
  WriteAll(dir / "B.TSK", "older");
  const Outcome added = RunCli(dir, "waveform restack A.TSS");
  EXPECT_EQ(added.err, "orvane-cli: A.TSS: record 2 is marked bad and was added\n");
  EXPECT_EQ(ReadAll(dir / "A.TSK").substr(252), Little(5, 3) + Little(5, 3));
  const Outcome left_out = RunCli(dir, "waveform restack --leave-out bad A.TSS B.TSS");
  EXPECT_EQ(left_out.exit_code, 1);
  EXPECT_EQ(left_out.out, "A.TSK\n");
  EXPECT_NE(left_out.err.find("A.TSS: record 2 is marked bad and was left out\n"),
            std::string::npos);
  EXPECT_NE(left_out.err.find("B.TSS: nothing is left to stack: "), std::string::npos);
  EXPECT_EQ(ReadAll(dir / "A.TSK").substr(252), Little(1, 3) + Little(2, 3));
  EXPECT_EQ(ReadAll(dir / "B.TSK"), "older");
  EXPECT_EQ(RunCli(dir, "waveform restack --leave-out 3- A.TSS").exit_code, 2);

  WriteAll(dir / "A.TSS.leave-out.txt", "516 2\n1\n");
  EXPECT_EQ(RunCli(dir, "waveform restack A.TSS --leave-out beside").err,
            "orvane-cli: A.TSS: 1 record left out; record 2 is marked bad and was added\n");
  EXPECT_EQ(ReadAll(dir / "A.TSK").substr(252), Little(9, 3) + Little(9, 3));
  EXPECT_NE(RunCli(dir, "waveform restack A.TSS").err.find("A.TSS.leave-out.txt is there"),
            std::string::npos);
  std::filesystem::remove(dir / "A.TSS.leave-out.txt");

  WriteAll(dir / "A.TBL", HeaderV2() + RecordV2("TECH", 0, IntPT, IntBytes(3)));
  std::filesystem::create_directory(dir / "o");
  WriteAll(dir / "o/a.tbl", "another");
  const Outcome kept = RunCli(dir, "waveform restack A.TSS --out o");
  EXPECT_EQ(kept.exit_code, 0);
  EXPECT_EQ(Slashed(kept.out), "o/A.TSK\n");
  // Where names are the same in any case it is called as the file that was to be made.
  const std::string named = WindowsTool() != nullptr ? "o/A.TBL" : "o/a.tbl";
  EXPECT_NE(Slashed(kept.err).find(named + ": differs from the waveform's table"),
            std::string::npos)
      << kept.err;
  EXPECT_EQ(ReadAll(dir / "o/a.tbl"), "another");
}

// One file goes to standard output, several go into files.
TEST(WaveformCommands, StatisticsAndSpectra) {
  const TempDir dir;
  const TsBytes alternating{.samples = {3, 1, 3, 1, 3, 1, 3, 1}, .rate = 8, .unit = 0};
  WriteAll(dir / "A.TSS", alternating.Bytes() + TsBytes{.samples = {9}, .status = 6}.Bytes());
  WriteAll(dir / "A.TSK", alternating.Bytes());
  const Outcome stats = RunCli(dir, "waveform stats A.TSS --header 252 --leave-out bad");
  EXPECT_EQ(stats.exit_code, 0);
  EXPECT_EQ(stats.out.substr(stats.out.find('\n') + 1),
            "1\t2009/06/30 03:04:05\t4\t\t1\tCh 1\t1\t3\t2\t2\t2.236067977\t0\n");
  EXPECT_NE(stats.err.find("; 1 record left out\n"), std::string::npos) << stats.err;
  // A mean of 2 and an alternating 1; the window has half of each in the next bin.
  const std::string rows = "\n0\t2\n1\t2\n2\t0\n3\t1\n4\t1\n";
  const Outcome one = RunCli(dir, "waveform spectrum A.TSS --record 1 --amplitude --header 252");
  EXPECT_EQ(one.out.substr(one.out.find('\n')), rows);
  const Outcome two = RunCli(dir, "waveform spectrum A.TSS A.TSK --amplitude --out o");
  EXPECT_EQ(Slashed(two.out), "o/A_spectrum.tsv\no/A_TSK_spectrum.tsv\n");
  EXPECT_EQ(ReadAll(dir / "o/A_TSK_spectrum.tsv").substr(28), rows);
  EXPECT_EQ(RunCli(dir, "waveform stats A.TSS --out o").out.size(),
            std::string("o/A_stats.tsv\n").size());
  EXPECT_EQ(RunCli(dir, "waveform spectrum B.TSS").exit_code, 1);
  EXPECT_EQ(RunCli(dir, "waveform spectrum A.TSS --record 2").exit_code, 1) << "one scan";
  EXPECT_EQ(RunCli(dir, "waveform spectrum A.TSS --calibrations o").exit_code, 1) << "none there";
  for (const char* wrong :
       {"--amplitude --density", "--record 0", "--segment 3", "--leave-out 0"}) {
    EXPECT_EQ(RunCli(dir, std::string("waveform spectrum A.TSS ") + wrong).exit_code, 2) << wrong;
  }
}

}  // namespace
}  // namespace orvane::testing
