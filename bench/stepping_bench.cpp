// SPDX-License-Identifier: GPL-3.0-or-later
// A schedule of 200 rows against the bare arithmetic in a loop.
#include <benchmark/benchmark.h>

#include <cmath>

#include "stepping/step_table.h"

namespace {

// 200 frequencies to the octave, with a power, a root and a rounding in each row.
constexpr orvane::FrequencyList kRequested = {9600};
constexpr orvane::StepParameters kParameters = {orvane::kCsamt, 200, 1, 60, 1000000, 0, 16, 3673};

void StepTable(benchmark::State& state) {
  orvane::ScheduleTable table{};
  for (auto _ : state) {
    benchmark::DoNotOptimize(orvane::CalculateStepTable(kParameters, kRequested, &table));
    benchmark::ClobberMemory();
  }
  if (orvane::WrittenRows(table).size() != 200) {
    state.SkipWithError("the schedule has not 200 rows");
  }
}

void StepTablePlain(benchmark::State& state) {
  std::array<orvane::ScheduleRow, orvane::kMostSteps> rows{};
  for (auto _ : state) {
    int end = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const double f = 9600 / std::pow(2, static_cast<double>(i) / 200);
      end += static_cast<int>(std::ceil(1000000 / f));
      rows[i] = {end, 4, f, 16 / std::sqrt(f * f / (3673.0 * 3673.0) + 1)};
    }
    benchmark::DoNotOptimize(rows);
    benchmark::ClobberMemory();
  }
}

BENCHMARK(StepTable);
BENCHMARK(StepTablePlain);

}  // namespace
