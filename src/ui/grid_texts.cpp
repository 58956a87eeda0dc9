// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/grid_texts.h"

#include <QStringConverter>
#include <algorithm>
#include <array>
#include <utility>

namespace orvane {
namespace {

constexpr std::array<std::pair<char, char>, 4> kEscapes = {
    {{'\\', '\\'}, {'t', '\t'}, {'n', '\n'}, {'r', '\r'}}};

QString Escaped(const QString& cell) {
  QString text;
  for (const QChar c : cell) {
    const auto* escape = std::find_if(kEscapes.begin(), kEscapes.end(),
                                      [&](const auto& e) { return c == QLatin1Char(e.second); });
    if (escape == kEscapes.end()) {
      text += c;
    } else {
      text += QLatin1Char('\\');
      text += QLatin1Char(escape->first);
    }
  }
  return text;
}

std::optional<QString> Unescaped(const QString& text) {
  QString cell;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] != QLatin1Char('\\')) {
      cell += text[i];
      continue;
    }
    if (++i == text.size()) {
      return std::nullopt;
    }
    const auto* escape = std::find_if(kEscapes.begin(), kEscapes.end(), [&](const auto& e) {
      return text[i] == QLatin1Char(e.first);
    });
    if (escape == kEscapes.end()) {
      return std::nullopt;
    }
    cell += QLatin1Char(escape->second);
  }
  return cell;
}

// The first header cells that differ, where there is one.
QString DifferenceOf(const GridTexts& rows, const GridTexts& header) {
  if (rows.empty() || header.empty()) {
    return {};
  }
  const auto [wanted, found] = std::mismatch(header.front().begin(), header.front().end(),
                                             rows.front().begin(), rows.front().end());
  return wanted == header.front().end() || found == rows.front().end()
             ? QString()
             : QStringLiteral(": \"%1\" and not \"%2\"").arg(*found, *wanted);
}

}  // namespace

GridTexts SplitPastedText(QString text) {
  text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  if (text.isEmpty()) {
    return {};
  }
  if (text.endsWith(QLatin1Char('\n'))) {
    text.chop(1);
  }
  GridTexts rows;
  for (const QString& line : text.split(QLatin1Char('\n'))) {
    rows.push_back(line.split(QLatin1Char('\t')));
  }
  return rows;
}

std::optional<QByteArray> WriteGridTexts(const GridTexts& texts) {
  QString text;
  for (const QStringList& row : texts) {
    QStringList cells;
    for (const QString& cell : row) {
      cells << Escaped(cell);
    }
    text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
  }
  QStringEncoder encoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
  QByteArray bytes = encoder(text);
  return encoder.hasError() ? std::nullopt : std::optional(std::move(bytes));
}

Result<GridTexts> ReadGridTexts(const QByteArray& bytes, const GridTexts& header,
                                qsizetype columns) {
  const auto fail = [](const QString& why) { return Failure(why.toStdString()); };
  QStringDecoder decoder(QStringConverter::Utf8, QStringConverter::Flag::Stateless);
  const QString text = decoder(bytes);
  if (decoder.hasError()) {
    return fail(QStringLiteral("the text is not UTF-8"));
  }
  GridTexts rows = SplitPastedText(text);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const QString line = QStringLiteral("line %1: ").arg(i + 1);
    if (rows[i].size() != columns) {
      return fail(line + QStringLiteral("%1 cells instead of %2").arg(rows[i].size()).arg(columns));
    }
    for (QString& cell : rows[i]) {
      auto unescaped = Unescaped(cell);
      if (!unescaped) {
        return fail(line +
                    QStringLiteral("a backslash that is not followed by t, n, r or a backslash"));
      }
      cell = *std::move(unescaped);
    }
  }
  if (rows.size() < header.size() || !std::equal(header.begin(), header.end(), rows.begin())) {
    return fail(QStringLiteral("the header is a different one") + DifferenceOf(rows, header));
  }
  rows.erase(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(header.size()));
  return rows;
}

}  // namespace orvane
