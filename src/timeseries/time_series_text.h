// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TIME_SERIES_TEXT_H_
#define ORVANE_TIMESERIES_TIME_SERIES_TEXT_H_

#include <string>
#include <string_view>

#include "files/batch.h"
#include "timeseries/leave_out.h"
#include "timeseries/ts_header.h"

namespace orvane {

/// The path of a time series file's text: in lower case (by `LowerCasedPath`), without extension,
/// with "_TS%d" for a band file, and ".txt".
std::string TsTextName(std::string_view path);

/// Time series as readable text. Band files, by the digit that ends the path, have 32-byte headers,
/// all others `header_size`: no companion table is looked at. A shorter header than the full one
/// has no frequency, which is then 0. A cut last record has the samples that are there, and a note.
/// Records that are chosen are left out; a file of which nothing is left fails.
Conversion TimeSeriesText(TsHeaderSize header_size = TsHeaderSize::kFull,
                          LeaveOutChoice leave_out = {});

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TIME_SERIES_TEXT_H_
