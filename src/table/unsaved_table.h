// SPDX-License-Identifier: GPL-3.0-or-later
// The file that keeps edits which are not saved yet; docs/formats/emergency-copy.md describes it.
#ifndef ORVANE_TABLE_UNSAVED_TABLE_H_
#define ORVANE_TABLE_UNSAVED_TABLE_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/checksum.h"
#include "base/result.h"
#include "base/wire.h"
#include "files/file_memory.h"

namespace orvane {

/// First bytes of an emergency copy; from version 2 on an `UnsavedFileMark` follows, then the path
/// and the table.
///
/// | offset | size | content |
/// |---|---|---|
/// | 0 | 8 | "ORVUNSAV" |
/// | 8 | 4 | version of the format |
/// | 12 | 4 | bytes of the path |
/// | 16 | 8 | bytes of the table |
/// | 24 | 8 | checksum of the 24 bytes before and all from 32 on |
struct UnsavedHeader {
  static constexpr std::uint32_t kVersion = 2;

  std::array<char, 8> magic = {'O', 'R', 'V', 'U', 'N', 'S', 'A', 'V'};
  Le<std::uint32_t> version = kVersion;
  Le<std::uint32_t> path_size;
  Le<std::uint64_t> table_size;
  Le<std::uint64_t> checksum;
};
static_assert(sizeof(UnsavedHeader) == 32 && alignof(UnsavedHeader) == 1);
static_assert(offsetof(UnsavedHeader, path_size) == 12 && offsetof(UnsavedHeader, checksum) == 24);

/// The file that the document was read from or last written to.
///
/// | offset | size | content |
/// |---|---|---|
/// | 32 | 8 | its bytes; 0: nothing is known of it |
/// | 40 | 8 | checksum of them |
/// | 48 | 8 | when it was last changed, ns since 1970-01-01 UTC |
struct UnsavedFileMark {
  Le<std::uint64_t> size;
  Le<std::uint64_t> sum;
  Le<std::int64_t> written;
};
static_assert(sizeof(UnsavedFileMark) == 24 && alignof(UnsavedFileMark) == 1);

struct UnsavedTable {
  std::string path;              ///< of the document, in UTF-8; empty for one without a file
  std::vector<std::byte> table;  ///< a whole version-2 parameter table file
  RememberedFile file = {};      ///< the file that the table was read from; of version 1 nothing
};

/// Of the newest version.
std::vector<std::byte> UnsavedImage(const UnsavedTable& unsaved);

/// Fails where the bytes are of no use.
Result<UnsavedTable> ReadUnsavedImage(std::span<const std::byte> bytes);

}  // namespace orvane

#endif  // ORVANE_TABLE_UNSAVED_TABLE_H_
