// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_BENCH_MEDIAN_TIME_H_
#define ORVANE_BENCH_MEDIAN_TIME_H_

#include <QElapsedTimer>
#include <algorithm>
#include <functional>
#include <vector>

namespace orvane::bench {

/// The median of 15 runs, in milliseconds of real time.
inline double MedianMilliseconds(const std::function<void()>& work) {
  constexpr int kRuns = 15;
  std::vector<double> times;
  for (int i = 0; i < kRuns; ++i) {
    QElapsedTimer timer;
    timer.start();
    work();
    times.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  std::nth_element(times.begin(), times.begin() + kRuns / 2, times.end());
  return times[kRuns / 2];
}

}  // namespace orvane::bench

#endif  // ORVANE_BENCH_MEDIAN_TIME_H_
