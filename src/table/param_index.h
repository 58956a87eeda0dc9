// SPDX-License-Identifier: GPL-3.0-or-later
// The hash index of a parameter table: open addressing with linear probing over 16-bit positions,
// about four slots a key. The multiplier is the prime, of 54 tried, that keeps the longest run of
// occupied slots short. Everything here also runs while compiling.
#ifndef ORVANE_TABLE_PARAM_INDEX_H_
#define ORVANE_TABLE_PARAM_INDEX_H_

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace orvane {

inline constexpr std::uint16_t kEmptySlot = 0xFFFF;

struct IndexShape {
  std::uint32_t count = 0;        ///< keys in the index
  std::uint32_t size = 0;         ///< slots; 0 while there is no index
  std::uint32_t multiplier = 0;   ///< the prime chosen
  std::uint32_t longest_run = 0;  ///< longest run of occupied slots

  friend bool operator==(const IndexShape&, const IndexShape&) = default;
};

/// An index of a known number of slots, as the built-in dictionary's.
template <std::size_t kSlots>
struct StoredIndex {
  IndexShape shape;
  std::array<std::uint16_t, kSlots> positions{};  ///< of the entries, or kEmptySlot
};

inline constexpr std::array<std::uint32_t, 55> kIndexPrimes = {
    2,   3,   5,   7,   11,  13,  17,  19,  23,  29,  31,  37,  41,  43,  47,  53,  59,  61,  67,
    71,  73,  79,  83,  89,  97,  101, 103, 107, 109, 113, 127, 131, 137, 139, 149, 151, 157, 163,
    167, 173, 179, 181, 191, 193, 197, 199, 211, 223, 227, 229, 233, 239, 241, 251, 257};

/// Number of slots for `count` keys: the first number from 4 x count that no prime above divides.
constexpr std::uint32_t IndexSize(std::size_t count) {
  auto size = static_cast<std::uint32_t>(4 * count);
  while (std::any_of(kIndexPrimes.begin(), kIndexPrimes.end(),
                     [size](std::uint32_t prime) { return size % prime == 0; })) {
    ++size;
  }
  return size;
}

/// Hash of a key of two 32-bit words under one multiplier: (w0 A + w1 2^32 A) mod size, all in
/// 32-bit arithmetic that wraps.
class IndexHash {
 public:
  constexpr IndexHash() = default;
  constexpr IndexHash(std::uint32_t multiplier, std::uint32_t size)
      : a_(multiplier),
        c_((((multiplier << 16U) % size) << 16U) % size),
        size_(size),
        reciprocal_(~std::uint64_t{0} / size + 1) {}

  constexpr std::uint32_t Slot(std::uint64_t word) const {
    const auto w0 = static_cast<std::uint32_t>(word);
    const auto w1 = static_cast<std::uint32_t>(word >> 32U);
    return Mod(w0 * a_ + w1 * c_);
  }
  constexpr std::uint32_t Next(std::uint32_t slot) const {
    return slot + 1 == size_ ? 0 : slot + 1;
  }

 private:
  __extension__ using Wide = unsigned __int128;

  // Remainder by multiplication (Lemire, Kaser, Kurz, "Faster remainder by direct computation",
  // 2019): exact for 32-bit numbers, a third of the time of a division.
  constexpr std::uint32_t Mod(std::uint32_t number) const {
    const std::uint64_t fraction = reciprocal_ * number;
    return static_cast<std::uint32_t>((static_cast<Wide>(fraction) * size_) >> 64U);
  }

  std::uint32_t a_ = 0;
  std::uint32_t c_ = 0;
  std::uint32_t size_ = 1;
  std::uint64_t reciprocal_ = 0;
};

/// Puts every key, in order, at the first empty slot from its home slot on: a duplicate key is
/// after its first occurrence.
constexpr void FillSlots(std::span<const std::uint64_t> words, const IndexHash& hash,
                         std::span<std::uint16_t> positions) {
  std::fill(positions.begin(), positions.end(), kEmptySlot);
  for (std::size_t i = 0; i < words.size(); ++i) {
    std::uint32_t slot = hash.Slot(words[i]);
    while (positions[slot] != kEmptySlot) {
      slot = hash.Next(slot);
    }
    positions[slot] = static_cast<std::uint16_t>(i);
  }
}

/// Longest run of occupied slots, counted once around from after the first empty one.
constexpr std::uint32_t LongestRun(std::span<const std::uint16_t> positions) {
  const auto first_empty = std::find(positions.begin(), positions.end(), kEmptySlot);
  std::uint32_t longest = 0;
  std::uint32_t run = 0;
  const auto count = [&](std::uint16_t slot) {
    run = slot == kEmptySlot ? 0 : run + 1;
    longest = std::max(longest, run);
  };
  std::for_each(first_empty, positions.end(), count);
  std::for_each(positions.begin(), first_empty, count);
  return longest;
}

/// Searches the multiplier and leaves the index in `positions`, of `IndexSize(words.size())`
/// elements.
constexpr IndexShape SearchIndex(std::span<const std::uint64_t> words,
                                 std::span<std::uint16_t> positions) {
  IndexShape shape{static_cast<std::uint32_t>(words.size()),
                   static_cast<std::uint32_t>(positions.size()), 0, 0};
  std::uint32_t target = 0;  // integer part of log4(count) + 1
  for (std::size_t rest = words.size(); rest > 0; rest /= 4) {
    ++target;
  }
  shape.longest_run = shape.size;
  for (std::size_t i = 1; i < kIndexPrimes.size(); ++i) {
    FillSlots(words, IndexHash(kIndexPrimes[i], shape.size), positions);
    const std::uint32_t run = LongestRun(positions);
    if (run < shape.longest_run) {
      shape.longest_run = run;
      shape.multiplier = kIndexPrimes[i];
    }
    if (shape.longest_run <= target) {
      return shape;
    }
  }
  FillSlots(words, IndexHash(shape.multiplier, shape.size), positions);
  return shape;
}

}  // namespace orvane

#endif  // ORVANE_TABLE_PARAM_INDEX_H_
