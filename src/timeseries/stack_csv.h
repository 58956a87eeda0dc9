// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_STACK_CSV_H_
#define ORVANE_TIMESERIES_STACK_CSV_H_

#include "files/batch.h"
#include "files/text_file.h"
#include "timeseries/stack_result.h"

namespace orvane {

/// What an item is: two 32-bit floats (TDIP, TDEM) or one (CSAMT, SIP, FDEM). The file does not
/// say; the user must.
enum class StackDomain { kTime, kFrequency };

/// The line of a record, with its line end.
void WriteStackLine(const StackRecord& record, StackDomain domain, TextFile* out);

/// NAME.trs becomes NAME.csv, a line for each record. A cut last record is noted, and
/// records whose items are of the other domain's size.
Conversion StackCsv(StackDomain domain);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_STACK_CSV_H_
