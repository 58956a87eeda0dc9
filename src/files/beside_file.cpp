// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/beside_file.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <random>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "base/checksum.h"
#include "base/number_format.h"
#include "base/number_text.h"
#include "files/file_system.h"
#include "files/handle_place.h"
#include "files/path_text.h"

namespace orvane {
namespace {

void RemoveFile(const std::filesystem::path& path) {
  std::error_code ignored;  // what cannot be removed stays
  std::filesystem::remove(path, ignored);
}

// Without locks only its age shows it. Who is robbed of a file by a clock that is wrong notices it
// before the end, and has lost nothing.
bool IsOld(const std::filesystem::path& path) {
  std::error_code error;
  const auto written = std::filesystem::last_write_time(path, error);
  return !error && std::filesystem::file_time_type::clock::now() - written > std::chrono::hours(1);
}

// What nobody has locked was left by a program that is gone. It is removed under its lock, so that
// no other program takes the name in between. Returns whose the name is: nobody's any more, another
// program's, or unknown.
Lock RemoveLeftover(const std::filesystem::path& path) {
  const int handle = OpenToLock(path);
  if (handle < 0) {
    return errno == ENOENT ? Lock::kTaken : Lock::kUnknown;
  }
  const Lock lock = TryLock(handle);
  if ((lock == Lock::kTaken || (lock == Lock::kUnknown && IsOld(path))) &&
      PlaceOf(handle, path) == HandlePlace::kAtName) {
    RemoveFile(path);
  }
  CloseRead(handle);
  return lock;
}

constexpr std::string_view kStart = ".orvane-";
constexpr std::string_view kEnd = ".tmp";

// Once in each folder: looking through a large one takes time.
void RemoveAllLeftovers(const std::filesystem::path& folder) {
  static std::mutex mutex;
  static std::set<std::filesystem::path> done;
  const std::lock_guard lock(mutex);
  if (!done.insert(folder).second) {
    return;
  }
  std::vector<std::filesystem::path> names;
  static_cast<void>(ReaderCalls().list(folder, &names));  // as far as it goes
  for (const auto& name : names) {
    const std::string text = PathText(name);
    if (text.starts_with(kStart) && text.ends_with(kEnd)) {
      RemoveLeftover(folder / name);
    }
  }
}

std::string Hex(std::uint64_t number) {
  std::array<char, kMaxNumberText> digits{};
  const char* end = WriteHex(digits.data(), number, 16);
  return {digits.data(), static_cast<std::size_t>(end - digits.data())};
}

}  // namespace

std::filesystem::path BesideFile::NameFor(const std::filesystem::path& target, int number) {
  const std::filesystem::path name = target.filename();
  std::string text(kStart);
  text.append(Hex(Checksum(std::as_bytes(std::span(name.native())))));
  if (number > 0) {
    text.append("-").append(FormatInt(number));
  }
  return target.parent_path() / PathOf(text.append(kEnd));
}

bool BesideFile::CreateRandom(const std::filesystem::path& target) {
  RemoveAllLeftovers(target.parent_path());
  std::random_device random;
  std::string name(kStart);
  name.append(Hex(std::uint64_t{random()} << 32U | random())).append(kEnd);
  return Make(target.parent_path() / PathOf(name));
}

// A target that is replaced takes its lock with it: only that of the file now there counts.
bool BesideFile::LockTarget(const std::filesystem::path& target) {
  const int handle = MayReplaceOpenFiles() ? OpenToLock(target) : -1;
  if (handle < 0) {
    return true;  // nothing there to be changed, or nothing that could be locked
  }
  if (TryLock(handle) == Lock::kBusy || PlaceOf(handle, target) == HandlePlace::kElsewhere) {
    CloseRead(handle);
    errno = EBUSY;
    return false;
  }
  target_lock_ = handle;
  return true;
}

void BesideFile::FreeTarget() {
  if (target_lock_ >= 0) {
    const int error = errno;
    CloseRead(std::exchange(target_lock_, -1));
    errno = error;
  }
}

bool BesideFile::CreateAlone(const std::filesystem::path& target) {
  if (LockTarget(target) &&
      (IsOwnFolder(target.parent_path()) ? CreateFirst(target) : CreateRandom(target))) {
    return true;
  }
  FreeTarget();
  return false;
}

bool BesideFile::CreateFirst(const std::filesystem::path& target) {
  const auto path = NameFor(target, 0);
  switch (RemoveLeftover(path)) {
    case Lock::kTaken:
      break;
    case Lock::kBusy:
      errno = EBUSY;
      return false;
    case Lock::kUnknown:  // something that no save of ours made, or a disk without locks
      return Create(target);
  }
  if (Make(path)) {
    return true;
  }
  errno = errno == EEXIST ? EBUSY : errno;
  return false;
}

bool BesideFile::Create(const std::filesystem::path& target) {
  if (!IsOwnFolder(target.parent_path())) {
    return CreateRandom(target);
  }
  for (int i = 0; i < kNames; ++i) {
    RemoveLeftover(NameFor(target, i));
  }
  for (int i = 0; i < kNames; ++i) {
    if (Make(NameFor(target, i))) {
      return true;
    }
    if (errno != EEXIST) {
      return false;
    }
  }
  errno = EBUSY;
  return false;
}

bool BesideFile::Make(const std::filesystem::path& path) {
  path_ = path;  // which takes memory: before there is a file that could be left over
  const auto fail = [this](int error) {
    path_.clear();
    errno = error;
    return false;
  };
  const int handle = WriterCalls().create(path);
  if (handle < 0) {
    return fail(errno);
  }
  // Before it was locked another program may have taken it for a leftover: then it is gone.
  const Lock lock = TryLock(handle);
  const HandlePlace place = lock == Lock::kTaken ? PlaceOf(handle, path) : HandlePlace::kAtName;
  if (lock == Lock::kBusy || place == HandlePlace::kElsewhere) {
    CloseRead(handle);
    return fail(EEXIST);
  }
  handle_ = handle;
  lock_ = place == HandlePlace::kAtName ? KeepLock(handle) : -1;
  if (lock_ >= 0) {
    return true;
  }
  const int error = errno;
  Remove();
  errno = error;
  return false;
}

bool BesideFile::Close() {
  const int handle = std::exchange(handle_, -1);
  return handle < 0 || WriterCalls().close(handle) == 0;
}

bool BesideFile::MoveTo(const std::filesystem::path& target) {
  // On a shared disk whose locks do not reach other computers the name may be another's by now.
  const HandlePlace place = PlaceOf(lock_, path_);
  if (place != HandlePlace::kAtName) {
    errno = place == HandlePlace::kElsewhere ? ECANCELED : errno;
    return false;
  }
  if (WriterCalls().rename(path_, target) != 0) {
    return false;
  }
  Release();
  return true;
}

void BesideFile::Remove() {
  const int held = lock_ >= 0 ? lock_ : handle_;
  if (!path_.empty() && PlaceOf(held, path_) != HandlePlace::kElsewhere) {  // else it is another's
    RemoveFile(path_);
  }
  Release();
}

void BesideFile::Release() {
  static_cast<void>(Close());  // nothing is lost with a file that goes
  if (lock_ >= 0) {
    CloseRead(std::exchange(lock_, -1));
  }
  FreeTarget();
  path_.clear();
}

}  // namespace orvane
