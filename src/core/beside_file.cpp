// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/beside_file.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "core/checksum.h"
#include "core/file_system.h"
#include "core/number_format.h"
#include "core/number_text.h"
#include "core/path_text.h"

namespace orvane {
namespace {

void RemoveFile(const std::filesystem::path& path) {
  std::error_code ignored;  // what cannot be removed stays
  std::filesystem::remove(path, ignored);
}

// Whether the open file is still, or already, the one of that name.
bool IsAt(int handle, const std::filesystem::path& path) {
  FileInfo opened;
  FileInfo found;
  return ReadInfo(handle, &opened) && ReadLinkInfo(path, &found) && opened.IsSameFileAs(found);
}

// Without locks only its age tells. Who is robbed of a file by a clock that is wrong notices it
// before the end, and has lost nothing.
bool IsOld(const std::filesystem::path& path) {
  std::error_code error;
  const auto written = std::filesystem::last_write_time(path, error);
  return !error && std::filesystem::file_time_type::clock::now() - written > std::chrono::hours(1);
}

// What nobody has locked was left by a program that is gone. It is removed under its lock, so that
// no other program takes the name in between.
void RemoveLeftover(const std::filesystem::path& path) {
  const int handle = OpenToLock(path);
  if (handle < 0) {
    return;
  }
  const Lock lock = TryLock(handle);
  if ((lock == Lock::kTaken || (lock == Lock::kUnknown && IsOld(path))) && IsAt(handle, path)) {
    RemoveFile(path);
  }
  CloseRead(handle);
}

}  // namespace

std::filesystem::path BesideFile::NameFor(const std::filesystem::path& target, int number) {
  const std::filesystem::path name = target.filename();
  std::array<char, kMaxNumberText> digits{};
  const char* end = WriteHex(digits.data(), Checksum(std::as_bytes(std::span(name.native()))), 16);
  std::string text = ".orvane-";
  text.append(std::string_view(digits.data(), end));
  if (number > 0) {
    text.append("-").append(FormatInt(number));
  }
  return target.parent_path() / PathOf(text.append(".tmp"));
}

bool BesideFile::Create(const std::filesystem::path& target) {
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
  const int handle = WriterCalls().create(path);
  if (handle < 0) {
    return false;
  }
  // Before it was locked another program may have taken it for a leftover: then it is gone.
  const Lock lock = TryLock(handle);
  if (lock == Lock::kBusy || (lock == Lock::kTaken && !IsAt(handle, path))) {
    CloseRead(handle);
    errno = EEXIST;
    return false;
  }
  path_ = path;
  handle_ = handle;
  lock_ = KeepLock(handle);
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
  if (!IsAt(lock_, path_)) {
    errno = EAGAIN;
    return false;
  }
  if (WriterCalls().rename(path_, target) != 0) {
    return false;
  }
  Release();
  return true;
}

void BesideFile::Remove() {
  if (!path_.empty()) {
    RemoveFile(path_);  // while it is ours
  }
  Release();
}

void BesideFile::Release() {
  static_cast<void>(Close());  // nothing is lost with a file that goes
  if (lock_ >= 0) {
    CloseRead(std::exchange(lock_, -1));
  }
  path_.clear();
}

}  // namespace orvane
