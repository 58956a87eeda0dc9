// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/notice_texts.h"

#include "app/key_labels.h"
#include "base/number_text.h"

namespace orvane {

std::string EarlyChangesText(const std::vector<std::string>& keys) {
  return keys.empty() ? std::string()
                      : "Cancelled; these were changed before and stay: " + LabelledKeys(keys) +
                            ". Undo takes them back";
}

std::string RefusedCellsText(int set, int refused) {
  return refused > 0
             ? FormatInt(refused) + " of " + FormatInt(set + refused) + " cells were refused"
             : std::string();
}

}  // namespace orvane
