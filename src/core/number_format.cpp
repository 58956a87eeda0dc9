// SPDX-License-Identifier: GPL-3.0-or-later
// A real is scaled by a power of ten to an integer with the digits wanted. The double product or
// quotient is off by less than half a unit of its last place, so its rounding to an integer is that
// of the exact value unless its fraction is exactly one half; then the sign of the residual, which
// a fused multiply-add gives exactly, decides, and without a residual the even neighbour. This
// holds where the power is exact (up to 10^22) and the integer below 2^53. Powers that are not
// exact serve as long as the fraction is further from one half than they can be wrong. Everything
// else is left to std::to_chars, which writes printf's digits as well, only slower.
#include "core/number_format.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstring>

#include "core/ascii.h"

namespace orvane {
namespace {

constexpr int kExactPower = 22;  // 10^22 is the last that a double holds exactly
constexpr double kTwo53 = 9007199254740992.0;
// Relative error of a product with a rounded power: two roundings, with room.
constexpr double kScaleError = 4.5e-16;

// 10^-300 to 10^300, each as the nearest double.
constexpr int kLastPower = 300;
struct Powers {
  std::array<double, 2 * kLastPower + 1> of{};

  Powers() {
    for (int i = -kLastPower; i <= kLastPower; ++i) {
      std::array<char, 8> text{'1', 'e'};
      const auto end = std::to_chars(text.data() + 2, text.data() + text.size(), i).ptr;
      std::from_chars(text.data(), end, of[static_cast<std::size_t>(i + kLastPower)]);
    }
  }
};
const Powers kPowers;
double PowerOfTen(int exponent) {
  return kPowers.of[static_cast<std::size_t>(exponent + kLastPower)];
}

constexpr auto kIntPowers = [] {
  std::array<std::uint64_t, 20> powers{};
  std::uint64_t power = 1;
  for (std::uint64_t& p : powers) {
    p = power;
    power *= 10;
  }
  return powers;
}();

constexpr auto kPairs = [] {
  std::array<char, 200> pairs{};
  for (std::size_t i = 0; i < 100; ++i) {
    pairs[2 * i] = static_cast<char>('0' + i / 10);
    pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
  }
  return pairs;
}();

bool IsNegative(double value) { return std::signbit(value); }

// Writes exactly `count` digits that end before `end`.
void PutDigits(char* end, std::uint64_t number, int count) {
  for (; count >= 2; count -= 2) {
    end -= 2;
    std::memcpy(end, &kPairs[2 * (number % 100)], 2);
    number /= 100;
  }
  if (count > 0) {
    end[-1] = static_cast<char>('0' + number % 10);
  }
}

int CountDigits(std::uint64_t number) {
  // The bits times log10(2), one too many where the power is not reached.
  const int guess = (static_cast<int>(std::bit_width(number | 1)) * 1233) >> 12;
  return guess + (number >= kIntPowers[static_cast<std::size_t>(guess)] ? 1 : 0);
}

// An unsigned number that `scaled` rounds to, and whether that is certain.
struct Rounded {
  std::uint64_t number = 0;
  bool known = false;
};

// `residual` tells the sign of the exact value minus `scaled`; it is asked for exact halves only.
template <typename Residual>
Rounded RoundExactly(double scaled, Residual residual) {
  if (!(scaled < kTwo53)) {
    return {};
  }
  auto number = static_cast<std::uint64_t>(scaled);
  const double fraction = scaled - static_cast<double>(number);
  if (fraction == 0.5) {
    const double rest = residual();
    number += rest > 0 || (rest == 0 && number % 2 == 1) ? 1 : 0;
  } else {
    number += fraction > 0.5 ? 1 : 0;
  }
  return {number, true};
}

// The integer nearest to `value` times 10^`power`; `value` is not negative.
Rounded Scale(double value, int power) {
  if (power >= 0 && power <= kExactPower) {
    const double factor = PowerOfTen(power);
    const double scaled = value * factor;
    return RoundExactly(scaled, [=] { return std::fma(value, factor, -scaled); });
  }
  if (power < 0 && power >= -kExactPower) {
    const double divisor = PowerOfTen(-power);
    const double scaled = value / divisor;
    return RoundExactly(scaled, [=] { return std::fma(-scaled, divisor, value); });
  }
  if (power < -kLastPower || power > kLastPower) {
    return {};
  }
  const double scaled = value * PowerOfTen(power);
  const double error = scaled * kScaleError;
  if (!(error < 0.25)) {
    return {};
  }
  const auto number = static_cast<std::uint64_t>(scaled);
  const double above_half = scaled - static_cast<double>(number) - 0.5;
  return {number + (above_half > 0 ? 1 : 0), std::abs(above_half) > error};
}

// `value` as digits d.ddd times ten to the exponent.
struct Decimal {
  std::uint64_t digits = 0;
  int exponent = 0;
  bool known = false;
};

// `count` significant digits of a finite value that is not negative.
Decimal ToDecimal(double value, int count) {
  if (value == 0) {
    return {0, 0, true};
  }
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const int binary = static_cast<int>(bits >> 52U) - 1023;
  if (binary <= -990 || binary >= 990 || count > 17) {
    return {};  // near the ends of the range powers would leave it
  }
  // log10(2) times the exponent; the true one is that or the next.
  int exponent = (binary * 315653) >> 20;
  exponent += value >= PowerOfTen(exponent + 1) ? 1 : 0;
  const Rounded rounded = Scale(value, count - 1 - exponent);
  Decimal decimal{rounded.number, exponent, rounded.known};
  if (decimal.digits >= kIntPowers[static_cast<std::size_t>(count)]) {
    decimal.digits /= 10;  // 9.99 became 10.0
    ++decimal.exponent;
  }
  return decimal;
}

char* PutExponent(char* to, int exponent) {
  *to++ = 'e';
  *to++ = exponent < 0 ? '-' : '+';
  const auto size = static_cast<std::uint64_t>(std::abs(exponent));
  const int digits = size < 100 ? 2 : 3;
  PutDigits(to + digits, size, digits);
  return to + digits;
}

// Moves what was written without room before it to the right.
char* PadLeft(char* start, char* end, int width) {
  const auto length = end - start;
  if (length >= width) {
    return end;
  }
  std::memmove(start + (width - length), start, static_cast<std::size_t>(length));
  std::memset(start, ' ', static_cast<std::size_t>(width - length));
  return start + width;
}

// Blanks and the sign before a text of known length.
char* PutHead(char* to, int length, bool negative, int width) {
  const int blanks = std::max(width - length - (negative ? 1 : 0), 0);
  std::memset(to, ' ', static_cast<std::size_t>(blanks));
  to += blanks;
  *to = '-';
  return to + (negative ? 1 : 0);
}

char* WriteSlowly(char* to, double value, std::chars_format format, int precision, int width) {
  return PadLeft(to, std::to_chars(to, to + kMaxNumberText, value, format, precision).ptr, width);
}

// A point behind the first `whole` of `count` digits.
void PutWithPoint(char* to, std::uint64_t digits, int count, int whole) {
  PutDigits(to + 1 + count, digits, count);
  std::memmove(to, to + 1, static_cast<std::size_t>(whole));
  to[whole] = '.';
}

}  // namespace

char* WriteFixed(char* to, double value, int precision, int width) {
  assert(precision >= 0 && precision <= kMaxPrecision && width <= kMaxNumberWidth);
  const Rounded rounded = precision <= kExactPower ? Scale(std::abs(value), precision) : Rounded{};
  if (!rounded.known) {
    return WriteSlowly(to, value, std::chars_format::fixed, precision, width);
  }
  const int count = std::max(CountDigits(rounded.number), precision + 1);
  const int length = count + (precision > 0 ? 1 : 0);
  to = PutHead(to, length, IsNegative(value), width);
  if (precision == 0) {
    PutDigits(to + count, rounded.number, count);
  } else {
    PutWithPoint(to, rounded.number, count, count - precision);
  }
  return to + length;
}

char* WriteExponent(char* to, double value, int precision, int width) {
  assert(precision >= 0 && precision <= kMaxPrecision && width <= kMaxNumberWidth);
  const Decimal decimal = precision <= 16 && std::isfinite(value)
                              ? ToDecimal(std::abs(value), precision + 1)
                              : Decimal{};
  if (!decimal.known) {
    return WriteSlowly(to, value, std::chars_format::scientific, precision, width);
  }
  const int mantissa = 1 + precision + (precision > 0 ? 1 : 0);
  const int length = mantissa + (std::abs(decimal.exponent) < 100 ? 4 : 5);
  to = PutHead(to, length, IsNegative(value), width);
  if (precision == 0) {
    *to = static_cast<char>('0' + decimal.digits);
  } else {
    PutWithPoint(to, decimal.digits, precision + 1, 1);
  }
  return PutExponent(to + mantissa, decimal.exponent);
}

char* WriteGeneral(char* to, double value, int precision, int width) {
  assert(precision >= 0 && precision <= kMaxPrecision && width <= kMaxNumberWidth);
  return WriteSlowly(to, value, std::chars_format::general, precision, width);
}

char* WriteInt(char* to, std::int64_t value, int width, char fill) {
  assert(width <= kMaxNumberWidth);
  const bool negative = value < 0;
  const auto bits = static_cast<std::uint64_t>(value);
  const std::uint64_t size = negative ? 0 - bits : bits;
  int count = CountDigits(size);
  if (fill == '0') {
    count = std::max(count, width - (negative ? 1 : 0));
    width = 0;
  }
  to = PutHead(to, count, negative, width);
  PutDigits(to + count, size, count);
  return to + count;
}

char* WriteHex(char* to, std::uint64_t value, int digits) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  const int needed = (static_cast<int>(std::bit_width(value | 1)) + 3) / 4;
  const int count = std::max(digits, needed);
  for (int i = count - 1; i >= 0; --i, value >>= 4U) {
    to[i] = kDigits[value & 0xFU];
  }
  return to + count;
}

}  // namespace orvane
