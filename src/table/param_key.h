// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_PARAM_KEY_H_
#define ORVANE_TABLE_PARAM_KEY_H_

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>

#include "table/param_entry.h"

namespace orvane {

/// A parameter's key in normal form: at most 8 characters, upper case (ASCII), NUL-padded, held as
/// one little-endian word so that hashing and comparing take a few instructions. Made from a
/// literal it costs nothing at run time. A text must not contain a NUL; the key field of a record
/// may, and ends there.
class ParamKey {
 public:
  constexpr ParamKey() = default;
  constexpr ParamKey(std::string_view text)  // NOLINT: keys are written as texts
      : word_(UpperCased(Load(text))) {}
  constexpr ParamKey(const char* text)  // NOLINT: keys are written as literals
      : ParamKey(std::string_view(text)) {}
  ParamKey(const std::string& text)  // NOLINT: keys are written as texts
      : ParamKey(std::string_view(text)) {}
  constexpr explicit ParamKey(const std::array<char, kKeySize>& bytes)
      : word_(UpperCased(CutAtNul(Load({bytes.data(), bytes.size()})))) {}

  constexpr std::uint64_t Word() const { return word_; }
  constexpr bool IsEmpty() const { return word_ == 0; }

  constexpr std::array<char, kKeySize> Bytes() const {
    std::array<char, kKeySize> bytes{};
    for (std::size_t i = 0; i < kKeySize; ++i) {
      bytes[i] = static_cast<char>((word_ >> (8 * i)) & 0xFF);
    }
    return bytes;
  }

  std::string Text() const {
    const auto bytes = Bytes();
    return {bytes.data(), std::find(bytes.begin(), bytes.end(), '\0')};
  }

  friend constexpr bool operator==(ParamKey, ParamKey) = default;

 private:
  static constexpr std::uint64_t kOnes = 0x0101010101010101U;
  static constexpr std::uint64_t kHighs = 0x8080808080808080U;

  static constexpr std::uint64_t Load(std::string_view text) {
    const std::size_t size = std::min(text.size(), kKeySize);
    if (!std::is_constant_evaluated() && std::endian::native == std::endian::little) {
      return LoadFast(text.data(), size);
    }
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < size; ++i) {
      word |= std::uint64_t{static_cast<unsigned char>(text[i])} << (8 * i);
    }
    return word;
  }

  // Two overlapping loads for every key of four and more characters: no branch for each length.
  static std::uint64_t LoadFast(const char* text, std::size_t size) {
    if (size >= 4) {
      std::uint32_t head = 0;
      std::uint32_t tail = 0;
      std::memcpy(&head, text, sizeof head);
      std::memcpy(&tail, text + size - 4, sizeof tail);
      return head | (std::uint64_t{tail} << (8 * (size - 4)));
    }
    if (size == 0) {
      return 0;
    }
    const auto byte = [text](std::size_t i) {
      return std::uint64_t{static_cast<unsigned char>(text[i])};
    };
    return byte(0) | (byte(size / 2) << (8 * (size / 2))) | (byte(size - 1) << (8 * (size - 1)));
  }

  static constexpr std::uint64_t CutAtNul(std::uint64_t word) {
    const std::uint64_t zeros = (word - kOnes) & ~word & kHighs;  // lowest set bit: the first NUL
    return word & (((zeros & (~zeros + 1)) >> 7) - 1);            // without a NUL: all of it
  }

  // Adds, per byte below 0x80, what makes the high bit say "at least 'a'" and "above 'z'".
  static constexpr std::uint64_t UpperCased(std::uint64_t word) {
    const std::uint64_t low = word & ~kHighs;
    const std::uint64_t from_a = low + kOnes * (0x80 - 'a');
    const std::uint64_t above_z = low + kOnes * (0x80 - 'z' - 1);
    return word ^ ((from_a & ~above_z & ~word & kHighs) >> 2);
  }

  std::uint64_t word_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_TABLE_PARAM_KEY_H_
