// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_FIELD_SHEET_PRINT_H_
#define ORVANE_EDITORS_WIDGETS_FIELD_SHEET_PRINT_H_

#include <QPainter>
#include <QPrinter>
#include <QSizeF>
#include <QWidget>

#include "editors/field_sheet.h"
#include "editors/spread_map.h"

namespace orvane {

/// One page: lines, channels, map, blanks for the pen. `size` in points of 1/72 inch, like all that
/// the painter takes.
void PaintFieldSheet(const FieldSheet& sheet, const SpreadMap& map, const QSizeF& size,
                     QPainter* painter);

/// Prints a page for each box of a table; `steps` as of `FieldSheetsOf()`. False where the printer
/// fails.
bool PrintFieldSheets(const ParamTable& table, const Clock& now, const ScheduleFile* steps,
                      QPrinter* printer);

/// Asks for a printer, or a PDF file, before.
void AskAndPrintFieldSheets(const ParamTable& table, const ScheduleFile* steps, QWidget* parent);

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_FIELD_SHEET_PRINT_H_
