// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_KEY_LABELS_H_
#define ORVANE_APP_KEY_LABELS_H_

#include <string>
#include <vector>

namespace orvane {

/// Keys as users know them, by the names that the dialogs give them: "Array type (ARRYTYP), SITN".
std::string LabelledKeys(const std::vector<std::string>& keys);

}  // namespace orvane

#endif  // ORVANE_APP_KEY_LABELS_H_
