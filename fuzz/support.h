// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FUZZ_SUPPORT_H_
#define ORVANE_FUZZ_SUPPORT_H_

#include <filesystem>
#include <string>
#include <string_view>

#include "files/batch.h"
#include "targets.h"

namespace orvane::fuzz {

/// Ends the program, so that the fuzzer keeps the input, unless what a reader promises holds.
void Require(bool holds, std::string_view promise);

/// A file of the fuzzer's own for readers that take a path, in memory where the system has such a
/// place. Its folder goes with the program.
std::filesystem::path PathOf(std::string_view name);
std::filesystem::path PutFile(std::string_view name, Bytes bytes);
std::string FileText(const std::filesystem::path& path);

/// Converts a file in this thread.
BatchResult Convert(const Conversion& conversion, const std::filesystem::path& input,
                    const std::filesystem::path& output);

inline std::string_view TextOf(Bytes bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}
/// Takes the first byte off, 0 where there is none.
std::size_t TakeByte(Bytes* bytes);

}  // namespace orvane::fuzz

#endif  // ORVANE_FUZZ_SUPPORT_H_
