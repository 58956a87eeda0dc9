// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/unsaved_table.h"

#include <algorithm>

#include "table/tbl_record.h"

namespace orvane {
namespace {

std::uint64_t SumOf(std::span<const std::byte> header, std::span<const std::byte> rest) {
  return Checksum(rest, Checksum(header.first(offsetof(UnsavedHeader, checksum))));
}

// A whole file of whole records, as the program writes it.
bool IsWholeTable(std::span<const std::byte> table) {
  return table.size() >= sizeof(TblHeader) && table.size() % sizeof(ParamEntry) == 0 &&
         RecogniseTblVersion(table.first<sizeof(TblHeader)>()) == 2;
}

UnsavedFileMark MarkOf(const RememberedFile& file) {
  UnsavedFileMark mark;
  if (file.HasBytes()) {
    mark.size = file.Size();
    mark.sum = file.Sum();
    mark.written = file.Written();
  }
  return mark;
}

RememberedFile FileOf(const UnsavedFileMark& mark) {
  FileInfo info;
  info.kind = FileKind::kRegular;
  info.written = mark.written;
  return mark.size == 0 ? RememberedFile() : RememberedFile(info, mark.size, mark.sum);
}

}  // namespace

std::vector<std::byte> UnsavedImage(const UnsavedTable& unsaved) {
  const UnsavedFileMark mark = MarkOf(unsaved.file);
  const auto marked = BytesOf(mark);
  std::vector<std::byte> rest(marked.begin(), marked.end());
  const auto path = std::as_bytes(std::span(unsaved.path));
  rest.insert(rest.end(), path.begin(), path.end());
  rest.insert(rest.end(), unsaved.table.begin(), unsaved.table.end());
  UnsavedHeader header;
  header.path_size = static_cast<std::uint32_t>(path.size());
  header.table_size = unsaved.table.size();
  header.checksum = SumOf(BytesOf(header), rest);
  const auto start = BytesOf(header);
  std::vector<std::byte> image(start.size() + rest.size());
  std::copy(rest.begin(), rest.end(), std::copy(start.begin(), start.end(), image.begin()));
  return image;
}

Result<UnsavedTable> ReadUnsavedImage(std::span<const std::byte> bytes) {
  if (bytes.size() < sizeof(UnsavedHeader)) {
    return Failure("it is cut short");
  }
  const auto header = RecordFrom<UnsavedHeader>(bytes);
  if (header.magic != UnsavedHeader().magic) {
    return Failure("it is not an emergency copy");
  }
  if (header.version == 0 || header.version > UnsavedHeader::kVersion) {
    return Failure("it is from another version of Orvane");
  }
  auto rest = bytes.subspan(sizeof header);
  const bool is_right = header.checksum == SumOf(bytes, rest);
  UnsavedFileMark mark;
  if (header.version > 1) {
    if (rest.size() < sizeof mark) {
      return Failure("it is cut short");
    }
    mark = RecordFrom<UnsavedFileMark>(rest);
    rest = rest.subspan(sizeof mark);
  }
  const std::uint64_t path_size = header.path_size;
  if (path_size > rest.size() || header.table_size > rest.size() - path_size) {
    return Failure("it is cut short");
  }
  const auto table = rest.subspan(path_size);
  if (header.table_size != table.size() || !is_right || !IsWholeTable(table)) {
    return Failure("it is damaged");
  }
  const auto path = rest.first(path_size);
  UnsavedTable unsaved;
  unsaved.path.resize(path.size());
  std::transform(path.begin(), path.end(), unsaved.path.begin(),
                 [](std::byte byte) { return static_cast<char>(byte); });
  unsaved.table.assign(table.begin(), table.end());
  unsaved.file = FileOf(mark);
  return unsaved;
}

}  // namespace orvane
