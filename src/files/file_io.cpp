// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/file_io.h"

#include <algorithm>
#include <cerrno>
#include <system_error>

#include "base/number_text.h"
#include "files/follow_links.h"
#include "files/path_names.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr std::size_t kPiece = std::size_t{128} * 1024;

std::string Numbers(const FileInfo& info) {
  return FormatInt(info.device) + ":" + FormatInt(info.number);
}

// Folder and name, links followed: what stays when another file takes the name. Empty, with errno
// set, where it cannot be told.
std::string PlaceText(std::filesystem::path path) {
  if (!FollowLinks(&path)) {
    return {};
  }
  const auto folder = path.parent_path();
  FileInfo info;
  switch (ExistenceFrom(ReadInfo(folder.empty() ? "." : folder, &info))) {
    case Existence::kThere:
      return Numbers(info) + "/" + NameIdentity(path.filename());
    case Existence::kCannotTell:
      return {};
    case Existence::kNotThere:
      break;
  }
  std::error_code error;
  return NameIdentity(std::filesystem::absolute(path, error).lexically_normal());
}

}  // namespace

std::string FileMessage(const std::filesystem::path& path, std::string_view reason) {
  return PathText(path) + ": " + std::string(reason);
}

std::string FileIdentities::Of(const std::filesystem::path& path) {
  const std::string place = PlaceText(path);
  if (place.empty()) {
    return {};
  }
  const auto [entry, is_new] = known_.try_emplace(place);
  FileInfo info;
  if (is_new) {
    switch (ExistenceFrom(ReadInfo(path, &info))) {
      case Existence::kThere:
        entry->second = Numbers(info);
        break;
      case Existence::kNotThere:
        entry->second = place;
        break;
      case Existence::kCannotTell:
        known_.erase(entry);
        return {};
    }
  }
  return entry->second;
}

Sameness CompareFiles(const std::filesystem::path& a, const std::filesystem::path& b) {
  FileIdentities identities;
  const std::string one = identities.Of(a);
  const std::string other = one.empty() ? one : identities.Of(b);
  if (other.empty()) {
    return Sameness::kCannotTell;
  }
  return one == other ? Sameness::kSame : Sameness::kDifferent;
}

std::string MakeFolders(const std::filesystem::path& folder) {
  switch (folder.empty() ? Existence::kThere : Exists(folder)) {
    case Existence::kThere:
      return {};  // what is no folder is told by whoever makes a file in it
    case Existence::kCannotTell:
      return FileMessage(folder, SystemReason(errno));
    case Existence::kNotThere:
      break;
  }
  const auto parent =
      folder.has_filename() ? folder.parent_path() : folder.parent_path().parent_path();
  if (std::string reason = parent == folder ? std::string() : MakeFolders(parent);
      !reason.empty()) {
    return reason;
  }
  // Another program may make the same one.
  const bool is_made = WriterCalls().make_folder(folder) == 0 || errno == EEXIST;
  if (!is_made || WriterCalls().sync_folder(parent) != 0) {
    return FileMessage(folder, SystemReason(errno));
  }
  return {};
}

InFile::~InFile() {
  if (handle_ >= 0) {
    CloseRead(handle_);
  }
}

std::string InFile::Open(const std::filesystem::path& path) {
  handle_ = OpenToRead(path);
  FileInfo info;
  if (handle_ < 0 || !ReadInfo(handle_, &info)) {
    return SystemReason(errno);
  }
  if (info.kind == FileKind::kFolder) {
    return SystemReason(EISDIR);
  }
  if (info.kind != FileKind::kRegular && info.kind != FileKind::kPipe) {
    return "not a file but a device";
  }
  // A byte more than a small file has, so that its end is seen at once.
  const auto size = static_cast<std::size_t>(info.size);
  piece_ = info.kind == FileKind::kRegular ? std::clamp(size + 1, kMostPeeked, kPiece) : kPiece;
  buffer_ = std::make_unique_for_overwrite<std::byte[]>(piece_);  // NOLINT: as declared
  info_ = info;
  return {};
}

// Once it has come to its end nothing more is asked for: what a disk gives after a read that failed
// belongs elsewhere.
std::size_t InFile::ReadPiece(std::span<std::byte> bytes) {
  if (is_at_end_) {
    return 0;
  }
  auto count = ReaderCalls().some(handle_, bytes);
  while (count < 0 && errno == EAGAIN && WaitToRead(handle_)) {  // a writer may take its time
    count = ReaderCalls().some(handle_, bytes);
  }
  if (count < 0) {
    error_ = SystemReason(errno);
  }
  is_at_end_ = count <= 0;
  return count < 0 ? 0 : static_cast<std::size_t>(count);
}

// Moves what is unread to the front and reads on behind it; false at the end.
bool InFile::Refill() {
  std::copy(unread_.begin(), unread_.end(), buffer_.get());
  const std::span buffer(buffer_.get(), piece_);
  const std::size_t count = ReadPiece(buffer.subspan(unread_.size()));
  unread_ = buffer.first(unread_.size() + count);
  return count > 0;
}

std::span<const std::byte> InFile::Peek(std::size_t count) {
  while (unread_.size() < count && Refill()) {
  }
  return unread_.first(std::min(count, unread_.size()));
}

std::size_t InFile::Read(std::span<std::byte> bytes) {
  std::size_t done = 0;
  while (done < bytes.size() && (!unread_.empty() || Refill())) {
    const std::size_t count = std::min(unread_.size(), bytes.size() - done);
    std::copy_n(unread_.begin(), count, bytes.begin() + static_cast<std::ptrdiff_t>(done));
    unread_ = unread_.subspan(count);
    done += count;
  }
  return done;
}

std::string WriteFile(const std::filesystem::path& path, std::span<const std::byte> bytes,
                      bool* has_touched) {
  OutFile file;
  std::string error = file.Open(path);
  if (error.empty()) {
    error = file.Write(bytes);
  }
  if (error.empty()) {
    error = file.Commit();
  }
  if (has_touched != nullptr) {
    *has_touched = file.HasTouchedTarget();
  }
  return error;
}

std::string CopyBytes(const std::filesystem::path& from, const std::filesystem::path& to) {
  InFile in;
  OutFile out;
  std::string reason = in.Open(from);
  reason = reason.empty() ? out.Open(to) : reason;
  std::vector<std::byte> piece(kPiece);
  for (std::size_t size = 1; reason.empty() && size > 0;) {
    size = in.Read(piece);
    reason = in.Error().empty() ? out.Write(std::span(piece).first(size)) : in.Error();
  }
  return reason.empty() ? out.Commit() : reason;
}

bool HaveSameBytes(const std::filesystem::path& a, const std::filesystem::path& b) {
  InFile one;
  InFile other;
  if (!one.Open(a).empty() || !other.Open(b).empty()) {
    return false;
  }
  std::vector<std::byte> piece(kPiece);
  std::vector<std::byte> second(kPiece);
  for (std::size_t size = kPiece; size == kPiece;) {
    size = one.Read(piece);
    const auto read = std::span(piece).first(size);
    if (other.Read(second) != size || !std::equal(read.begin(), read.end(), second.begin())) {
      return false;
    }
  }
  return one.Error().empty() && other.Error().empty();
}

std::string KeepBackup(const std::filesystem::path& path, std::filesystem::path* kept) {
  int error = 0;
  const auto exists = [&error](const std::string& name) {
    const Existence found = IsTaken(PathOf(name));
    error = found == Existence::kCannotTell ? errno : 0;
    return found == Existence::kThere;
  };
  *kept = PathOf(FirstFreeName(PathText(path), BackupName, exists));
  std::string reason = error != 0 ? SystemReason(error) : CopyBytes(path, *kept);
  std::error_code ignored;  // the bytes count
  if (const auto status = std::filesystem::status(path, ignored); reason.empty() && !ignored) {
    std::filesystem::permissions(*kept, status.permissions(), ignored);
  }
  return reason;
}

}  // namespace orvane
