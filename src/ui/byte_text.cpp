// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/byte_text.h"

#include <QToolTip>
#include <algorithm>

namespace orvane {

namespace {

void Tell(QLineEdit* line, const QString& why) {
  QToolTip::showText(line->mapToGlobal(QPoint(0, line->height() / 2)), why, line);
}

}  // namespace

void TellNotLatin1(QLineEdit* line) {
  Tell(line, QStringLiteral("Not accepted: tables hold only characters of Latin-1"));
}

void TellWhyRejected(QLineEdit* line) {
  if (line->text().size() >= line->maxLength()) {
    Tell(line, QStringLiteral("No more than %1 characters").arg(line->maxLength()));
  } else {
    TellNotLatin1(line);
  }
}

QValidator::State ByteTextValidator::validate(QString& text, int& /*position*/) const {
  while (text.endsWith(QLatin1Char('\n')) || text.endsWith(QLatin1Char('\r'))) {
    text.chop(1);  // as pasted from other programs
  }
  const bool are_bytes = std::all_of(text.begin(), text.end(), [](QChar character) {
    return character.unicode() >= 1 && character.unicode() <= 0xFF && character != u'\n' &&
           character != u'\r';
  });
  return are_bytes ? Acceptable : Invalid;
}

}  // namespace orvane
