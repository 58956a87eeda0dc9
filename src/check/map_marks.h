// SPDX-License-Identifier: GPL-3.0-or-later
// What the check found, as marks on the map of the spread.
#ifndef ORVANE_CHECK_MAP_MARKS_H_
#define ORVANE_CHECK_MAP_MARKS_H_

#include <span>
#include <vector>

#include "check/finding.h"
#include "editors/spread.h"
#include "editors/spread_map.h"

namespace orvane {

/// The channels of which errors and warnings name a key, and whole boxes of which an error names
/// the serial number. Hints mark nothing.
std::vector<MapMark> MarksOf(std::span<const Finding> findings, const Spread& spread);

}  // namespace orvane

#endif  // ORVANE_CHECK_MAP_MARKS_H_
