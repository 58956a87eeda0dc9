// SPDX-License-Identifier: GPL-3.0-or-later
// Paths are wide from end to end. Every handle lets others read, write, rename and delete, as files
// elsewhere do; what keeps writers apart is the lock.
#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <limits>
#include <system_error>
#include <utility>

#include "files/file_system.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kMostAtOnce = std::size_t{1} << 30U;

constexpr auto kErrors =
    std::to_array<std::pair<DWORD, int>>({{ERROR_FILE_NOT_FOUND, ENOENT},
                                          {ERROR_PATH_NOT_FOUND, ENOENT},
                                          {ERROR_BAD_NETPATH, ENOENT},
                                          {ERROR_BAD_NET_NAME, ENOENT},
                                          {ERROR_BAD_PATHNAME, ENOENT},
                                          {ERROR_TOO_MANY_OPEN_FILES, EMFILE},
                                          {DWORD{1295}, ENOSPC},  // the quota is used up
                                          {ERROR_DELETE_PENDING, EBUSY},
                                          {ERROR_INVALID_NAME, ENOENT},
                                          {ERROR_NOT_READY, ENODEV},
                                          {ERROR_ACCESS_DENIED, EACCES},
                                          {ERROR_SHARING_VIOLATION, EBUSY},
                                          {ERROR_LOCK_VIOLATION, EBUSY},
                                          {ERROR_FILE_EXISTS, EEXIST},
                                          {ERROR_ALREADY_EXISTS, EEXIST},
                                          {ERROR_DISK_FULL, ENOSPC},
                                          {ERROR_HANDLE_DISK_FULL, ENOSPC},
                                          {ERROR_WRITE_PROTECT, EROFS},
                                          {ERROR_FILENAME_EXCED_RANGE, ENAMETOOLONG},
                                          {ERROR_DIRECTORY, ENOTDIR},
                                          {ERROR_INVALID_FUNCTION, EINVAL},
                                          {ERROR_INVALID_HANDLE, EINVAL},
                                          {ERROR_NOT_ENOUGH_MEMORY, ENOMEM}});

int Fail() {
  const DWORD error = GetLastError();
  const auto* known = std::find_if(kErrors.begin(), kErrors.end(),
                                   [error](const auto& pair) { return pair.first == error; });
  errno = known != kErrors.end() ? known->second : EIO;
  return -1;
}

HANDLE SystemHandle(int handle) {
  return reinterpret_cast<HANDLE>(_get_osfhandle(handle));  // NOLINT: the system's own type
}

int Descriptor(HANDLE handle, int flags) {
  if (handle == INVALID_HANDLE_VALUE) {
    return Fail();
  }
  const auto number = reinterpret_cast<std::intptr_t>(handle);  // NOLINT: as the library takes it
  const int descriptor = _open_osfhandle(number, flags | _O_BINARY | _O_NOINHERIT);
  if (descriptor < 0) {
    CloseHandle(handle);
  }
  return descriptor;
}

bool IsFolder(const std::filesystem::path& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

FileKind KindOf(HANDLE handle, const BY_HANDLE_FILE_INFORMATION& info) {
  if ((info.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
    FILE_ATTRIBUTE_TAG_INFO tag{};
    if (GetFileInformationByHandleEx(handle, FileAttributeTagInfo, &tag, sizeof tag) != 0 &&
        tag.ReparseTag == IO_REPARSE_TAG_SYMLINK) {
      return FileKind::kLink;
    }
  }
  return (info.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? FileKind::kFolder
                                                                 : FileKind::kRegular;
}

bool Tell(HANDLE handle, FileInfo* info) {
  switch (GetFileType(handle)) {
    case FILE_TYPE_DISK:
      break;
    case FILE_TYPE_PIPE:
      *info = {FileKind::kPipe};
      return true;
    case FILE_TYPE_CHAR:
      *info = {FileKind::kDevice};
      return true;
    default:
      return Fail() == 0;
  }
  BY_HANDLE_FILE_INFORMATION found{};
  if (GetFileInformationByHandle(handle, &found) == 0) {
    return Fail() == 0;
  }
  constexpr std::int64_t kEpoch = 116'444'736'000'000'000;  // 1970 in the system's ticks of 100 ns
  const auto joined = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32U | low; };
  const auto written =
      joined(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime);
  *info = {KindOf(handle, found), joined(found.nFileSizeHigh, found.nFileSizeLow),
           found.dwVolumeSerialNumber, joined(found.nFileIndexHigh, found.nFileIndexLow),
           (static_cast<std::int64_t>(written) - kEpoch) * 100};
  return true;
}

bool TellOf(const std::filesystem::path& path, DWORD flags, FileInfo* info) {
  // Folders can only be asked with the flag for backups.
  const HANDLE handle = CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_BACKUP_SEMANTICS | flags, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return Fail() == 0;
  }
  const bool is_told = Tell(handle, info);
  CloseHandle(handle);
  return is_told;
}

int OpenToWrite(const std::filesystem::path& path) {
  if (IsFolder(path)) {
    errno = EISDIR;
    return -1;
  }
  return Descriptor(CreateFileW(path.c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES, kShareAll,
                                nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr),
                    _O_WRONLY);
}

int Create(const std::filesystem::path& path) {
  return Descriptor(CreateFileW(path.c_str(), GENERIC_WRITE | FILE_READ_ATTRIBUTES, kShareAll,
                                nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr),
                    _O_WRONLY);
}

std::ptrdiff_t Write(int handle, const void* bytes, std::size_t size) {
  return _write(handle, bytes, static_cast<unsigned>(std::min(size, kMostAtOnce)));
}

int Resize(int handle, std::uint64_t size) {
  errno = _chsize_s(handle, static_cast<std::int64_t>(size));
  return errno == 0 ? 0 : -1;
}

int Sync(int handle) { return FlushFileBuffers(SystemHandle(handle)) != 0 ? 0 : Fail(); }

// Scanners and indexers hold a file for moments in which it cannot be replaced: worth a second,
// before it would be written in place.
int Rename(const std::filesystem::path& from, const std::filesystem::path& to) {
  constexpr int kTries = 20;
  constexpr DWORD kPause = 50;
  const DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  for (int i = 1; MoveFileExW(from.c_str(), to.c_str(), flags) == 0; ++i) {
    const DWORD error = GetLastError();
    const bool is_held = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ||
                         error == ERROR_LOCK_VIOLATION;
    if (!is_held || i == kTries || IsFolder(to)) {
      SetLastError(error);
      return Fail();
    }
    Sleep(kPause);
  }
  return 0;
}

// The rename is written through.
int SyncFolder(const std::filesystem::path& /*folder*/) { return 0; }

OVERLAPPED At(std::uint64_t offset) {
  OVERLAPPED place{};
  place.Offset = static_cast<DWORD>(offset);
  place.OffsetHigh = static_cast<DWORD>(offset >> 32U);
  return place;
}

std::ptrdiff_t ReadSome(int handle, std::span<std::byte> bytes) {
  return _read(handle, bytes.data(), static_cast<unsigned>(std::min(bytes.size(), kMostAtOnce)));
}

std::ptrdiff_t ReadSomeAt(int handle, std::uint64_t offset, std::span<std::byte> bytes) {
  if (offset > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max())) {
    return 0;
  }
  OVERLAPPED place = At(offset);
  DWORD count = 0;
  const auto size = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
  if (ReadFile(SystemHandle(handle), bytes.data(), size, &count, &place) == 0) {
    return GetLastError() == ERROR_HANDLE_EOF ? 0 : Fail();
  }
  return count;
}

bool Info(const std::filesystem::path& path, FileInfo* info) { return TellOf(path, 0, info); }

bool InfoOf(int handle, FileInfo* info) { return Tell(SystemHandle(handle), info); }

bool LinkInfo(const std::filesystem::path& path, FileInfo* info) {
  return TellOf(path, FILE_FLAG_OPEN_REPARSE_POINT, info);
}

bool List(const std::filesystem::path& folder, std::vector<std::filesystem::path>* names) {
  WIN32_FIND_DATAW entry{};
  const std::filesystem::path place = folder.empty() ? std::filesystem::path(L".") : folder;
  const HANDLE search = FindFirstFileW((place / L"*").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) {
    return Fail() == 0;
  }
  do {
    const std::wstring_view name(entry.cFileName);
    if (name != L"." && name != L"..") {
      names->emplace_back(name);
    }
  } while (FindNextFileW(search, &entry) != 0);
  const bool is_whole = GetLastError() == ERROR_NO_MORE_FILES || Fail() == 0;
  FindClose(search);
  return is_whole;
}

int MakeFolder(const std::filesystem::path& folder) {
  return CreateDirectoryW(folder.c_str(), nullptr) != 0 ? 0 : Fail();
}

// Far beyond the end of any file: a lock keeps others from reading what it covers.
Lock TakeLock(int handle) {
  OVERLAPPED place = At(std::uint64_t{0x7FFFFFFF} << 32U);
  const DWORD flags = LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY;
  if (LockFileEx(SystemHandle(handle), flags, 0, 1, 0, &place) != 0) {
    return Lock::kTaken;
  }
  const DWORD error = GetLastError();
  return error == ERROR_LOCK_VIOLATION || error == ERROR_IO_PENDING ? Lock::kBusy : Lock::kUnknown;
}

bool NeverGivesUp() { return false; }

}  // namespace

// A folder's rights are lists here; who may write is the user's own business on this system.
bool IsOwnFolder(const std::filesystem::path& /*folder*/) { return true; }

// A folder's attributes say nothing of it; opening it so makes no file.
bool MayMakeFilesIn(const std::filesystem::path& folder) {
  const std::filesystem::path path = folder.empty() ? std::filesystem::path(L".") : folder;
  HANDLE handle = CreateFileW(path.c_str(), FILE_ADD_FILE, kShareAll, nullptr, OPEN_EXISTING,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (handle == INVALID_HANDLE_VALUE) {
    return false;
  }
  CloseHandle(handle);
  return true;
}

bool IsOnLocalDisk(const std::filesystem::path& folder) {
  std::error_code error;
  const std::filesystem::path root = std::filesystem::absolute(folder, error).root_path();
  const UINT type = GetDriveTypeW(root.c_str());
  return !error && (type == DRIVE_FIXED || type == DRIVE_RAMDISK);
}

std::filesystem::path UserCacheFolder() {
  const wchar_t* const value = _wgetenv(L"LOCALAPPDATA");
  const std::filesystem::path path(value == nullptr ? L"" : value);
  return path.is_absolute() ? path : std::filesystem::path();
}

std::string NameIdentity(const std::filesystem::path& name) {
  std::wstring folded = name.native();
  CharUpperBuffW(folded.data(), static_cast<DWORD>(folded.size()));
  return PathText(folded);
}

// The C library's texts differ from those elsewhere, and its text of EBUSY explains nothing.
std::string SystemReason(int error) {
  constexpr auto kReasons =
      std::to_array<std::pair<int, const char*>>({{EBUSY, "Open in another program"},
                                                  {ENAMETOOLONG, "File name too long"},
                                                  {ENOMEM, "Cannot allocate memory"},
                                                  {EIO, "Input/output error"}});
  const auto* own = std::find_if(kReasons.begin(), kReasons.end(),
                                 [error](const auto& pair) { return pair.first == error; });
  return own != kReasons.end() ? own->second : std::generic_category().message(error);
}

// A handle without buffering takes the file out of the system's memory.
static bool Forget(const std::filesystem::path& path) {
  const HANDLE handle = CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_NO_BUFFERING, nullptr);
  return handle != INVALID_HANDLE_VALUE && CloseHandle(handle) != 0;
}

int OpenToRead(const std::filesystem::path& path) {
  return Descriptor(CreateFileW(path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr),
                    _O_RDONLY);
}

bool WaitToRead(int /*handle*/) { return true; }

ReadCalls& ReaderCalls() {
  static ReadCalls calls{Info, InfoOf, LinkInfo, List, ReadSome, ReadSomeAt, Forget};
  return calls;
}

void CloseRead(int handle) { _close(handle); }

FileCalls& WriterCalls() {
  static FileCalls calls{OpenToWrite, Create,     Write,      Resize,   Sync,        _close,
                         Rename,      SyncFolder, MakeFolder, TakeLock, NeverGivesUp};
  return calls;
}

// Pipes here wait on their own.
bool WaitToWrite(int /*handle*/) { return true; }

bool Rewind(int handle) { return _lseeki64(handle, 0, SEEK_SET) == 0; }

// A new file has the rights that its folder gives.
bool TakeRights(int /*from*/, int /*to*/) { return true; }

int OpenToLock(const std::filesystem::path& path) {
  const int handle =
      Descriptor(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, kShareAll, nullptr,
                             OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr),
                 _O_RDWR);
  FileInfo info;
  if (handle >= 0 && (!ReadInfo(handle, &info) || info.kind != FileKind::kRegular)) {
    _close(handle);
    errno = EINVAL;
    return -1;
  }
  return handle;
}

bool MayReplaceOpenFiles() { return false; }

int KeepLock(int handle) { return _dup(handle); }

void ReportSizeLimits() {}  // there are none

}  // namespace orvane
