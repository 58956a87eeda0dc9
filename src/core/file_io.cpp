// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

#include "core/number_text.h"
#include "core/path_names.h"

namespace orvane {
namespace {

constexpr std::size_t kPiece = std::size_t{128} * 1024;
constexpr int kMaxLinks = 40;  // as many symbolic links as the system itself follows

int SyncHandle(int handle) { return fsync(handle); }
int CreateBeside(const char* path) {
  return open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}

int OpenForWriting(const std::filesystem::path& path) {
  return open(path.c_str(), O_WRONLY | O_CLOEXEC);
}

// Writes everything, in pieces; false with errno set on failure.
bool WriteAll(int handle, std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const auto written =
        WriterCalls().write(handle, bytes.data(), std::min(bytes.size(), 2 * kPiece));
    if (written < 0 && errno == EINTR) {
      continue;
    }
    if (written <= 0) {
      errno = written == 0 ? ENOSPC : errno;
      return false;
    }
    bytes = bytes.subspan(static_cast<std::size_t>(written));
  }
  return true;
}

// Where a path leads once its symbolic links are followed; the last one need not exist.
std::filesystem::path FollowLinks(std::filesystem::path path) {
  std::error_code error;
  for (int i = 0; i < kMaxLinks && std::filesystem::is_symlink(path, error); ++i) {
    const auto next = std::filesystem::read_symlink(path, error);
    if (error) {
      break;
    }
    path = next.is_absolute() ? next : path.parent_path() / next;
  }
  return path;
}

// A folder that takes no second file may still let the file itself be rewritten.
bool ForbidsNewFiles(int error) { return error == EACCES || error == EPERM || error == EROFS; }

bool ForbidsReplacing(int error) { return error == EACCES || error == EPERM || error == EBUSY; }

bool ReadBack(const std::filesystem::path& path, std::vector<std::byte>* bytes) {
  std::error_code error;
  const auto size = std::filesystem::file_size(path, error);
  InFile file;
  if (error || !file.Open(path).empty()) {
    return false;
  }
  bytes->resize(size);
  return file.Read(*bytes) == size;
}

void SyncFolder(const std::filesystem::path& folder) {
  const int handle =
      open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle >= 0) {
    fsync(handle);  // not every file system can; the file itself is safe
    close(handle);
  }
}

}  // namespace

std::string SystemReason(int error) {
#ifdef __GLIBC__
  if (const char* text = strerrordesc_np(error); text != nullptr) {
    return text;
  }
#endif
  return std::generic_category().message(error);
}

FileCalls& WriterCalls() {
  static FileCalls calls{write, SyncHandle, close, std::rename, CreateBeside};
  return calls;
}

std::string FileMessage(const std::filesystem::path& path, std::string_view reason) {
  return path.string() + ": " + std::string(reason);
}

std::string FileIdentity(const std::filesystem::path& path) {
  struct stat info {};
  const auto numbers = [&info] {
    return FormatInt(static_cast<std::int64_t>(info.st_dev)) + ":" +
           FormatInt(static_cast<std::int64_t>(info.st_ino));
  };
  if (stat(path.c_str(), &info) == 0) {
    return numbers();
  }
  const auto target = FollowLinks(path);
  const auto folder = target.parent_path();
  if (stat(folder.empty() ? "." : folder.c_str(), &info) == 0) {
    return numbers() + "/" + target.filename().string();
  }
  std::error_code error;
  return std::filesystem::absolute(target, error).lexically_normal().string();
}

InFile::~InFile() {
  if (handle_ >= 0) {
    close(handle_);
  }
}

std::string InFile::Open(const std::filesystem::path& path) {
  // A pipe without a writer must not hold us up; it reads as empty.
  handle_ = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat info {};
  if (handle_ < 0 || fstat(handle_, &info) != 0) {
    return SystemReason(errno);
  }
  if (S_ISFIFO(info.st_mode)) {
    fcntl(handle_, F_SETFL, 0);  // one with a writer may take its time
  }
  if (S_ISDIR(info.st_mode)) {
    return SystemReason(EISDIR);
  }
  if (!S_ISREG(info.st_mode) && !S_ISFIFO(info.st_mode)) {
    return "not a file but a device";
  }
  // A byte more than a small file has, so that its end is seen at once.
  const auto size = static_cast<std::size_t>(info.st_size);
  piece_ = S_ISREG(info.st_mode) ? std::clamp(size + 1, kMostPeeked, kPiece) : kPiece;
  buffer_ = std::make_unique_for_overwrite<std::byte[]>(piece_);  // NOLINT: as declared
  return {};
}

std::size_t InFile::ReadPiece(std::span<std::byte> bytes) {
  ssize_t count = 0;
  do {
    count = read(handle_, bytes.data(), bytes.size());
  } while (count < 0 && errno == EINTR);
  if (count < 0) {
    error_ = SystemReason(errno);
  }
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

OutFile::~OutFile() { Abandon(); }

bool OutFile::CloseHandle() {
  const int handle = handle_;
  handle_ = -1;
  return handle < 0 || WriterCalls().close(handle) == 0;
}

void OutFile::Abandon() {
  static_cast<void>(CloseHandle());  // the file goes or has failed already
  if (!beside_.empty()) {
    unlink(beside_.c_str());
    beside_.clear();
  }
  pending_.clear();
  way_ = Way::kNone;
}

std::string OutFile::Fail(int error) {
  error_ = SystemReason(error);
  Abandon();
  return error_;
}

std::string OutFile::Open(const std::filesystem::path& path) {
  struct stat info {};
  const bool exists = stat(path.c_str(), &info) == 0;
  if (!exists && errno != ENOENT) {
    return Fail(errno);
  }
  if (!exists) {
    target_ = FollowLinks(path);
    return OpenBeside(-1);
  }
  // Opened even where it is going to be replaced: a file that forbids writing stays.
  handle_ = OpenForWriting(path);
  if (handle_ < 0) {
    return Fail(errno);
  }
  if (!S_ISREG(info.st_mode)) {
    way_ = Way::kDirect;
    return {};
  }
  target_ = FollowLinks(path);
  const int target = handle_;
  handle_ = -1;
  std::string error = OpenBeside(target);
  if (handle_ != target) {
    close(target);  // nothing was written through it
  }
  return error;
}

// `target` is the open existing file, or -1.
std::string OutFile::OpenBeside(int target) {
  for (int attempt = 0; attempt < 1000 && handle_ < 0; ++attempt) {
    beside_ = target_.parent_path() /
              (".orvane-" + FormatInt(getpid()) + "-" + FormatInt(attempt) + ".tmp");
    handle_ = WriterCalls().create_beside(beside_.c_str());
    if (handle_ < 0 && errno != EEXIST) {
      break;
    }
  }
  if (handle_ < 0) {
    const int error = errno;
    beside_.clear();
    if (target >= 0 && ForbidsNewFiles(error)) {
      way_ = Way::kInPlace;
      handle_ = target;
      return {};
    }
    return Fail(error);
  }
  way_ = Way::kBeside;
  struct stat info {};
  if (target >= 0 && fstat(target, &info) == 0) {
    // An ordinary user cannot give files away; the mode bits are what matters then.
    static_cast<void>(fchown(handle_, info.st_uid, info.st_gid) == 0);
    struct stat made {};
    if (fstat(handle_, &made) != 0 ||
        (made.st_mode != info.st_mode && fchmod(handle_, info.st_mode & 07777U) != 0)) {
      return Fail(errno);
    }
  }
  return {};
}

std::string OutFile::Write(std::span<const std::byte> bytes) {
  if (way_ == Way::kNone) {
    return error_.empty() ? SystemReason(EBADF) : error_;
  }
  if (way_ == Way::kInPlace) {
    pending_.insert(pending_.end(), bytes.begin(), bytes.end());
    return {};
  }
  return WriteAll(handle_, bytes) ? std::string() : Fail(errno);
}

std::string OutFile::Commit() {
  switch (way_) {
    case Way::kNone:
      return error_.empty() ? SystemReason(EBADF) : error_;
    case Way::kBeside:
      return CommitBeside();
    case Way::kInPlace:
      return CommitInPlace();
    case Way::kDirect:
      break;
  }
  // Pipes and most devices cannot be synced; only what a disk reports counts.
  if (WriterCalls().sync(handle_) != 0 && errno != EINVAL && errno != ENOTSUP && errno != EROFS) {
    return Fail(errno);
  }
  if (!CloseHandle()) {
    return Fail(errno);
  }
  way_ = Way::kNone;
  return {};
}

std::string OutFile::CommitBeside() {
  if (WriterCalls().sync(handle_) != 0 || !CloseHandle()) {
    return Fail(errno);
  }
  if (WriterCalls().rename(beside_.c_str(), target_.c_str()) != 0) {
    const int error = errno;
    return ForbidsReplacing(error) && CommitByCopying() ? std::string() : Fail(error);
  }
  beside_.clear();
  way_ = Way::kNone;
  SyncFolder(target_.parent_path());
  return {};
}

// Where the finished file may not take the target's place but the target may be written: a file of
// somebody else in a shared folder, a mount of a single file.
bool OutFile::CommitByCopying() {
  if (!ReadBack(beside_, &pending_)) {
    return false;
  }
  handle_ = OpenForWriting(target_);
  if (handle_ < 0 || !CommitInPlace().empty()) {
    return false;
  }
  unlink(beside_.c_str());
  beside_.clear();
  return true;
}

// The open target gets `bytes` as its content and is closed.
bool OutFile::Rewrite(std::span<const std::byte> bytes) {
  return lseek(handle_, 0, SEEK_SET) == 0 && WriteAll(handle_, bytes) &&
         ftruncate(handle_, static_cast<off_t>(bytes.size())) == 0 &&
         WriterCalls().sync(handle_) == 0 && CloseHandle();
}

std::string OutFile::CommitInPlace() {
  std::vector<std::byte> old;
  if (!ReadBack(target_, &old)) {
    return Fail(EACCES);  // what cannot be put back is not overwritten
  }
  if (!Rewrite(pending_)) {
    const int error = errno;
    if (handle_ < 0) {
      handle_ = OpenForWriting(target_);  // closing was what failed
    }
    static_cast<void>(Rewrite(old));  // best effort; the first failure is the one to tell
    return Fail(error);
  }
  way_ = Way::kNone;
  return {};
}

std::string WriteFile(const std::filesystem::path& path, std::span<const std::byte> bytes) {
  OutFile file;
  std::string error = file.Open(path);
  if (error.empty()) {
    error = file.Write(bytes);
  }
  return error.empty() ? file.Commit() : error;
}

std::string KeepBackup(const std::filesystem::path& path, std::filesystem::path* kept) {
  *kept = FirstFreeName(path.string(), BackupName, [](const std::string& name) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(name, error));
  });
  InFile in;
  OutFile out;
  std::string reason = in.Open(path);
  reason = reason.empty() ? out.Open(*kept) : reason;
  std::vector<std::byte> piece(kPiece);
  for (std::size_t size = 1; reason.empty() && size > 0;) {
    size = in.Read(piece);
    reason = in.Error().empty() ? out.Write(std::span(piece).first(size)) : in.Error();
  }
  reason = reason.empty() ? out.Commit() : reason;
  std::error_code ignored;  // the bytes count
  if (const auto status = std::filesystem::status(path, ignored); reason.empty() && !ignored) {
    std::filesystem::permissions(*kept, status.permissions(), ignored);
  }
  return reason;
}

}  // namespace orvane
