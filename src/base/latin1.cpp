// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/latin1.h"

#include <cstdint>

#include "base/ascii.h"
#include "base/number_text.h"

namespace orvane {
namespace {

constexpr std::uint32_t kNone = 0xFFFFFFFF;

// Code point and length of the character that the text begins with; kNone where it is not UTF-8:
// cut, overlong, half of a pair or beyond the last one.
struct Character {
  std::uint32_t code = kNone;
  std::size_t length = 1;
};

Character FirstOf(std::string_view text) {
  const auto byte = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned first = byte(0);
  if (first < 0x80U) {
    return {first, 1};
  }
  const std::size_t length = first >= 0xF0U ? 4 : first >= 0xE0U ? 3 : 2;
  if (first < 0xC2U || first > 0xF4U || text.size() < length) {
    return {};
  }
  std::uint32_t code = first & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0U) != 0x80U) {
      return {};
    }
    code = (code << 6U) | (byte(i) & 0x3FU);
  }
  const bool is_overlong = (length == 3 && code < 0x800U) || (length == 4 && code < 0x10000U);
  const bool is_half = code >= 0xD800U && code < 0xE000U;
  return is_overlong || is_half || code > 0x10FFFFU ? Character{} : Character{code, length};
}

std::string Hex(std::uint32_t number, int digits) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (; number != 0 || digits > 0; number /= 16U, --digits) {
    text.insert(text.begin(), kDigits[number % 16U]);
  }
  return text;
}

// Ends a line, or lets text run the other way, so that what is read is not what is there.
bool ChangesLine(std::uint32_t code) {
  return code == 0x200EU || code == 0x200FU || (code >= 0x2028U && code <= 0x202EU) ||
         (code >= 0x2066U && code <= 0x2069U) || code == 0xFEFFU;
}

}  // namespace

Result<std::string> Latin1FromUtf8(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const Character character = FirstOf(text.substr(at));
    if (character.code == kNone) {
      return Failure("is not UTF-8 at byte " + FormatInt(at + 1));
    }
    if (character.code > 0xFFU) {
      return Failure("has the character \"" + std::string(text.substr(at, character.length)) +
                     "\" (U+" + Hex(character.code, 4) +
                     "), which a table cannot hold: its texts are Latin-1");
    }
    result += static_cast<char>(static_cast<unsigned char>(character.code));
    at += character.length;
  }
  return result;
}

std::string PrintableUtf8(std::string_view text) {
  std::string printable;
  while (!text.empty()) {
    const auto [code, length] = FirstOf(text);
    const bool is_control = code < 0x20U || (code >= 0x7FU && code < 0xA0U) || ChangesLine(code);
    for (const char c : text.substr(0, length)) {
      if (code == kNone || is_control) {
        printable += "\\x" + Hex(static_cast<unsigned char>(c), 2);
      } else {
        printable += c;
      }
    }
    text.remove_prefix(length);
  }
  return printable;
}

std::string PrintableLatin1(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (IsControl(c) || (byte >= 0x80U && byte < 0xA0U)) {
      text += "\\x" + Hex(byte, 2);
    } else if (byte < 0x80U) {
      text += c;
    } else {
      text += static_cast<char>(0xC0U | (byte >> 6U));
      text += static_cast<char>(0x80U | (byte & 0x3FU));
    }
  }
  return text;
}

}  // namespace orvane
