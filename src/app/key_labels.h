// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_KEY_LABELS_H_
#define ORVANE_APP_KEY_LABELS_H_

#include <string>
#include <vector>

namespace orvane {

/// Keys as users know them, by the labels of the dialogs: "Array type (ARRYTYP), FRQ0".
std::string LabelledKeys(const std::vector<std::string>& keys);

}  // namespace orvane

#endif  // ORVANE_APP_KEY_LABELS_H_
