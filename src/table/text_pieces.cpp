// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/text_pieces.h"

#include "base/number_text.h"
#include "table/param_text.h"

namespace orvane {

std::string ReadTextPieces(const ParamTable& table, std::string_view prefix, int pieces) {
  std::string text;
  for (int piece = 1; piece <= pieces; ++piece) {
    const ParamEntry* entry = table.FindParam(std::string(prefix) + FormatInt(piece));
    if (entry != nullptr && entry->type == StrPT) {
      text += CharactersOf(entry->value, kMaxTextLength);
    }
  }
  return text;
}

}  // namespace orvane
