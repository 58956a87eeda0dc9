// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_TECH_H_
#define ORVANE_TABLE_TECH_H_

#include "table/param_access.h"

namespace orvane {

/// Survey methods as "TECH" stores them.
enum Tech : int { kSip = 1, kTdip = 2, kTdem = 3, kCsamt = 4, kMtAmt = 5, kFdem = 6 };

}  // namespace orvane

#endif  // ORVANE_TABLE_TECH_H_
