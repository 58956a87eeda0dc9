// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstdint>

#include "files/path_text.h"

namespace orvane {
namespace {

constexpr std::uint32_t kReplacement = 0xFFFD;

bool IsHigh(std::uint32_t unit) { return unit >= 0xD800 && unit < 0xDC00; }
bool IsLow(std::uint32_t unit) { return unit >= 0xDC00 && unit < 0xE000; }

void AppendCharacter(std::uint32_t character, std::string* text) {
  const auto put = [text](std::uint32_t byte) { text->push_back(static_cast<char>(byte)); };
  if (character < 0x80) {
    put(character);
    return;
  }
  if (character < 0x800) {
    put(0xC0U | character >> 6U);
  } else if (character < 0x10000) {
    put(0xE0U | character >> 12U);
    put(0x80U | (character >> 6U & 0x3FU));
  } else {
    put(0xF0U | character >> 18U);
    put(0x80U | (character >> 12U & 0x3FU));
    put(0x80U | (character >> 6U & 0x3FU));
  }
  put(0x80U | (character & 0x3FU));
}

// How many bytes follow a first byte, what it adds, and the least character that needs so many.
struct Length {
  std::uint32_t mask;
  std::uint32_t first;
  std::size_t more;
  std::uint32_t least;
};
constexpr auto kLengths = std::to_array<Length>(
    {{0x80, 0x00, 0, 0}, {0xE0, 0xC0, 1, 0x80}, {0xF0, 0xE0, 2, 0x800}, {0xF8, 0xF0, 3, 0x10000}});

// Takes one character off the text; one byte where that begins none.
std::uint32_t TakeCharacter(std::string_view* text) {
  const auto byte = [text](std::size_t i) {
    return static_cast<std::uint32_t>(static_cast<unsigned char>((*text)[i]));
  };
  const std::uint32_t first = byte(0);
  const auto* length = std::find_if(kLengths.begin(), kLengths.end(), [first](const Length& l) {
    return (first & l.mask) == l.first;
  });
  std::size_t count = 0;
  std::uint32_t character = kReplacement;
  if (length != kLengths.end() && length->more < text->size()) {
    character = first & ~length->mask;
    while (count < length->more && (byte(count + 1) & 0xC0U) == 0x80) {
      ++count;
      character = character << 6U | (byte(count) & 0x3FU);
    }
    if (count < length->more || character < length->least || character > 0x10FFFF) {
      count = 0;
      character = kReplacement;
    }
  }
  text->remove_prefix(count + 1);
  return character;
}

}  // namespace

std::string PathText(const std::filesystem::path& path) {
  const std::wstring& name = path.native();
  std::string text;
  text.reserve(name.size());
  for (std::size_t i = 0; i < name.size(); ++i) {
    const std::uint32_t unit = name[i];
    if (IsHigh(unit) && i + 1 < name.size() && IsLow(name[i + 1])) {
      ++i;
      AppendCharacter(0x10000 + ((unit - 0xD800) << 10U) + (name[i] - 0xDC00U), &text);
    } else {
      AppendCharacter(unit, &text);
    }
  }
  return text;
}

std::filesystem::path PathOf(std::string_view text) {
  std::wstring name;
  name.reserve(text.size());
  while (!text.empty()) {
    const std::uint32_t character = TakeCharacter(&text);
    if (character < 0x10000) {
      name.push_back(static_cast<wchar_t>(character));
    } else {
      name.push_back(static_cast<wchar_t>(0xD800 + ((character - 0x10000) >> 10U)));
      name.push_back(static_cast<wchar_t>(0xDC00 + (character & 0x3FFU)));
    }
  }
  return name;
}

}  // namespace orvane
