// SPDX-License-Identifier: GPL-3.0-or-later
#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#ifdef __linux__
#include <sys/vfs.h>
#include <sys/xattr.h>
#endif
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string_view>
#include <system_error>
#include <vector>

#include "files/file_system.h"

namespace orvane {
namespace {

FileKind KindOf(mode_t mode) {
  if (S_ISREG(mode)) {
    return FileKind::kRegular;
  }
  if (S_ISDIR(mode)) {
    return FileKind::kFolder;
  }
  if (S_ISLNK(mode)) {
    return FileKind::kLink;
  }
  return S_ISFIFO(mode) ? FileKind::kPipe : FileKind::kDevice;
}

std::int64_t Nanoseconds(const timespec& time) {
  return time.tv_sec * std::int64_t{1'000'000'000} + time.tv_nsec;
}

bool Told(int result, const struct stat& from, FileInfo* info) {
  if (result == 0) {
    *info = {KindOf(from.st_mode),
             static_cast<std::uint64_t>(from.st_size),
             from.st_dev,
             from.st_ino,
             Nanoseconds(from.st_mtim),
             Nanoseconds(from.st_ctim)};
  }
  return result == 0;
}

template <typename Call>
auto Retried(Call call) {
  auto result = call();
  while (result < 0 && errno == EINTR) {
    result = call();
  }
  return result;
}

bool Info(const std::filesystem::path& path, FileInfo* info) {
  struct stat found {};
  return Told(stat(path.c_str(), &found), found, info);
}

bool InfoOf(int handle, FileInfo* info) {
  struct stat found {};
  return Told(fstat(handle, &found), found, info);
}

bool LinkInfo(const std::filesystem::path& path, FileInfo* info) {
  struct stat found {};
  return Told(lstat(path.c_str(), &found), found, info);
}

bool List(const std::filesystem::path& folder, std::vector<std::filesystem::path>* names) {
  DIR* const entries = opendir(folder.empty() ? "." : folder.c_str());
  if (entries == nullptr) {
    return false;
  }
  errno = 0;
  while (const dirent* entry = readdir(entries)) {
    const std::string_view name(entry->d_name);
    if (name != "." && name != "..") {
      names->emplace_back(name);
    }
    errno = 0;
  }
  const int error = errno;
  closedir(entries);
  errno = error;
  return error == 0;
}

constexpr int kWait = 50;  // milliseconds between two looks

bool NeverGivesUp() { return false; }

bool IsGivenUp() {
  if (!WriterCalls().gives_up()) {
    return false;
  }
  errno = EINTR;
  return true;
}

// What goes wrong the next read or write reports.
bool WaitFor(int handle, short event) {
  pollfd waiting{handle, event, 0};
  while (poll(&waiting, 1, kWait) <= 0) {
    if (IsGivenUp()) {
      return false;
    }
  }
  return true;
}

// A pipe is opened without waiting, because a wait for its reader could not be ended.
int OpenToWrite(const std::filesystem::path& path) {
  for (;;) {
    const int handle = open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK);
    FileInfo info;
    const bool waits =
        handle < 0 &&
        (errno == EINTR || (errno == ENXIO && Info(path, &info) && info.kind == FileKind::kPipe));
    if (!waits || IsGivenUp()) {
      return handle;
    }
    poll(nullptr, 0, kWait);
  }
}

int Create(const std::filesystem::path& path) {
  return Retried([&] { return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666); });
}

int Resize(int handle, std::uint64_t size) { return ftruncate(handle, static_cast<off_t>(size)); }

int Sync(int handle) {
  return Retried([handle] { return fsync(handle); });
}

int MakeFolder(const std::filesystem::path& folder) { return mkdir(folder.c_str(), 0777); }

// The lock belongs to what was opened, not to the program: two writers of one program keep apart
// too.
Lock TakeLock(int handle) {
  if (Retried([handle] { return flock(handle, LOCK_EX | LOCK_NB); }) == 0) {
    return Lock::kTaken;
  }
  return errno == EWOULDBLOCK ? Lock::kBusy : Lock::kUnknown;
}

// An interrupted close has closed all the same.
int Close(int handle) { return close(handle) == 0 || errno == EINTR ? 0 : -1; }

int Rename(const std::filesystem::path& from, const std::filesystem::path& to) {
  return std::rename(from.c_str(), to.c_str());
}

std::ptrdiff_t ReadSome(int handle, std::span<std::byte> bytes) {
  return Retried([&] { return read(handle, bytes.data(), bytes.size()); });
}

std::ptrdiff_t ReadSomeAt(int handle, std::uint64_t offset, std::span<std::byte> bytes) {
  if (offset > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) {
    return 0;
  }
  return Retried(
      [&] { return pread(handle, bytes.data(), bytes.size(), static_cast<off_t>(offset)); });
}

#ifdef __linux__
// Whether memory has nothing of an open file. No page is touched, so that it may shrink meanwhile.
bool IsOnDiskOnly(int handle, std::size_t size) {
  void* const place = mmap(nullptr, size, PROT_READ, MAP_SHARED, handle, 0);
  if (place == MAP_FAILED) {
    return false;
  }
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  std::vector<unsigned char> pages((size + page - 1) / page);
  const bool is_told = mincore(place, size, pages.data()) == 0;
  munmap(place, size);
  return is_told && std::none_of(pages.begin(), pages.end(),
                                 [](unsigned char flags) { return (flags & 1U) != 0; });
}

bool Forget(const std::filesystem::path& path) {
  const int handle = OpenToRead(path);
  FileInfo info;
  const bool is_forgotten =
      handle >= 0 && InfoOf(handle, &info) && info.kind == FileKind::kRegular && info.size > 0 &&
      posix_fadvise(handle, 0, 0, POSIX_FADV_DONTNEED) == 0 && IsOnDiskOnly(handle, info.size);
  if (handle >= 0) {
    close(handle);
  }
  return is_forgotten;
}

// A new file may have a list already: the one that its folder gives to all.
bool TakeAccessList(int from, int to) {
  constexpr const char* kName = "system.posix_acl_access";
  const auto is_none = [] { return errno == ENODATA || errno == ENOTSUP; };
  const ssize_t size = fgetxattr(from, kName, nullptr, 0);
  if (size < 0) {
    return is_none() && (fremovexattr(to, kName) == 0 || is_none());
  }
  std::vector<char> list(static_cast<std::size_t>(size));
  return fgetxattr(from, kName, list.data(), list.size()) == size &&
         fsetxattr(to, kName, list.data(), list.size(), 0) == 0;
}
#else
bool Forget(const std::filesystem::path& /*path*/) { return false; }
bool TakeAccessList(int /*from*/, int /*to*/) { return true; }
#endif

// A folder that may not be read, or whose file system has no such call, is not at fault.
int SyncFolder(const std::filesystem::path& folder) {
  const int handle =
      open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (handle < 0) {
    return 0;
  }
  const int error = Sync(handle) == 0 ? 0 : errno;
  close(handle);
  if (error == 0 || error == EINVAL || error == ENOTSUP || error == EBADF || error == EROFS) {
    return 0;
  }
  errno = error;
  return -1;
}

}  // namespace

bool IsOwnFolder(const std::filesystem::path& folder) {
  struct stat found {};
  return stat(folder.empty() ? "." : folder.c_str(), &found) == 0 &&
         (found.st_uid == geteuid() || found.st_uid == 0) &&
         (found.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

bool MayMakeFilesIn(const std::filesystem::path& folder) {
  return access(folder.empty() ? "." : folder.c_str(), W_OK | X_OK) == 0;
}

bool IsOnLocalDisk(const std::filesystem::path& folder) {
#ifdef __linux__
  // NFS, SMB (two generations), CIFS, AFS, Coda, NCP, 9P, Ceph; what a program serves (FUSE) may be
  // anywhere.
  constexpr auto kRemote =
      std::to_array<unsigned long>({0x6969, 0x517B, 0xFE534D42, 0xFF534D42, 0x5346414F, 0x73757245,
                                    0x564C, 0x01021997, 0x00C36400, 0x65735546});
  struct statfs found {};
  return statfs(folder.empty() ? "." : folder.c_str(), &found) == 0 &&
         std::find(kRemote.begin(), kRemote.end(),
                   static_cast<unsigned long>(found.f_type) & 0xFFFFFFFFU) == kRemote.end();
#else
  return folder.empty();  // not known
#endif
}

std::filesystem::path UserCacheFolder() {
  const auto folder_in = [](const char* name) {
    const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nobody sets it
    const std::filesystem::path path(value == nullptr ? "" : value);
    return path.is_absolute() ? path : std::filesystem::path();
  };
  const std::filesystem::path own = folder_in("XDG_CACHE_HOME");
  const std::filesystem::path home = folder_in("HOME");
  return !own.empty() || home.empty() ? own : home / ".cache";
}

std::string NameIdentity(const std::filesystem::path& name) { return name.native(); }

std::string SystemReason(int error) {
#ifdef __GLIBC__
  if (const char* text = strerrordesc_np(error); text != nullptr) {
    return text;
  }
#endif
  return std::generic_category().message(error);
}

int OpenToRead(const std::filesystem::path& path) {
  return Retried([&] { return open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); });
}

bool WaitToRead(int handle) { return WaitFor(handle, POLLIN); }

ReadCalls& ReaderCalls() {
  static ReadCalls calls{Info, InfoOf, LinkInfo, List, ReadSome, ReadSomeAt, Forget};
  return calls;
}

void CloseRead(int handle) { close(handle); }

FileCalls& WriterCalls() {
  static FileCalls calls{OpenToWrite, Create,     write,      Resize,   Sync,        Close,
                         Rename,      SyncFolder, MakeFolder, TakeLock, NeverGivesUp};
  return calls;
}

bool WaitToWrite(int handle) { return WaitFor(handle, POLLOUT); }

bool Rewind(int handle) { return lseek(handle, 0, SEEK_SET) == 0; }

bool TakeRights(int from, int to) {
  struct stat wanted {};
  struct stat made {};
  if (fstat(from, &wanted) != 0) {
    return false;
  }
  // An ordinary user cannot give files away; the mode bits are what matters then.
  static_cast<void>(fchown(to, wanted.st_uid, wanted.st_gid) == 0);
  return TakeAccessList(from, to) && fstat(to, &made) == 0 &&
         (made.st_mode == wanted.st_mode || fchmod(to, wanted.st_mode & 07777U) == 0);
}

int OpenToLock(const std::filesystem::path& path) {
  const int handle = open(path.c_str(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  FileInfo info;
  if (handle >= 0 && (!ReadInfo(handle, &info) || info.kind != FileKind::kRegular)) {
    close(handle);
    errno = EINVAL;
    return -1;
  }
  return handle;
}

bool MayReplaceOpenFiles() { return true; }

int KeepLock(int handle) { return fcntl(handle, F_DUPFD_CLOEXEC, 0); }

void ReportSizeLimits() { std::signal(SIGXFSZ, SIG_IGN); }

}  // namespace orvane
