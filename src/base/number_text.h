// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers to text and back, always as in the C locale: a decimal comma never reaches a file.
#ifndef ORVANE_BASE_NUMBER_TEXT_H_
#define ORVANE_BASE_NUMBER_TEXT_H_

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/ascii.h"

namespace orvane {

/// printf's "%d" and "%u", of any width.
std::string FormatInt(std::int64_t value);
std::string FormatUnsigned(std::uint64_t value);
template <std::unsigned_integral T>
std::string FormatInt(T value) {
  return FormatUnsigned(value);
}

/// printf's "%.{digits}g": `digits` significant digits in the shorter of fixed and exponent form.
std::string FormatReal(double value, int digits = 10);

/// printf's "%.{decimals}f".
std::string FormatFixed(double value, int decimals);

/// The shortest text that reads back as the same double.
std::string FormatRealExactly(double value);

/// The integer that `text` begins with: leading blanks and a sign are accepted, digits are read as
/// far as they go, junk gives 0, what is too large becomes the nearest 32-bit number.
std::int32_t ParseIntPrefix(std::string_view text);

/// The decimal number that `text` begins with, as atof reads it, but "nan", "inf" and hexadecimal
/// forms are junk. Junk gives 0; a number beyond the doubles gives an infinity.
double ParseRealPrefix(std::string_view text);

/// Strict forms: the whole text must be one number that fits, without blanks.
std::optional<std::int32_t> ParseInt(std::string_view text);
std::optional<double> ParseReal(std::string_view text);

/// The digits that a text ends with, such as the serial number of a sensor; nothing where there are
/// none or too many.
std::optional<std::int32_t> ParseIntAtEnd(std::string_view text);

/// `text` without its leading blanks.
std::string_view SkipBlanks(std::string_view text);

}  // namespace orvane

#endif  // ORVANE_BASE_NUMBER_TEXT_H_
