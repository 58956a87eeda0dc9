// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/file_memory.h"

#include <cerrno>
#include <vector>

#include "base/checksum.h"
#include "files/file_io.h"

namespace orvane {
namespace {

constexpr std::size_t kPiece = std::size_t{64} * 1024;
// Tables have 23 KB. What is far larger is not read at every look where its time is the same.
constexpr std::uint64_t kMostRead = std::uint64_t{1} << 20U;

}  // namespace

RememberedFile::RememberedFile(const FileInfo& info, std::uint64_t size, std::uint64_t sum)
    : state_(info.kind == FileKind::kRegular ? State::kBytes : State::kNothing),
      info_(info),
      size_(size),
      sum_(sum) {}

RememberedFile RememberedFile::Absent() {
  RememberedFile none;
  none.state_ = State::kAbsent;
  return none;
}

Result<> RememberedFile::Read(const std::filesystem::path& path) {
  FileInfo info;
  const auto found = ExistenceFrom(ReadInfo(path, &info));
  if (!found) {
    return Failure(found.Message());
  }
  if (found == Existence::kNotThere) {
    *this = Absent();
    return {};
  }
  if (info.kind != FileKind::kRegular) {
    return Failure(info.kind == FileKind::kFolder ? SystemReason(EISDIR)
                                                  : "not a file but a device or pipe");
  }
  InFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    return opened;
  }
  std::vector<std::byte> piece(kPiece);
  std::uint64_t total = 0;
  std::uint64_t sum = kEmptyChecksum;
  for (std::size_t size = kPiece; size == kPiece; total += size) {
    size = file.Read(piece);
    sum = Checksum(std::span(piece).first(size), sum);
  }
  if (file.Outcome()) {
    *this = RememberedFile(info, total, sum);
  }
  return file.Outcome();
}

Result<FileChange> RememberedFile::Look(const std::filesystem::path& path) {
  if (!IsKnown()) {
    return Failure("nothing is remembered of it");
  }
  FileInfo info;
  const bool is_there = ReadInfo(path, &info);
  if (is_there && HasBytes() && info.kind == FileKind::kRegular) {
    if (info.size != size_) {
      return FileChange::kChanged;
    }
    if (size_ > kMostRead && info.IsSameFileAs(info_) && info.written == info_.written) {
      return FileChange::kUnchanged;
    }
  }
  RememberedFile now;
  if (const Result<> read = now.Read(path); !read) {
    return Failure(read.Message());
  }
  if (!now.HasBytes()) {
    return HasBytes() ? FileChange::kGone : FileChange::kUnchanged;
  }
  if (!HasBytes() || now.size_ != size_ || now.sum_ != sum_) {
    return FileChange::kChanged;
  }
  info_ = now.info_;
  return FileChange::kUnchanged;
}

}  // namespace orvane
