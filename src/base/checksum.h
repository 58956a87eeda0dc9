// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_BASE_CHECKSUM_H_
#define ORVANE_BASE_CHECKSUM_H_

#include <cstddef>
#include <cstdint>
#include <span>

namespace orvane {

/// FNV-1a with 64 bits: against accidents, not against people. Each step maps one state to one
/// state, so texts that differ in a single byte never have one sum. `sum` is that of what comes
/// before.
constexpr std::uint64_t kEmptyChecksum = 0xCBF29CE484222325U;
constexpr std::uint64_t Checksum(std::span<const std::byte> bytes,
                                 std::uint64_t sum = kEmptyChecksum) {
  for (const std::byte byte : bytes) {
    sum = (sum ^ static_cast<std::uint64_t>(byte)) * 0x100000001B3U;
  }
  return sum;
}

}  // namespace orvane

#endif  // ORVANE_BASE_CHECKSUM_H_
