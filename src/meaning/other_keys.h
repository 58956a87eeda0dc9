// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_MEANING_OTHER_KEYS_H_
#define ORVANE_MEANING_OTHER_KEYS_H_

#include "meaning/meaning_list.h"

namespace orvane {

/// What no dialog has a field for, but the program reads, writes or lists.
void AddOtherKeys(MeaningList* list);

}  // namespace orvane

#endif  // ORVANE_MEANING_OTHER_KEYS_H_
