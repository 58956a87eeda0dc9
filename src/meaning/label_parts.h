// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_MEANING_LABEL_PARTS_H_
#define ORVANE_MEANING_LABEL_PARTS_H_

#include <string>
#include <string_view>

namespace orvane {

/// A label of a dialog taken apart: "Ex dipole length (m)".
struct LabelParts {
  std::string name;       ///< "Ex dipole length": no doubled blanks, no colon at its end
  std::string_view unit;  ///< "m", spelled the same for every label; empty without one
};

/// Only brackets at the end that hold a unit are one: "Rx dipole length (MN)" is a name.
LabelParts PartsOf(std::string_view label);

}  // namespace orvane

#endif  // ORVANE_MEANING_LABEL_PARTS_H_
