// SPDX-License-Identifier: GPL-3.0-or-later
// A real is scaled by a power of ten to an integer with the digits wanted. The double product or
// quotient is off by less than half a unit of its last place, so its rounding to an integer is that
// of the exact value unless its fraction is exactly one half; then the sign of the residual, which
// a fused multiply-add gives exactly, decides, and without a residual the even neighbour. This
// holds where the power is exact (up to 10^22) and the integer below 2^53. Powers that are not
// exact serve as long as the fraction is further from one half than they can be wrong. Everything
// else is left to std::to_chars, which writes printf's digits as well, only slower.
#include "base/number_format.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <charconv>
#include <cmath>
#include <cstring>

#include "base/ascii.h"

namespace orvane {
namespace {

constexpr int kExactPower = 22;  // 10^22 is the last that a double holds exactly
constexpr double kTwo53 = 9007199254740992.0;
// Relative error of a product with a rounded power: two roundings, with room.
constexpr double kScaleError = 4.5e-16;

// 10^-300 to 10^300, each as the nearest double.
constexpr int kLastPower = 300;
constexpr std::size_t PlaceOf(int exponent) {
  const int place = exponent + kLastPower;
  return static_cast<std::size_t>(place);
}
struct Powers {
  std::array<double, 2 * kLastPower + 1> of{};

  Powers() noexcept {
    for (int i = -kLastPower; i <= kLastPower; ++i) {
      std::array<char, 8> text{'1', 'e'};
      char* const end = std::to_chars(text.data() + 2, text.data() + text.size(), i).ptr;
      std::from_chars(text.data(), end, of[PlaceOf(i)]);
    }
  }
};
const Powers kPowers;
double PowerOfTen(int exponent) { return kPowers.of[PlaceOf(exponent)]; }

constexpr auto kIntPowers = [] {
  std::array<std::uint64_t, 20> powers{};
  std::uint64_t power = 1;
  for (std::uint64_t& p : powers) {
    p = power;
    power *= 10;
  }
  return powers;
}();

// Eight digits of a number below 10^8 at once, the first in the lowest byte: halves, quarters and
// digits are split off in the lanes of one word.
std::uint64_t EightDigits(std::uint64_t number) {
  const std::uint64_t fours = number / 10000 | (number % 10000) << 32U;
  const std::uint64_t hundreds = ((fours * 10486) >> 20U) & 0x0000007F0000007FU;
  const std::uint64_t twos = hundreds | (fours - 100 * hundreds) << 16U;
  const std::uint64_t tens = ((twos * 103) >> 10U) & 0x000F000F000F000FU;
  return tens | (twos - 10 * tens) << 8U;
}

__extension__ using Wide = unsigned __int128;
using Narrow = std::uint64_t;

constexpr int kDigits = 16;  // as many as a `Wide` has bytes
constexpr Narrow kZeros = 0x3030303030303030U;

Narrow SplitDigits(std::uint64_t number, Narrow /*type*/) { return EightDigits(number); }
Wide SplitDigits(std::uint64_t number, Wide /*type*/) {
  return Wide{EightDigits(number / 100000000)} | Wide{EightDigits(number % 100000000)} << 64U;
}

// The last `count` digits of a number below 10^8 or 10^16, leading zeros included. All are made at
// once and moved in registers: that is quicker than a loop over those that are needed.
template <typename Word>
class Digits {
 public:
  Digits(std::uint64_t number, int count)
      : digits_((SplitDigits(number, Word{}) | (Word{kZeros} << (kBits - 64)) | kZeros) >>
                8U * (sizeof(Word) - static_cast<unsigned>(count))) {
    static_assert(std::endian::native == std::endian::little);
  }

  // Those from the `from`-th on, and rubbish after them.
  void Put(char* to, int from = 0) const {
    // In two steps: all digits may go, and a word cannot be shifted by its whole width.
    const unsigned half = 4U * static_cast<unsigned>(from);
    const Word shifted = (digits_ >> half) >> half;
    std::memcpy(to, &shifted, sizeof shifted);
  }

 private:
  static constexpr int kBits = 8 * sizeof(Word);
  Word digits_;
};

// The last `count` digits are this many once the zeros at the end are dropped, one at least.
int CountWithoutZeros(std::uint64_t number, int count) {
  while (count > 1 && number % 10 == 0) {
    number /= 10;
    --count;
  }
  return count;
}

int CountDigits(std::uint64_t number) {
  number |= 1;  // 0 has a digit too; no other count changes
  // The bits times log10(2), one too few where the power is reached.
  const int guess = (static_cast<int>(std::bit_width(number)) * 1233) >> 12;
  return guess + (number >= kIntPowers[static_cast<std::size_t>(guess)] ? 1 : 0);
}

// The integer that a scaled value rounds to, and whether that is certain.
struct Rounded {
  std::uint64_t number = 0;
  bool known = false;
};

// `scaled` is right but for its own rounding; `residual` gives the exact value minus `scaled`. It
// is asked for exact halves only.
template <typename Residual>
Rounded RoundExactly(double scaled, Residual residual) {
  if (!(scaled < kTwo53)) {
    return {};
  }
  auto number = static_cast<std::uint64_t>(static_cast<std::int64_t>(scaled));
  const double above_half = scaled - static_cast<double>(static_cast<std::int64_t>(number)) - 0.5;
  if (above_half == 0) {
    const double rest = residual();
    return {number + (rest > 0 || (rest == 0 && number % 2 == 1) ? 1 : 0), true};
  }
  return {number + static_cast<std::uint64_t>(above_half > 0), true};
}

Rounded Multiply(double value, int power) {
  const double factor = PowerOfTen(power);
  const double scaled = value * factor;
  return RoundExactly(scaled, [=] { return std::fma(value, factor, -scaled); });
}

Rounded Divide(double value, int power) {
  const double divisor = PowerOfTen(power);
  const double scaled = value / divisor;
  return RoundExactly(scaled, [=] { return std::fma(-scaled, divisor, value); });
}

// The integer nearest to `value` times 10^`power`; `value` is not negative. Nearly always the
// first branch is taken, whatever the power: one that is taken now and then costs more than all the
// rest.
inline Rounded Scale(double value, int power) {
  if (power < -kLastPower || power > kLastPower) {
    return {};
  }
  const double scaled = value * PowerOfTen(power);
  const double error = scaled * kScaleError;
  if (error < 0.25) {
    const auto number = static_cast<std::int64_t>(scaled);
    const double above_half = scaled - static_cast<double>(number) - 0.5;
    if (std::abs(above_half) > error) {
      return {static_cast<std::uint64_t>(number + static_cast<std::int64_t>(above_half > 0)), true};
    }
  }
  if (power < -kExactPower || power > kExactPower) {
    return {};
  }
  return power < 0 ? Divide(value, -power) : Multiply(value, power);
}

// `value` as digits d.ddd times ten to the exponent.
struct Decimal {
  std::uint64_t digits = 0;
  int exponent = 0;
  bool known = false;
};

// `count` significant digits of a finite value that is not negative.
inline Decimal ToDecimal(double value, int count) {
  if (value == 0 && count <= kDigits) {
    return {0, 0, true};
  }
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const int binary = static_cast<int>(bits >> 52U) - 1023;
  if (binary <= -990 || binary >= 990 || count > kDigits) {
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
  int size = std::abs(exponent);
  to[0] = 'e';
  to[1] = static_cast<char>('+' + ('-' - '+') * static_cast<int>(exponent < 0));
  to += 2;
  if (size >= 100) {
    *to++ = static_cast<char>('0' + size / 100);
    size %= 100;
  }
  to[0] = static_cast<char>('0' + size / 10);
  to[1] = static_cast<char>('0' + size % 10);
  return to + 2;
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
  std::memset(to, ' ', 16);
  if (width > 16) {
    std::memset(to + 16, ' ', kMaxNumberWidth - 16);
  }
  to += std::max(width - length - (negative ? 1 : 0), 0);
  *to = '-';
  return to + (negative ? 1 : 0);
}

char* WriteSlowly(char* to, double value, std::chars_format format, int precision, int width) {
  return PadLeft(to, std::to_chars(to, to + kMaxNumberText, value, format, precision).ptr, width);
}

// Digits with a point after the first `whole` of them.
template <typename Word>
void PutWithPoint(char* to, const Digits<Word>& digits, int whole) {
  digits.Put(to);
  to[whole] = '.';
  digits.Put(to + whole + 1, whole);
}

// printf's "%g" drops the zeros at the end and a point without digits after it.
char* PutGeneral(char* to, const Decimal& decimal, int precision, bool negative, int width) {
  const Digits<Wide> digits(decimal.digits, precision);
  const int count = CountWithoutZeros(decimal.digits, precision);
  const int exponent = decimal.exponent;
  if (exponent < -4 || exponent >= precision) {
    const int mantissa = count + (count > 1 ? 1 : 0);
    to = PutHead(to, mantissa + (std::abs(exponent) < 100 ? 4 : 5), negative, width);
    PutWithPoint(to, digits, 1);
    return PutExponent(to + mantissa, exponent);
  }
  if (exponent < 0) {
    to = PutHead(to, count + 1 - exponent, negative, width);
    std::copy_n("0.000", 5, to);
    digits.Put(to + 1 - exponent);
    return to + 1 - exponent + count;
  }
  const int whole = exponent + 1;
  const int length = count > whole ? count + 1 : whole;
  to = PutHead(to, length, negative, width);
  PutWithPoint(to, digits, whole);
  return to + length;
}

}  // namespace

char* WriteFixed(char* to, double value, int precision, int width) {
  assert(precision >= 0 && precision <= kMaxPrecision && width <= kMaxNumberWidth);
  const Rounded rounded = precision < kDigits ? Scale(std::abs(value), precision) : Rounded{};
  if (!rounded.known) {
    return WriteSlowly(to, value, std::chars_format::fixed, precision, width);
  }
  const int digits = CountDigits(rounded.number);
  const int zeros = precision + 1 - digits;             // before them, where above 0
  const int count = digits + (zeros & ~(zeros >> 31));  // a branch here would be a guess
  const int length = count + (precision > 0 ? 1 : 0);
  to = PutHead(to, length, std::signbit(value), width);
  PutWithPoint(to, Digits<Wide>(rounded.number, count), count - precision);
  return to + length;
}

char* WriteExponent(char* to, double value, int precision, int width) {
  assert(precision >= 0 && precision <= kMaxPrecision && width <= kMaxNumberWidth);
  const Decimal decimal = ToDecimal(std::abs(value), precision + 1);
  if (!decimal.known) {
    return WriteSlowly(to, value, std::chars_format::scientific, precision, width);
  }
  const int mantissa = 1 + precision + (precision > 0 ? 1 : 0);
  to = PutHead(to, mantissa + (std::abs(decimal.exponent) < 100 ? 4 : 5), std::signbit(value),
               width);
  if (precision < 8) {
    PutWithPoint(to, Digits<Narrow>(decimal.digits, precision + 1), 1);
  } else {
    PutWithPoint(to, Digits<Wide>(decimal.digits, precision + 1), 1);
  }
  return PutExponent(to + mantissa, decimal.exponent);
}

char* WriteGeneral(char* to, double value, int precision, int width) {
  assert(precision >= 0 && precision <= kMaxPrecision && width <= kMaxNumberWidth);
  precision = std::max(precision, 1);
  const Decimal decimal = ToDecimal(std::abs(value), precision);
  if (!decimal.known) {
    return WriteSlowly(to, value, std::chars_format::general, precision, width);
  }
  return PutGeneral(to, decimal, precision, std::signbit(value), width);
}

char* WriteInt(char* to, std::int64_t value, int width, char fill) {
  assert(width <= kMaxNumberWidth);
  const auto bits = static_cast<std::uint64_t>(value);
  const std::uint64_t size = value < 0 ? 0 - bits : bits;
  const int digits = CountDigits(size);
  int count = digits;
  if (fill == '0') {
    count = std::max(count, width - (value < 0 ? 1 : 0));
    width = 0;
  }
  to = PutHead(to, count, value < 0, width);
  std::memset(to, '0', kMaxNumberWidth);
  char* const end = to + count;
  to = end - digits;
  if (digits > kDigits) {
    std::to_chars(to, end, size);
  } else {
    Digits<Wide>(size, digits).Put(to);
  }
  return end;
}

char* WriteHex(char* to, std::uint64_t value, int digits) {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  const int needed = (static_cast<int>(std::bit_width(value | 1)) + 3) / 4;
  const int count = std::max(digits, needed);
  for (int i = count - 1; i >= 0; --i, value >>= 4U) {
    to[i] = kHexDigits[value & 0xFU];
  }
  return to + count;
}

}  // namespace orvane
