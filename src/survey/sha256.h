// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_SHA256_H_
#define ORVANE_SURVEY_SHA256_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>

#include "base/result.h"

namespace orvane {

/// SHA-256 as FIPS 180-4 has it, in pieces.
class Sha256 {
 public:
  void Add(std::span<const std::byte> bytes);
  /// In hexadecimal, of all that was added. Nothing may be added after it.
  std::string Finish();

 private:
  void Block(const std::byte* block);

  std::array<std::uint32_t, 8> state_ = {0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A,
                                         0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};
  std::array<std::byte, 64> rest_{};
  std::uint64_t size_ = 0;
};

/// Of a file's bytes; fails where it cannot be read to its end, or is stopped.
Result<std::string> Sha256OfFile(const std::filesystem::path& path,
                                 const std::function<bool()>& stopped);

}  // namespace orvane

#endif  // ORVANE_SURVEY_SHA256_H_
