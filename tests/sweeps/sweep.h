// SPDX-License-Identifier: GPL-3.0-or-later
// Every cut of a small file and every byte of its header set to values that counts and signs trip
// over. Sanitizers watch for harm; here status and memory are checked.
#ifndef ORVANE_TESTS_SWEEPS_SWEEP_H_
#define ORVANE_TESTS_SWEEPS_SWEEP_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

#include "support/peak_memory.h"
#include "support/temp_dir.h"

namespace orvane::testing {

struct Sweep {
  const char* format;
  const char* name;          ///< of the file
  std::string file;          ///< whole and right
  std::size_t header_bytes;  ///< each is set to each value
  /// Reads a file and tells the outcome as a text.
  std::function<std::string(const std::filesystem::path&)> read;
  /// The outcome that such a file must have, told by rules apart from the reader's.
  std::function<std::string(const std::string& bytes)> expected;
};

/// `dir` may hold files beside the one swept.
inline void RunSweep(const Sweep& sweep, const TempDir& dir) {
  std::size_t most = 0;
  int files = 0;
  const auto check = [&](const std::string& bytes) {
    WriteAll(dir / sweep.name, bytes);
    const std::string expected = sweep.expected(bytes);
    const PeakMemory memory;
    const std::string outcome = sweep.read(dir / sweep.name);
    most = std::max(most, memory.Bytes());
    ++files;
    EXPECT_EQ(outcome, expected);
    EXPECT_LT(memory.Bytes(), 4 * bytes.size() + (std::size_t{16} << 20U));
  };
  for (std::size_t size = 0; size <= sweep.file.size(); ++size) {
    SCOPED_TRACE(std::string(sweep.format) + " cut at " + std::to_string(size));
    check(sweep.file.substr(0, size));
  }
  for (std::size_t at = 0; at < sweep.header_bytes; ++at) {
    for (const char value : {'\0', '\1', '\x7F', '\x80', '\xFF'}) {
      SCOPED_TRACE(std::string(sweep.format) + " byte " + std::to_string(at) + " set to " +
                   std::to_string(static_cast<unsigned char>(value)));
      std::string bytes = sweep.file;
      bytes[at] = value;
      check(bytes);
    }
  }
  std::printf("%-22s %5d files of %4zu bytes: at most %4zu KiB\n", sweep.format, files,
              sweep.file.size(), (most + 1023) / 1024);
}

/// An unsigned little-endian number among bytes.
inline std::uint64_t NumberAt(const std::string& bytes, std::size_t at, std::size_t size) {
  std::uint64_t number = 0;
  for (std::size_t i = size; i > 0; --i) {
    number = number << 8U | static_cast<unsigned char>(bytes.at(at + i - 1));
  }
  return number;
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SWEEPS_SWEEP_H_
