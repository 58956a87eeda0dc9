// SPDX-License-Identifier: GPL-3.0-or-later
// The boxes of a spread as one list: transmitter monitor, local box, auxiliary and reference boxes.
#ifndef ORVANE_EDITORS_BOX_LIST_H_
#define ORVANE_EDITORS_BOX_LIST_H_

#include <array>
#include <cstdint>
#include <span>

#include "table/param_table.h"

namespace orvane {

enum BoxKind : std::uint32_t {
  kAuxiliaryBox = 0,
  kReferenceBox = 1,
  kLocalBox = 2,
  kTransmitterBox = 3,
};

struct BoxRow {
  std::uint32_t kind = kAuxiliaryBox;
  std::uint32_t serial = 0;  ///< 0: no box
  std::uint32_t channels = 0;
  std::array<std::uint32_t, 4> own{};  ///< for the use of the editor that shows the row
  std::uint32_t control = 0;           ///< mode control word; the local box has none
};
static_assert(sizeof(BoxRow) == 32);

inline constexpr int kMaxBoxes = 8;

using BoxRows = std::array<BoxRow, kMaxBoxes>;

/// Fills `rows` from the table and returns how many there are: transmitter, local box, the
/// auxiliary boxes with a serial number and, for SIP and TDIP, a reference box with one.
int LoadBoxList(const ParamTable& table, BoxRows* rows);

/// Writes the rows under their keys, auxiliary boxes numbered densely in row order (a sixth is
/// dropped), and clears the serial numbers that are not used. The status of the last write.
///
/// kept: channels of the local box go to "NCHN", although "TCHN" counts first when they are read;
/// a reference box is written, or its serial number cleared, only for SIP and TDIP.
Status SaveBoxList(std::span<const BoxRow> rows, ParamTable* table);

}  // namespace orvane

#endif  // ORVANE_EDITORS_BOX_LIST_H_
