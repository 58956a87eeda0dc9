// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of a parameter beside its entry: handed in, because the meanings of all keys come
// from all dialogs.
#ifndef ORVANE_EDITORS_RAW_MEANING_H_
#define ORVANE_EDITORS_RAW_MEANING_H_

#include <functional>
#include <string>
#include <vector>

#include "table/param_entry.h"

namespace orvane {

/// A coded value: the number as text and what it stands for.
struct RawChoice {
  std::string value;
  std::string meaning;
};

struct RawMeaning {
  std::string line;                     ///< the name, what the value stands for and the unit
  std::string caution = {};             ///< what is wrong with the value; empty: nothing
  std::vector<RawChoice> choices = {};  ///< none where values are not coded
  bool is_in_dialog = false;            ///< whether a dialog has it
};

/// Of a parameter with its present value.
using Explain = std::function<RawMeaning(const ParamEntry&)>;

}  // namespace orvane

#endif  // ORVANE_EDITORS_RAW_MEANING_H_
