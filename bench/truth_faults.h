// SPDX-License-Identifier: GPL-3.0-or-later
// Calibrations with a fault, and what a verdict has to name of each.
#ifndef ORVANE_BENCH_TRUTH_FAULTS_H_
#define ORVANE_BENCH_TRUTH_FAULTS_H_

#include <set>
#include <span>

#include "truth_box.h"

namespace orvane::bench {

struct TruthFault {
  const char* name;
  std::set<std::size_t> passes;  ///< counted from 0; one of these,
  std::set<std::size_t> parts;   ///< or one of these is to be named
  bool stays_right;              ///< the response does: with care at most
  void (*spoil)(TruthBox* box);  ///< of a box that was swept well
  TruthSetting setting;          ///< or how it was switched wrongly
};

std::span<const TruthFault> TruthFaults();

}  // namespace orvane::bench

#endif  // ORVANE_BENCH_TRUTH_FAULTS_H_
