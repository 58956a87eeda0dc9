// SPDX-License-Identifier: GPL-3.0-or-later
// Characters as the boxes know them: ASCII, never the user's locale.
#ifndef ORVANE_BASE_ASCII_H_
#define ORVANE_BASE_ASCII_H_

#include <algorithm>
#include <string_view>

namespace orvane {

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsUpper(char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool IsLower(char c) { return c >= 'a' && c <= 'z'; }
constexpr bool IsAlphanumeric(char c) { return IsDigit(c) || IsUpper(c) || IsLower(c); }
/// The blanks that the C library skips before a number.
constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
constexpr bool IsControl(char c) { return (c >= 0 && c < ' ') || c == 0x7F; }

/// Without the blanks around it.
constexpr std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsBlank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

constexpr char UpperCased(char c) { return IsLower(c) ? static_cast<char>(c - 'a' + 'A') : c; }

constexpr char LowerCased(char c) { return IsUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }

constexpr bool EqualCharsWithoutCase(char a, char b) { return UpperCased(a) == UpperCased(b); }

constexpr bool EqualsWithoutCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), EqualCharsWithoutCase);
}

constexpr bool ContainsWithoutCase(std::string_view text, std::string_view part) {
  return std::search(text.begin(), text.end(), part.begin(), part.end(), EqualCharsWithoutCase) !=
             text.end() ||
         part.empty();
}

constexpr bool EndsWithoutCase(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && EqualsWithoutCase(text.substr(text.size() - end.size()), end);
}

}  // namespace orvane

#endif  // ORVANE_BASE_ASCII_H_
