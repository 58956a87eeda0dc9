// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/key_labels.h"

#include <set>

#include "meaning/meanings.h"

namespace orvane {

std::string LabelledKeys(const std::vector<std::string>& keys) {
  static const Meanings kMeanings;
  std::string text;
  // A key may have been changed by several dialogs.
  for (const std::string& key : std::set<std::string>(keys.begin(), keys.end())) {
    const KeyMeaning* meaning = kMeanings.Find(key);
    text += text.empty() ? "" : ", ";
    text += meaning == nullptr ? key : meaning->name + " (" + key + ')';
  }
  return text;
}

}  // namespace orvane
