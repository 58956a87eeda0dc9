// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_MEANING_DIALOG_FIELDS_H_
#define ORVANE_MEANING_DIALOG_FIELDS_H_

#include <array>
#include <string>

#include "meaning/meaning_list.h"

namespace orvane {

/// Names of the transmitter types 1 to 4, which a user may have set.
using TransmitterNames = std::array<std::string, 4>;

/// What the fields of every dialog say of their keys, in the order in which users meet the dialogs.
void AddDialogs(const TransmitterNames& transmitters, MeaningList* list);

/// What the grids of boxes, channels and frequencies say of theirs.
void AddGrids(MeaningList* list);

}  // namespace orvane

#endif  // ORVANE_MEANING_DIALOG_FIELDS_H_
