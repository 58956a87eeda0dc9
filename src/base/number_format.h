// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers in printf's formats, character for character as the C library writes them in the C
// locale, but many times as fast and whatever the user's locale is. No memory is allocated: the
// caller gives room for `kMaxNumberText` characters, all of which may be changed, and gets the end
// of the number; no NUL follows it.
#ifndef ORVANE_BASE_NUMBER_FORMAT_H_
#define ORVANE_BASE_NUMBER_FORMAT_H_

#include <cstddef>
#include <cstdint>

namespace orvane {

/// Largest width and precision that may be asked for.
inline constexpr int kMaxNumberWidth = 64;
inline constexpr int kMaxPrecision = 40;
/// Room for the longest text (sign and 309 digits of the largest double, point and decimals) and
/// for what is written after shorter ones, because whole words are quicker than single characters.
inline constexpr std::size_t kMaxNumberText = 400;

/// "%{width}.{precision}f"
char* WriteFixed(char* to, double value, int precision, int width = 0);
/// "%{width}.{precision}e"
char* WriteExponent(char* to, double value, int precision, int width = 0);
/// "%{width}.{precision}g"
char* WriteGeneral(char* to, double value, int precision, int width = 0);
/// "%{width}d", with `fill` '0' "%0{width}d".
char* WriteInt(char* to, std::int64_t value, int width = 0, char fill = ' ');
/// "%0{digits}X"
char* WriteHex(char* to, std::uint64_t value, int digits);

}  // namespace orvane

#endif  // ORVANE_BASE_NUMBER_FORMAT_H_
