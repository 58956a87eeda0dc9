// SPDX-License-Identifier: GPL-3.0-or-later
#include "ratio_report.h"

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

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
  std::vector<char*> arguments(argv, argv + argc);
  std::string repetitions = "--benchmark_repetitions=9";
  std::string aggregates = "--benchmark_report_aggregates_only=true";
  // Each repetition takes its turn among the others, so that a busy moment hits them all.
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  std::string time = "--benchmark_min_time=0.05";
  arguments.insert(arguments.begin() + 1,
                   {repetitions.data(), aggregates.data(), interleave.data(), time.data()});
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
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
