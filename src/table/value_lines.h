// SPDX-License-Identifier: GPL-3.0-or-later
// Reading what values_text.h writes, and what people write by hand. Applying is a step of its own.
#ifndef ORVANE_TABLE_VALUE_LINES_H_
#define ORVANE_TABLE_VALUE_LINES_H_

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "table/param_table.h"

namespace orvane {

enum class LineState {
  kNew,          ///< would change the table, as the lines before it leave it
  kSame,         ///< is what the table holds
  kUnknownKey,   ///< no such parameter
  kNotParsable,  ///< no assignment, or a value that does not fit
  kReadOnly,     ///< the version of the file, which only a save sets
};

/// A line that is neither empty nor a comment.
struct ValueLine {
  std::size_t number = 0;  ///< of the line in the text, from 1
  LineState state = LineState::kNotParsable;
  ParamKey key;        ///< where it is known
  ParamValue value{};  ///< of new and same lines
  std::string reason;  ///< of the others, with the key as it was given

  bool IsBad() const { return state != LineState::kNew && state != LineState::kSame; }
};

struct ValueLines {
  std::vector<ValueLine> lines;  ///< all good ones, and of the bad ones the first `kMostBad`
  std::size_t bad = 0;           ///< all bad ones
  static constexpr std::size_t kMostBad = 1000;
};

/// The largest text that is read: a whole table with comments takes a tenth of it.
inline constexpr std::size_t kMostValuesBytes = 1 << 20;

/// Any bytes may come in. Fails where there are more than `kMostValuesBytes`, and where they are
/// UTF-16, which would only give bad lines.
Result<ValueLines> ReadValueLines(std::string_view text, const ParamTable& table);

/// The bytes of a values file; fails where it cannot be read, or is larger than such files are.
Result<std::string> LoadValuesText(const std::filesystem::path& path);

/// Stores the values of the new lines in their order, in the table that they were read for or one
/// of the same dictionary. How many of them changed it.
std::size_t ApplyValueLines(std::span<const ValueLine> lines, ParamTable* table);

}  // namespace orvane

#endif  // ORVANE_TABLE_VALUE_LINES_H_
