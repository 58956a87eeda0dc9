// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/byte_text.h"

#include <algorithm>

namespace orvane {

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
