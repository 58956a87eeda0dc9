// SPDX-License-Identifier: GPL-3.0-or-later
// What a line shows besides its text.
#ifndef ORVANE_UI_LINE_MARKS_H_
#define ORVANE_UI_LINE_MARKS_H_

#include <QLineEdit>
#include <QString>

namespace orvane {

/// Limits typing to so many characters, where not 0; a longer text that is there may stay and be
/// shortened.
void LimitTyping(QLineEdit* line, int max_length);

/// A sign of warning at the end of the line, which gives the text in its tip and to assistive
/// tools; none where the text is empty.
void MarkLine(QLineEdit* line, const QString& warning);

/// A frame in the warning colour around a line whose text OK would refuse.
void FrameLine(QLineEdit* line, bool is_wrong);

}  // namespace orvane

#endif  // ORVANE_UI_LINE_MARKS_H_
