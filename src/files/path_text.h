// SPDX-License-Identifier: GPL-3.0-or-later
// The standard's conversions between paths and texts differ from system to system, take other
// encodings in one direction than in the other, and throw.
#ifndef ORVANE_FILES_PATH_TEXT_H_
#define ORVANE_FILES_PATH_TEXT_H_

#include <filesystem>
#include <string>
#include <string_view>

namespace orvane {

/// A path as texts hold it: its bytes; on Windows UTF-8, in which half of a pair of UTF-16, which
/// names there may have, takes three bytes of its own. Nothing is lost either way, nothing throws.
std::string PathText(const std::filesystem::path& path);

/// The path of such a text. Bytes that no path gives become replacement characters on Windows.
std::filesystem::path PathOf(std::string_view text);

}  // namespace orvane

#endif  // ORVANE_FILES_PATH_TEXT_H_
