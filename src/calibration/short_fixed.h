// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers of a calibration as text: "%7.4f" and the like, three to four times as fast as the
// general way where they have at most three digits before the point, as nearly all of them.
#ifndef ORVANE_CALIBRATION_SHORT_FIXED_H_
#define ORVANE_CALIBRATION_SHORT_FIXED_H_

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "base/number_format.h"

namespace orvane {

/// A number below 1000 with its sign, right-aligned in four characters, and how many of these are
/// blank. Negative ones follow the others.
struct ShortWhole {
  std::array<char, 7> text{' ', ' ', ' ', '0', ' ', ' ', ' '};
  std::uint8_t blanks = 3;
};
inline constexpr std::size_t kShortWholes = 1000;
inline constexpr auto kShortWholeTexts = [] {
  std::array<ShortWhole, 2 * kShortWholes> wholes{};
  for (std::size_t i = 0; i < wholes.size(); ++i) {
    ShortWhole& whole = wholes[i];
    std::size_t at = 4;
    for (std::size_t rest = i % kShortWholes; rest > 0 || at == 4; rest /= 10) {
      whole.text[--at] = static_cast<char>('0' + rest % 10);
    }
    if (i >= kShortWholes) {
      whole.text[--at] = '-';
    }
    whole.blanks = static_cast<std::uint8_t>(at);
  }
  return wholes;
}();

/// The digits of 00 to 99.
inline constexpr auto kDigitPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

/// printf's "%{width}.{precision}f", with room as for `WriteFixed`.
template <int precision, int width>
char* WriteShortFixed(char* to, double value) {
  static_assert(precision == 2 || precision == 4 || precision == 5);
  constexpr int kWholeWidth = width - precision - 1;  // of sign and digits before the point
  static_assert(kWholeWidth >= 1 && kWholeWidth <= 4);
  constexpr std::uint32_t kScale = precision == 2 ? 100 : precision == 4 ? 10000 : 100000;
  // A product is off by less than this; nearer to one half it could be rounded to either side.
  constexpr double kUnsure = 1e-6;

  const double scaled = std::abs(value) * kScale;
  if (!(scaled < double{kShortWholes} * kScale - 1)) {
    return WriteFixed(to, value, precision, width);
  }
  auto number = static_cast<std::uint32_t>(scaled);
  const double above_half = scaled - number - 0.5;
  if (std::abs(above_half) < kUnsure) {
    return WriteFixed(to, value, precision, width);
  }
  number += static_cast<std::uint32_t>(above_half > 0);
  const std::size_t fraction = number % kScale;
  const ShortWhole& whole =
      kShortWholeTexts[number / kScale + (std::signbit(value) ? kShortWholes : 0)];
  const int skipped = std::min<int>(whole.blanks, 4 - kWholeWidth);
  std::memcpy(to, &whole.text[static_cast<std::size_t>(skipped)], 4);
  to += 4 - skipped;
  *to++ = '.';
  if constexpr (precision == 5) {
    *to++ = static_cast<char>('0' + fraction / 10000);
  }
  if constexpr (precision > 2) {
    std::memcpy(to, &kDigitPairs[2 * (fraction / 100 % 100)], 2);
    to += 2;
  }
  std::memcpy(to, &kDigitPairs[2 * (fraction % 100)], 2);
  return to + 2;
}

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_SHORT_FIXED_H_
