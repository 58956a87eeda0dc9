// SPDX-License-Identifier: GPL-3.0-or-later
#include "support.h"
#include "ui/grid_texts.h"

namespace orvane::fuzz {

void FuzzGridText(Bytes input) {
  constexpr qsizetype kColumns = 3;
  const QByteArray bytes(reinterpret_cast<const char*>(input.data()),
                         static_cast<qsizetype>(input.size()));
  const GridTexts header = {{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}};
  const auto rows = ReadGridTexts(bytes, header, kColumns);
  const GridTexts pasted = SplitPastedText(QString::fromUtf8(bytes));
  Require(static_cast<std::size_t>(bytes.size()) >= pasted.size(), "no rows from nowhere");
  if (!rows) {
    return;
  }
  GridTexts all = header;
  for (const QStringList& row : *rows) {
    Require(row.size() == kColumns, "every row has its cells");
    all.push_back(row);
  }
  const auto written = WriteGridTexts(all);
  Require(written.has_value(), "what was read can be written");
  Require(ReadGridTexts(*written, header, kColumns) == *rows, "cells come back");
}

}  // namespace orvane::fuzz
