// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/number_text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>

#include "base/number_format.h"

namespace orvane {
namespace {

struct Number {
  std::size_t length = 0;  // characters that belong to the number, its sign included; 0: none
  double value = 0;
  bool in_range = true;
};

std::size_t DigitsFrom(std::string_view text, std::size_t at) {
  std::size_t end = at;
  while (end < text.size() && IsDigit(text[end])) {
    ++end;
  }
  return end - at;
}

// [sign] digits [. digits] [e [sign] digits], at least one digit before the exponent.
std::size_t DecimalLength(std::string_view text) {
  std::size_t at = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  std::size_t digits = DigitsFrom(text, at);
  at += digits;
  if (at < text.size() && text[at] == '.') {
    const std::size_t fraction = DigitsFrom(text, at + 1);
    digits += fraction;
    at += 1 + fraction;
  }
  if (digits == 0) {
    return 0;
  }
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    const std::size_t sign = at + 1 < text.size() && (text[at + 1] == '+' || text[at + 1] == '-');
    const std::size_t exponent = DigitsFrom(text, at + 1 + sign);
    at += exponent == 0 ? 0 : 1 + sign + exponent;
  }
  return at;
}

// Of an out-of-range decimal: whether it is too large (else too small).
bool IsHuge(std::string_view decimal) {
  const std::size_t e = decimal.find_first_of("eE");
  const std::string_view mantissa = decimal.substr(0, e);
  const std::size_t first = mantissa.find_first_of("123456789");
  const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
  std::int64_t order = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  if (e != std::string_view::npos) {
    order += ParseIntPrefix(decimal.substr(e + 1));
  }
  return order > 0;
}

Number ReadDecimal(std::string_view text) {
  Number number;
  number.length = DecimalLength(text);
  std::string_view decimal = text.substr(0, number.length);
  const bool negative = !decimal.empty() && decimal[0] == '-';
  if (!decimal.empty() && (negative || decimal[0] == '+')) {
    decimal.remove_prefix(1);
  }
  const auto result =
      std::from_chars(decimal.data(), decimal.data() + decimal.size(), number.value);
  if (result.ec == std::errc::result_out_of_range) {
    number.in_range = false;
    number.value = IsHuge(decimal) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  number.value = negative ? -number.value : number.value;
  return number;
}

template <typename Integer>
std::string Digits(Integer value) {
  std::array<char, 24> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

}  // namespace

std::string FormatInt(std::int64_t value) { return Digits(value); }
std::string FormatUnsigned(std::uint64_t value) { return Digits(value); }

std::string FormatReal(double value, int digits) {
  std::array<char, kMaxNumberText> buffer;  // NOLINT: not to be zeroed
  return {buffer.data(), WriteGeneral(buffer.data(), value, digits)};
}

std::string FormatFixed(double value, int decimals) {
  std::array<char, kMaxNumberText> buffer;  // NOLINT: not to be zeroed
  return {buffer.data(), WriteFixed(buffer.data(), value, decimals)};
}

std::string FormatRealExactly(double value) {
  std::array<char, 40> buffer{};
  return {buffer.data(), std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr};
}

std::string_view SkipBlanks(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
  return text;
}

std::int32_t ParseIntPrefix(std::string_view text) {
  text = SkipBlanks(text);
  const bool negative = !text.empty() && text[0] == '-';
  if (!text.empty() && (negative || text[0] == '+')) {
    text.remove_prefix(1);
  }
  constexpr std::int64_t kLimit = std::int64_t{1} << 31U;
  std::int64_t value = 0;
  for (const char c : text.substr(0, DigitsFrom(text, 0))) {
    value = std::min(value * 10 + (c - '0'), kLimit);
  }
  return static_cast<std::int32_t>(negative ? -value : std::min(value, kLimit - 1));
}

double ParseRealPrefix(std::string_view text) { return ReadDecimal(SkipBlanks(text)).value; }

std::optional<std::int32_t> ParseInt(std::string_view text) {
  if (!text.empty() && text[0] == '+') {
    text.remove_prefix(1);
    if (text.empty() || !IsDigit(text[0])) {
      return std::nullopt;
    }
  }
  std::int32_t value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) {
    return std::nullopt;
  }
  return value;
}

std::optional<std::int32_t> ParseIntAtEnd(std::string_view text) {
  std::size_t digits = text.size();
  while (digits > 0 && IsDigit(text[digits - 1])) {
    --digits;
  }
  return ParseInt(text.substr(digits));
}

std::optional<double> ParseReal(std::string_view text) {
  const Number number = ReadDecimal(text);
  if (number.length == 0 || number.length != text.size() || !number.in_range) {
    return std::nullopt;
  }
  return number.value;
}

}  // namespace orvane
