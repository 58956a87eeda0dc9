// SPDX-License-Identifier: GPL-3.0-or-later
// Stack result files (*.trs); docs/formats/stack-results.md describes the format.
#ifndef ORVANE_TIMESERIES_STACK_RESULT_H_
#define ORVANE_TIMESERIES_STACK_RESULT_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "base/wire.h"
#include "files/file_io.h"
#include "table/param_entry.h"

namespace orvane {

/// The head of a record. After it come `extension_size` bytes, then `item_count` items of
/// `item_size` bytes each. What `first` to `value` mean is not known; they are passed on.
///
/// | offset | size | content |
/// |---|---|---|
/// | 0 | 8 | time of the record |
/// | 8 | 4 | not interpreted |
/// | 12 | 2 | first number, signed |
/// | 14 | 1 | second number |
/// | 15 | 1 | flag byte |
/// | 16 | 2 | not interpreted |
/// | 18 | 1 | size of the extension |
/// | 19 | 1 | size of an item |
/// | 20 | 1 | number of items |
/// | 21 | 5 | not interpreted |
/// | 26 | 8 | value, 64-bit float |
/// | 34 | 36 | label, text up to a NUL |
struct StackHeader {
  ParamTime time;
  std::array<std::uint8_t, 4> unknown8{};
  Le<std::int16_t> first;
  std::uint8_t second = 0;
  std::uint8_t flags = 0;
  std::array<std::uint8_t, 2> unknown16{};
  std::uint8_t extension_size = 0;
  std::uint8_t item_size = 0;
  std::uint8_t item_count = 0;
  std::array<std::uint8_t, 5> unknown21{};
  Le<double> value;
  std::array<char, 36> label{};

  std::size_t ItemBytes() const { return std::size_t{item_size} * item_count; }
  std::size_t RecordBytes() const { return sizeof *this + extension_size + ItemBytes(); }
  /// Up to its NUL; all 36 characters where there is none.
  std::string_view Label() const;
};
static_assert(sizeof(StackHeader) == 70 && alignof(StackHeader) == 1);
static_assert(offsetof(StackHeader, first) == 12 && offsetof(StackHeader, extension_size) == 18);
static_assert(offsetof(StackHeader, value) == 26 && offsetof(StackHeader, label) == 34);

/// A record; the bytes are valid until the next one is read.
struct StackRecord {
  StackHeader header;
  std::span<const std::byte> extension;
  std::span<const std::byte> items;

  /// The 32-bit float at offset 16 of the extension; 0 where that is too short.
  float ExtensionValue() const;
};

/// Reads records one by one, in pieces of 128 KiB whatever the size of the file.
class StackReader {
 public:
  Result<> Open(const std::filesystem::path& path) { return file_.Open(path); }

  /// The next whole record; false at the end, at a record that is cut, and after a read error.
  bool Next(StackRecord* record);

  const Result<>& Outcome() const { return file_.Outcome(); }
  /// Where the next record begins. After the last: the size of the file, unless a record is cut.
  std::uint64_t Offset() const { return offset_; }
  /// After `Next()` answered false: the file goes on after the last whole record.
  bool IsCut() const { return !unread_.empty(); }

 private:
  bool Have(std::size_t size);

  InFile file_;
  std::unique_ptr<std::byte[]> buffer_;  // NOLINT(modernize-avoid-c-arrays): not to be zeroed
  std::span<const std::byte> unread_;
  std::uint64_t offset_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_STACK_RESULT_H_
