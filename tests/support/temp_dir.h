// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_TEMP_DIR_H_
#define ORVANE_TESTS_SUPPORT_TEMP_DIR_H_

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace orvane::testing {

/// A folder of a test's own, removed with it.
class TempDir {
 public:
  TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;
  ~TempDir();

  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }
  const std::filesystem::path& Path() const { return path_; }
  /// Number of entries in it, so that left-over files are noticed.
  std::size_t Count() const;

 private:
  std::filesystem::path path_;
};

/// Whole files, by the standard library alone, apart from the code under test.
std::string ReadAll(const std::filesystem::path& path);
void WriteAll(const std::filesystem::path& path, std::string_view bytes);

/// Makes `link` lead to `target`; false where the system lets ordinary users make none.
bool MakeLink(const std::filesystem::path& target, const std::filesystem::path& link);

/// What the C library of a system says of a number that is none with the sign bit: Windows leaves
/// the sign out.
#ifdef _WIN32
inline constexpr bool kPrintsSignOfNan = false;
#else
inline constexpr bool kPrintsSignOfNan = true;
#endif

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_TEMP_DIR_H_
