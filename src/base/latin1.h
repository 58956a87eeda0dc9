// SPDX-License-Identifier: GPL-3.0-or-later
// The texts of tables are Latin-1, those of command lines and messages UTF-8.
#ifndef ORVANE_BASE_LATIN1_H_
#define ORVANE_BASE_LATIN1_H_

#include <string>
#include <string_view>

#include "base/result.h"

namespace orvane {

/// A UTF-8 text in Latin-1. A failure names the character that Latin-1 lacks, or the place that is
/// not UTF-8.
Result<std::string> Latin1FromUtf8(std::string_view text);

/// The same bytes as UTF-8, where control bytes (0 to 0x1F, 0x7F to 0x9F) become \xNN. Nothing
/// else is escaped, a backslash neither.
std::string PrintableLatin1(std::string_view bytes);

/// A text or a file's name as it is, but control characters, ends of lines, changes of direction
/// (U+202E ...) and bytes that are not UTF-8 as \xNN: a terminal would obey some of them.
std::string PrintableUtf8(std::string_view text);

}  // namespace orvane

#endif  // ORVANE_BASE_LATIN1_H_
