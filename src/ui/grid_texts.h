// SPDX-License-Identifier: GPL-3.0-or-later
// The cells of a grid as one text: for the clipboard and for files.
#ifndef ORVANE_UI_GRID_TEXTS_H_
#define ORVANE_UI_GRID_TEXTS_H_

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

#include "base/result.h"

namespace orvane {

using GridTexts = std::vector<QStringList>;  // by row, then column

// Rows end with any line end, cells with a tab. A line end at the very end begins no row, so that
// an empty text has none.
GridTexts SplitPastedText(QString text);

// A file of cells: UTF-8, each row a line, the cells separated by tabs; within a cell tabs and line
// ends are written \t, \n and \r, a backslash twice. Nothing if a text is no valid Unicode.
std::optional<QByteArray> WriteGridTexts(const GridTexts& texts);

// The rows of such a file, each of `columns` cells, after those of `header`, which must be equal.
Result<GridTexts> ReadGridTexts(const QByteArray& bytes, const GridTexts& header,
                                qsizetype columns);

}  // namespace orvane

#endif  // ORVANE_UI_GRID_TEXTS_H_
