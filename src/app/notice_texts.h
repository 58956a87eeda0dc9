// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_NOTICE_TEXTS_H_
#define ORVANE_APP_NOTICE_TEXTS_H_

#include <string>
#include <vector>

namespace orvane {

/// After Cancel: that keys were written before and stay. Empty where none was.
std::string EarlyChangesText(const std::vector<std::string>& keys);

/// After a paste: how many of the cells were refused. Empty where none was.
std::string RefusedCellsText(int set, int refused);

}  // namespace orvane

#endif  // ORVANE_APP_NOTICE_TEXTS_H_
