// SPDX-License-Identifier: GPL-3.0-or-later
// The safe writer's policy.
#include <algorithm>
#include <cerrno>
#include <chrono>
#include <thread>
#include <utility>

#include "files/file_io.h"
#include "files/follow_links.h"
#include "files/handle_place.h"

namespace orvane {
namespace {

constexpr std::size_t kMostAtOnce = std::size_t{256} * 1024;

// Writes everything, in pieces. Returns how much was written: less than all, with errno set, on
// failure.
std::size_t WriteAll(int handle, std::span<const std::byte> bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const auto left = bytes.subspan(done);
    const auto written =
        WriterCalls().write(handle, left.data(), std::min(left.size(), kMostAtOnce));
    if (written < 0 && (errno == EINTR || (errno == EAGAIN && WaitToWrite(handle)))) {
      continue;
    }
    if (written <= 0) {
      errno = written == 0 ? ENOSPC : errno;
      break;
    }
    done += static_cast<std::size_t>(written);
  }
  return done;
}

// A folder that takes no second file may still let the file itself be rewritten.
bool ForbidsNewFiles(int error) { return error == EACCES || error == EPERM || error == EROFS; }

bool ForbidsReplacing(int error) { return error == EACCES || error == EPERM || error == EBUSY; }

bool IsOpened(const std::filesystem::path& path, int* handle) {
  *handle = *handle < 0 ? WriterCalls().open(path) : *handle;
  return *handle >= 0;
}

// All of a file.
Result<> ReadBack(const std::filesystem::path& path, std::vector<std::byte>* bytes) {
  FileInfo info;
  InFile file;
  if (!ReadInfo(path, &info)) {
    return Failure(SystemReason(errno));
  }
  if (const Result<> opened = file.Open(path); !opened) {
    return opened;
  }
  bytes->resize(info.size);
  const bool is_whole = file.Read(*bytes) == info.size;
  return is_whole || !file.Outcome() ? file.Outcome() : Failure(SystemReason(EIO));
}

}  // namespace

bool OutFile::CloseTarget() {
  const int handle = std::exchange(handle_, -1);
  return handle < 0 || WriterCalls().close(handle) == 0;
}

void OutFile::Abandon() {
  static_cast<void>(CloseTarget());  // the write has already failed
  beside_.Remove();
  pending_.clear();
  way_ = Way::kNone;
}

Result<> OutFile::Fail(std::string reason) {
  outcome_ = Failure(std::move(reason));
  Abandon();
  return outcome_;
}

Result<> OutFile::Fail(int error) {
  switch (error) {
    case EBUSY:
      return Fail("is being changed by another program");
    case EINTR:
      return Fail("interrupted");
    case ECANCELED:
      return Fail("another program has removed the temporary file");
    default:
      return Fail(SystemReason(error));
  }
}

Result<> OutFile::Done() {
  way_ = Way::kNone;
  return {};
}

Result<> OutFile::Open(const std::filesystem::path& path) { return Start(path, false); }

Result<> OutFile::OpenAlone(const std::filesystem::path& path) { return Start(path, true); }

Result<> OutFile::OpenToUpdate(const std::filesystem::path& path) {
  const Result<> opened = OpenAlone(path);
  if (!opened || way_ == Way::kDirect) {
    return opened;
  }
  const Result<> read = expected_.emplace().Read(target_);
  return read ? read : Fail(read.Message());
}

void OutFile::Expect(const RememberedFile& memory) {
  if (memory.IsKnown()) {
    expected_ = memory;
  }
}

Result<> OutFile::Start(const std::filesystem::path& path, bool is_alone) {
  FileInfo info;
  if (ReadInfo(path, &info) && info.kind == FileKind::kPipe) {
    target_ = path;  // opened by the first write: it may be what is read before
    has_touched_ = true;
    way_ = Way::kDirect;
    return {};
  }
  // Opened even where it is going to be replaced: a file that forbids writing stays.
  handle_ = WriterCalls().open(path);
  if (handle_ < 0 ? errno != ENOENT : !ReadInfo(handle_, &info)) {
    return Fail(errno);
  }
  if (handle_ >= 0 && info.kind != FileKind::kRegular) {
    has_touched_ = true;
    way_ = Way::kDirect;
    return {};
  }
  const auto target = FollowLinks(path);
  if (!target) {
    return Fail(target.Message());
  }
  target_ = *target;
  return OpenBeside(is_alone);
}

// Calls `take` until it returns true, or false with another error than EBUSY.
template <typename Take>
bool OutFile::WaitForTurn(Take take) {
  constexpr std::chrono::milliseconds kPause{5};
  const auto end = std::chrono::steady_clock::now() + kMostWait;
  while (!take()) {
    const bool is_busy = errno == EBUSY;
    if (is_busy && WriterCalls().gives_up()) {
      errno = EINTR;
      return false;
    }
    if (!is_busy || std::chrono::steady_clock::now() >= end) {
      return false;
    }
    std::this_thread::sleep_for(kPause);
  }
  return true;
}

bool OutFile::CreateAlone() {
  // Meanwhile the target is closed: not every system lets an open file be replaced.
  const bool was_there = handle_ >= 0;
  if (was_there) {
    CloseRead(std::exchange(handle_, -1));  // nothing was written
  }
  const bool is_made = WaitForTurn([this] { return beside_.CreateAlone(target_); });
  const int error = errno;
  if (was_there) {
    handle_ = WriterCalls().open(target_);
    if (handle_ < 0 && errno != ENOENT) {
      return false;
    }
  }
  errno = error;
  return is_made;
}

Result<> OutFile::OpenBeside(bool is_alone) {
  // Who had the file before may have put another in its place.
  const auto lock = [this] {
    const bool is_busy = TryLock(handle_) == Lock::kBusy;
    const HandlePlace place = is_busy ? HandlePlace::kElsewhere : PlaceOf(handle_, target_);
    if (place != HandlePlace::kElsewhere) {
      return place == HandlePlace::kAtName;
    }
    CloseRead(handle_);
    handle_ = WriterCalls().open(target_);
    errno = handle_ >= 0 ? EBUSY : errno;
    return false;
  };
  const bool is_made = is_alone ? CreateAlone() : beside_.Create(target_);
  if (!is_made && (handle_ < 0 || !ForbidsNewFiles(errno))) {
    return Fail(errno);
  }
  if (!is_made || (handle_ >= 0 && !TakeRights(handle_, beside_.Handle()))) {
    beside_.Remove();
    way_ = Way::kInPlace;  // where its rights stay as they are
    return is_alone && !WaitForTurn(lock) ? Fail(errno) : Result<>();
  }
  way_ = Way::kBeside;
  if (handle_ >= 0) {
    CloseRead(std::exchange(handle_, -1));  // nothing was written through it
  }
  return {};
}

Result<> OutFile::Write(std::span<const std::byte> bytes) {
  if (way_ == Way::kNone) {
    return outcome_ ? Failure(SystemReason(EBADF)) : outcome_;
  }
  if (way_ == Way::kInPlace) {
    pending_.insert(pending_.end(), bytes.begin(), bytes.end());
    return {};
  }
  if (way_ == Way::kDirect && !IsOpened(target_, &handle_)) {
    return Fail(errno);
  }
  const int handle = way_ == Way::kDirect ? handle_ : beside_.Handle();
  return WriteAll(handle, bytes) == bytes.size() ? Result<>() : Fail(errno);
}

Result<std::filesystem::path> OutFile::PathToFill() {
  if (way_ == Way::kBeside) {
    return beside_.Path();
  }
  if (way_ != Way::kNone) {
    outcome_ = Fail("only a new file in a folder that takes one can be written so");
  }
  return Failure(outcome_ ? SystemReason(EBADF) : outcome_.Message());
}

Result<> OutFile::Commit() {
  switch (way_) {
    case Way::kNone:
      break;
    case Way::kBeside:
      return CommitBeside();
    case Way::kInPlace:
      return CommitInPlace();
    case Way::kDirect:
      return CommitDirectly();
  }
  return outcome_ ? Failure(SystemReason(EBADF)) : outcome_;
}

Result<> OutFile::CommitDirectly() {
  if (!IsOpened(target_, &handle_)) {  // a reader waits also for what is empty
    return Fail(errno);
  }
  // Pipes and most devices cannot be synced; only what a disk reports counts.
  if (WriterCalls().sync(handle_) != 0 && errno != EINVAL && errno != ENOTSUP && errno != EROFS) {
    return Fail(errno);
  }
  return CloseTarget() ? Done() : Fail(errno);
}

// Fails where the target is no longer what it was when it was opened to be updated.
Result<> OutFile::ComparedWithExpected() {
  const auto change = expected_ ? expected_->Look(target_) : FileChange::kUnchanged;
  if (change == FileChange::kUnchanged) {
    return {};
  }
  was_overtaken_ = static_cast<bool>(change);
  return Failure(change ? "another program has changed it" : change.Message());
}

Result<> OutFile::CommitBeside() {
  if (WriterCalls().sync(beside_.Handle()) != 0 || !beside_.Close()) {
    return Fail(errno);
  }
  FileInfo there;  // a device, folder or link may be there by now
  const bool is_there = ReadLinkInfo(target_, &there);
  if (!is_there && !MeansNotThere(errno)) {
    return Fail(errno);
  }
  if (is_there && there.kind != FileKind::kRegular) {
    return Fail("it became a folder, a device or a link while it was written");
  }
  if (const Result<> compared = ComparedWithExpected(); !compared) {
    return Fail(compared.Message());
  }
  if (!beside_.MoveTo(target_)) {
    return ForbidsReplacing(errno) ? CommitByCopying(errno) : Fail(errno);
  }
  has_touched_ = true;
  const bool is_lasting = WriterCalls().sync_folder(target_.parent_path()) == 0;
  return is_lasting ? Done() : Fail(errno);
}

// Where the finished file may not take the target's place but the target may be written: a file of
// somebody else in a shared folder, a mount of a single file. `error` is what forbade it.
Result<> OutFile::CommitByCopying(int error) {
  if (const Result<> read = ReadBack(beside_.Path(), &pending_); !read) {
    return Fail(read.Message());
  }
  beside_.FreeTarget();
  handle_ = WriterCalls().open(target_);
  if (handle_ < 0) {
    return Fail(error);
  }
  const Result<> done = CommitInPlace();
  beside_.Remove();
  return done;
}

// The open target gets `bytes` as its first bytes and `size` as its size, and is closed.
bool OutFile::Rewrite(std::span<const std::byte> bytes, std::size_t size, std::size_t* written) {
  *written = Rewind(handle_) ? WriteAll(handle_, bytes) : 0;
  return *written == bytes.size() && WriterCalls().resize(handle_, size) == 0 &&
         WriterCalls().sync(handle_) == 0 && CloseTarget();
}

Result<> OutFile::CommitInPlace() {
  switch (PlaceOf(handle_, target_)) {
    case HandlePlace::kAtName:
      break;
    case HandlePlace::kElsewhere:  // ours has no name any more
      was_overtaken_ = expected_.has_value();
      return Fail("another file took its place while it was written");
    case HandlePlace::kCannotTell:
      return Fail(errno);
  }
  if (TryLock(handle_) == Lock::kBusy) {
    return Fail(EBUSY);
  }
  if (const Result<> compared = ComparedWithExpected(); !compared) {
    return Fail(compared.Message());
  }
  std::vector<std::byte> old;
  if (const Result<> read = ReadBack(target_, &old); !read) {
    return Fail(read.Message());  // what cannot be put back is not overwritten
  }
  has_touched_ = true;
  std::size_t written = 0;
  if (Rewrite(pending_, pending_.size(), &written)) {
    return Done();
  }
  const int error = errno;
  std::string reason = SystemReason(error);
  if (handle_ < 0) {
    handle_ = WriterCalls().open(target_);  // closing was what failed
  }
  // What lies beyond the size that the user may give a file is untouched, and stays so.
  const std::size_t touched = error == EFBIG ? std::min(written, old.size()) : old.size();
  if (!Rewrite(std::span(old).first(touched), old.size(), &written)) {
    reason.append("; what the file held before could not be put back");
  }
  return Fail(std::move(reason));
}

}  // namespace orvane
