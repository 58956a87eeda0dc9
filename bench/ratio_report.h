// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_BENCH_RATIO_REPORT_H_
#define ORVANE_BENCH_RATIO_REPORT_H_

#include <span>

namespace orvane::bench {

/// One figure: our benchmark's time over that of the plain way or the limit, both of this run.
struct Ratio {
  const char* what;
  const char* ours;   ///< name of a benchmark
  const char* other;  ///< name of a benchmark
  double aim;         ///< the ratio hoped for; 0: none
};

/// Runs all benchmarks and prints the ratios below their times. The exit code.
int RunAndReport(int argc, char** argv, std::span<const Ratio> ratios);

}  // namespace orvane::bench

#endif  // ORVANE_BENCH_RATIO_REPORT_H_
