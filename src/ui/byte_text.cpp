// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/byte_text.h"

#include <algorithm>

namespace orvane {

QValidator::State ByteTextValidator::validate(QString& text, int& /*position*/) const {
  const bool are_bytes = std::all_of(text.begin(), text.end(), [](QChar character) {
    return character.unicode() >= 1 && character.unicode() <= 0xFF;
  });
  return are_bytes ? Acceptable : Invalid;
}

}  // namespace orvane
