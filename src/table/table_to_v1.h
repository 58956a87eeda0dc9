// SPDX-License-Identifier: GPL-3.0-or-later
// Parameter tables for older boxes: version 1, with a copy as version 2.
#ifndef ORVANE_TABLE_TABLE_TO_V1_H_
#define ORVANE_TABLE_TABLE_TO_V1_H_

#include "files/batch.h"
#include "table/param_table.h"

namespace orvane {

/// NAME.TBL becomes NAME.TB2 (version 2) and NAME.TBL (version 1); the letters must be capitals,
/// any other name is written over with version 1. `scratch` is the table at the start and is
/// carried from file to file, so that a key missing in one file keeps the value of the file before:
/// the conversion is meant for complete tables. The header texts of version 2 are copied to the
/// single fields that older boxes know.
///
/// Beside the inputs, whatever would be written over is kept as FILE.bak first, except an input
/// NAME.TBL, which NAME.TB2 holds by then. In an output folder no backups are made. A file that
/// does not load is left alone.
Conversion TableToV1(const ParamTable& scratch);

}  // namespace orvane

#endif  // ORVANE_TABLE_TABLE_TO_V1_H_
