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

// Folder and name, links followed: what stays when another file takes the name.
Result<std::string> PlaceText(const std::filesystem::path& path) {
  const auto end = FollowLinks(path);
  if (!end) {
    return Failure(end.Message());
  }
  const auto folder = end->parent_path();
  FileInfo info;
  const auto found = ExistenceFrom(ReadInfo(folder.empty() ? "." : folder, &info));
  if (!found) {
    return Failure(found.Message());
  }
  if (found == Existence::kThere) {
    return Numbers(info) + "/" + NameIdentity(end->filename());
  }
  std::error_code error;
  return NameIdentity(std::filesystem::absolute(*end, error).lexically_normal());
}

}  // namespace

std::string FileMessage(const std::filesystem::path& path, std::string_view reason) {
  return PathText(path) + ": " + std::string(reason);
}

Result<std::string> FileIdentities::Of(const std::filesystem::path& path) {
  auto place = PlaceText(path);
  if (!place) {
    return place;
  }
  if (const auto known = known_.find(*place); known != known_.end()) {
    return known->second;
  }
  FileInfo info;
  const auto found = ExistenceFrom(ReadInfo(path, &info));
  if (!found) {
    return Failure(found.Message());
  }
  return known_[*place] = found == Existence::kThere ? Numbers(info) : *place;
}

Result<Sameness> CompareFiles(const std::filesystem::path& a, const std::filesystem::path& b) {
  FileIdentities identities;
  const auto one = identities.Of(a);
  const auto other = one ? identities.Of(b) : one;
  if (!other) {
    return Failure(other.Message());
  }
  return *one == *other ? Sameness::kSame : Sameness::kDifferent;
}

Result<> MakeFolders(const std::filesystem::path& folder) {
  const auto found = folder.empty() ? Existence::kThere : Exists(folder);
  if (!found) {
    return Failure(FileMessage(folder, found.Message()));
  }
  if (found == Existence::kThere) {
    return {};  // whoever makes a file in it reports what is not a folder
  }
  const auto parent =
      folder.has_filename() ? folder.parent_path() : folder.parent_path().parent_path();
  if (const Result<> made = parent == folder ? Result<>() : MakeFolders(parent); !made) {
    return made;
  }
  // Another program may make the same one.
  const bool is_made = WriterCalls().make_folder(folder) == 0 || errno == EEXIST;
  if (!is_made || WriterCalls().sync_folder(parent) != 0) {
    return Failure(FileMessage(folder, SystemReason(errno)));
  }
  return {};
}

InFile::~InFile() {
  if (handle_ >= 0) {
    CloseRead(handle_);
  }
}

Result<> InFile::Open(const std::filesystem::path& path) {
  handle_ = OpenToRead(path);
  FileInfo info;
  if (handle_ < 0 || !ReadInfo(handle_, &info)) {
    return Failure(SystemReason(errno));
  }
  if (info.kind == FileKind::kFolder) {
    return Failure(SystemReason(EISDIR));
  }
  if (info.kind != FileKind::kRegular && info.kind != FileKind::kPipe) {
    return Failure("not a file but a device");
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
    outcome_ = Failure(SystemReason(errno));
  }
  is_at_end_ = count <= 0;
  return count < 0 ? 0 : static_cast<std::size_t>(count);
}

// Moves what is unread to the front and reads on after it; false at the end.
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

Result<> WriteFile(const std::filesystem::path& path, std::span<const std::byte> bytes,
                   bool* has_touched) {
  OutFile file;
  Result<> done = file.Open(path);
  done = done ? file.Write(bytes) : done;
  done = done ? file.Commit() : done;
  if (has_touched != nullptr) {
    *has_touched = file.HasTouchedTarget();
  }
  return done;
}

Result<> CopyBytes(const std::filesystem::path& from, const std::filesystem::path& to) {
  InFile in;
  OutFile out;
  Result<> done = in.Open(from);
  done = done ? out.Open(to) : done;
  std::vector<std::byte> piece(kPiece);
  for (std::size_t size = 1; done && size > 0;) {
    size = in.Read(piece);
    done = in.Outcome() ? out.Write(std::span(piece).first(size)) : in.Outcome();
  }
  return done ? out.Commit() : done;
}

bool HaveSameBytes(const std::filesystem::path& a, const std::filesystem::path& b) {
  InFile one;
  InFile other;
  if (!one.Open(a) || !other.Open(b)) {
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
  return one.Outcome() && other.Outcome();
}

Result<std::filesystem::path> KeepBackup(const std::filesystem::path& path) {
  Result<> done;
  const auto exists = [&done](const std::string& name) {
    const auto found = IsTaken(PathOf(name));
    done = found ? Result<>() : Failure(found.Message());
    return found == Existence::kThere;
  };
  const auto kept = PathOf(FirstFreeName(PathText(path), BackupName, exists));
  done = done ? CopyBytes(path, kept) : done;
  if (!done) {
    return Failure(FileMessage(kept.filename(), done.Message()));
  }
  std::error_code ignored;  // the bytes count
  if (const auto status = std::filesystem::status(path, ignored); !ignored) {
    std::filesystem::permissions(kept, status.permissions(), ignored);
  }
  return kept;
}

}  // namespace orvane
