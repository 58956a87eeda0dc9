// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_TECH_H_
#define ORVANE_TABLE_TECH_H_

#include "table/param_access.h"

namespace orvane {

/// Survey methods as "TECH" stores them. A table may have any other number.
enum Tech : int {
  kNoTech = 0,
  kSip = 1,
  kTdip = 2,
  kTdem = 3,
  kCsamt = 4,
  kMtAmt = 5,
  kFdem = 6,
};

/// What the table has; 0 without the key.
inline Tech TechOf(const ParamTable& table) { return static_cast<Tech>(IntParam(table, "TECH")); }

constexpr bool IsKnown(Tech tech) { return tech >= kSip && tech <= kFdem; }

/// The IP methods, SIP and TDIP, know a reference box.
constexpr bool HasReferenceBox(Tech tech) { return tech == kSip || tech == kTdip; }

}  // namespace orvane

#endif  // ORVANE_TABLE_TECH_H_
