// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_TEXT_FILE_H_
#define ORVANE_FILES_TEXT_FILE_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "base/number_format.h"
#include "files/file_io.h"

namespace orvane {

/// A text file being written in pieces: texts and numbers in printf's formats. The first failure is
/// kept; after it nothing more is written and `Commit()` reports it.
class TextFile {
 public:
  TextFile()
      : buffer_(std::make_unique_for_overwrite<char[]>(kPiece + kRoom)),  // NOLINT: as declared
        at_(buffer_.get()) {}

  Result<> Open(const std::filesystem::path& path);
  /// Writes what is left and lets the file take its place. Fails with what failed first.
  Result<> Commit();
  bool HasFailed() const { return !outcome_; }

  /// For loops over many numbers: where the next characters go, with room for `kRoom` of them.
  /// `Took()` gets the end of those that were written there.
  static constexpr std::size_t kRoom = 4 * kMaxNumberText;
  char* Room() { return at_; }
  TextFile& Took(char* end) {
    at_ = end;
    if (at_ >= buffer_.get() + kPiece) {
      Flush();
    }
    return *this;
  }

  TextFile& Text(std::string_view text);
  TextFile& TextRight(std::string_view text, std::size_t width);  ///< "%{width}s"
  TextFile& TextLeft(std::string_view text, std::size_t width);   ///< "%-{width}s"
  TextFile& Fixed(double value, int precision, int width) {
    return Took(WriteFixed(at_, value, precision, width));
  }
  TextFile& Exponent(double value, int precision, int width) {
    return Took(WriteExponent(at_, value, precision, width));
  }
  TextFile& General(double value, int precision, int width) {
    return Took(WriteGeneral(at_, value, precision, width));
  }
  TextFile& Int(std::int64_t value, int width = 0, char fill = ' ') {
    return Took(WriteInt(at_, value, width, fill));
  }
  TextFile& Hex(std::uint64_t value, int digits) { return Took(WriteHex(at_, value, digits)); }

 private:
  static constexpr std::size_t kPiece = std::size_t{128} * 1024;
  void Fill(std::size_t count);
  void Flush();

  OutFile file_;
  std::unique_ptr<char[]> buffer_;  // NOLINT(modernize-avoid-c-arrays): not to be zeroed
  char* at_;
  Result<> outcome_;
};

}  // namespace orvane

#endif  // ORVANE_FILES_TEXT_FILE_H_
