// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_MEANING_KEY_MEANING_H_
#define ORVANE_MEANING_KEY_MEANING_H_

#include <cstdint>
#include <string>
#include <vector>

#include "forms/form_field.h"
#include "table/param_key.h"

namespace orvane {

/// A number that a key may hold and what it means.
struct CodedValue {
  std::int32_t stored = 0;
  std::string text;
};

/// A control that shows or edits a key.
struct EditPlace {
  std::string dialog;  ///< its title
  std::string label;   ///< as the dialog shows it, without blanks around it
  int control = 0;     ///< its number; 0 for a cell of a grid
  bool is_only_shown = false;
};

/// What is known of a parameter. All texts are for people and plain ASCII.
struct KeyMeaning {
  ParamKey key = {};
  std::string name;        ///< short, such as "Survey method"
  std::string unit = {};   ///< of the stored value; "12 min or 20 min" where dialogs differ
  std::string range = {};  ///< what dialogs accept, such as "0 to 100"; empty: anything
  Limits limits = {};      ///< the same as numbers, of what is shown
  double to_shown = 1;     ///< of a number: shown = stored x this
  std::vector<CodedValue> values = {};  ///< in the order of the stored numbers
  std::vector<EditPlace> places = {};   ///< none where no dialog has it
};

}  // namespace orvane

#endif  // ORVANE_MEANING_KEY_MEANING_H_
