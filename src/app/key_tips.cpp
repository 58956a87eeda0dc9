// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/key_tips.h"

#include "meaning/field_tip.h"
#include "ui/field_tips.h"

namespace orvane {

void ShowKeyTips(const ParamTable* table) {
  SetFieldTips([table](const Field& field) {
    static const Meanings kMeanings;  // made for the first dialog: starting needs none
    return FieldTip{FieldTipText(kMeanings, field, *table), FieldTipInBrief(kMeanings, field)};
  });
}

}  // namespace orvane
