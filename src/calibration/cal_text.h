// SPDX-License-Identifier: GPL-3.0-or-later
// Calibration files as comma-separated text that people read; docs/formats/calibration.md
// describes the form.
#ifndef ORVANE_CALIBRATION_CAL_TEXT_H_
#define ORVANE_CALIBRATION_CAL_TEXT_H_

#include "calibration/cal_header.h"
#include "files/batch.h"
#include "files/text_file.h"

namespace orvane {

/// The export's own numbers for a file that it cannot convert.
enum CalTextCode : int {
  kCalTextNoInput = 2,   ///< the file cannot be opened
  kCalTextNoHeader = 3,  ///< its first 132 bytes cannot be read
  kCalTextNoOutput = 4,  ///< the text cannot be created
};

/// NAME.CLB or NAME.CLC becomes name.txt, in lower case. Any kind is converted, whatever its
/// passes; at most 500 records. A cut last record is noted.
Conversion ExportCalToText();

/// The lines of the header, and those of one record with an empty line after it.
void WriteCalHeader(const CalHeader& header, TextFile* out);
void WriteCalRecord(const CalFileRecord& record, std::size_t channels, TextFile* out);

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_CAL_TEXT_H_
