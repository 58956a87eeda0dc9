// SPDX-License-Identifier: GPL-3.0-or-later
// Stored values to what a control shows and back.
#ifndef ORVANE_FORMS_CODECS_H_
#define ORVANE_FORMS_CODECS_H_

#include <cstdint>
#include <string>
#include <vector>

#include "forms/form_field.h"
#include "table/param_key.h"

namespace orvane {

/// What a control shows: a text, or the index of a choice.
struct Shown {
  std::string text;
  int index = kNothingChosen;
};

/// The keys that a field is stored under: none, one, or one for each piece.
std::vector<ParamKey> KeysOf(const Field& field);

/// What a field shows of its stored values, one for each key; times are shifted by `hours`.
Shown ShownOf(const Field& field, const std::vector<ParamValue>& stored, int hours);

/// The values to store for what is shown, one for each key; none where nothing is to be written.
/// Texts that do not parse are read leniently: validate first.
std::vector<ParamValue> StoredOf(const Field& field, const Shown& shown, int hours);

/// Why what the user entered cannot be accepted; empty where it can.
std::string FaultOf(const Field& field, const Shown& shown);

}  // namespace orvane

#endif  // ORVANE_FORMS_CODECS_H_
