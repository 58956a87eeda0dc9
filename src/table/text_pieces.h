// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_TEXT_PIECES_H_
#define ORVANE_TABLE_TEXT_PIECES_H_

#include <string>
#include <string_view>

#include "table/param_table.h"

namespace orvane {

/// A text longer than one value, kept in `StrPT` entries of 15 characters whose keys are the prefix
/// with the numbers from 1 to `pieces` ("SRVY1" .. "SRVY4"): the pieces joined.
std::string ReadTextPieces(const ParamTable& table, std::string_view prefix, int pieces);

}  // namespace orvane

#endif  // ORVANE_TABLE_TEXT_PIECES_H_
