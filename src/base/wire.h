// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_BASE_WIRE_H_
#define ORVANE_BASE_WIRE_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>

namespace orvane {

/// A number as it is in a file: little-endian, of alignment 1, so that a struct of such
/// members has the same bytes in memory and on disk and no padding.
template <typename T>
class Le {
  static_assert(std::is_arithmetic_v<T>);

 public:
  constexpr Le() = default;
  constexpr Le(T value) : bytes_(Swapped(std::bit_cast<Bytes>(value))) {}     // NOLINT: a number
  constexpr operator T() const { return std::bit_cast<T>(Swapped(bytes_)); }  // NOLINT: a number

 private:
  using Bytes = std::array<std::uint8_t, sizeof(T)>;

  static constexpr Bytes Swapped(Bytes bytes) {
    if constexpr (std::endian::native == std::endian::big) {
      for (std::size_t i = 0; i < bytes.size() / 2; ++i) {
        std::swap(bytes[i], bytes[bytes.size() - 1 - i]);
      }
    }
    return bytes;
  }

  Bytes bytes_{};
};

/// The bytes of a record, to be written.
template <typename Record>
requires(alignof(Record) == 1 && std::is_trivially_copyable_v<Record>)
    std::span<const std::byte> BytesOf(const Record& record) {
  return std::as_bytes(std::span<const Record, 1>(&record, 1));
}

/// A record out of the first bytes of `bytes`, which must hold at least that many.
template <typename Record>
requires(alignof(Record) == 1 && std::is_trivially_copyable_v<Record>) Record
    RecordFrom(std::span<const std::byte> bytes) {
  Record record;
  std::memcpy(&record, bytes.data(), sizeof record);
  return record;
}

}  // namespace orvane

#endif  // ORVANE_BASE_WIRE_H_
