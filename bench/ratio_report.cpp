// SPDX-License-Identifier: GPL-3.0-or-later
#include "ratio_report.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <string>

namespace orvane::bench {
namespace {

// Keeps the median of the repetitions of each benchmark.
class Recorder : public benchmark::ConsoleReporter {
 public:
  Recorder() : ConsoleReporter(isatty(STDOUT_FILENO) != 0 ? OO_Color : OO_None) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.aggregate_name == "median") {
        times_[run.run_name.function_name] =
            run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
      }
    }
  }
  double TimeOf(const char* name) const {
    const auto found = times_.find(name);
    return found == times_.end() ? 0 : found->second;
  }

 private:
  std::map<std::string, double> times_;
};

}  // namespace

int RunAndReport(int argc, char** argv, std::span<const Ratio> ratios) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  Recorder recorder;
  benchmark::RunSpecifiedBenchmarks(&recorder);
  std::printf("\nRatios of this run\n");
  for (const Ratio& ratio : ratios) {
    const double other = recorder.TimeOf(ratio.other);
    if (other > 0) {
      std::printf("  %-58s %6.3f", ratio.what, recorder.TimeOf(ratio.ours) / other);
      std::printf(ratio.aim > 0 ? "  (aim: at most %g)\n" : "\n", ratio.aim);
    }
  }
  return 0;
}

}  // namespace orvane::bench
