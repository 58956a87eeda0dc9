// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of the operating system for files, without any policy: all that differs from system to
// system is here and in file_system_SYSTEM.cpp. Handles are the C library's descriptors. A call
// that fails returns -1 or false and sets errno: the safe writer decides by that number. Everything
// above returns a `Result`.
#ifndef ORVANE_FILES_FILE_SYSTEM_H_
#define ORVANE_FILES_FILE_SYSTEM_H_

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "base/result.h"

namespace orvane {

enum class FileKind { kRegular, kFolder, kPipe, kLink, kDevice };

struct FileInfo {
  FileKind kind = FileKind::kDevice;
  std::uint64_t size = 0;    ///< of a regular file
  std::uint64_t device = 0;  ///< with `number`: which file it is, whatever its name
  std::uint64_t number = 0;
  std::int64_t written = 0;  ///< when its bytes were last changed, in ns since 1970-01-01 UTC
  std::int64_t changed = 0;  ///< when bytes, name or rights were, likewise; 0: not known

  bool IsSameFileAs(const FileInfo& other) const {
    return device == other.device && number == other.number;
  }
};

/// How files are looked at and read, replaceable so that tests can let a disk fail.
struct ReadCalls {
  bool (*info)(const std::filesystem::path& path, FileInfo* info);
  bool (*info_of)(int handle, FileInfo* info);
  bool (*link_info)(const std::filesystem::path& path, FileInfo* info);
  /// The names in a folder, "." and ".." left out.
  bool (*list)(const std::filesystem::path& folder, std::vector<std::filesystem::path>* names);
  /// Some of the next bytes, 0 at the end.
  std::ptrdiff_t (*some)(int handle, std::span<std::byte> bytes);
  /// The same from a position, which no other call changes.
  std::ptrdiff_t (*some_at)(int handle, std::uint64_t offset, std::span<std::byte> bytes);
  /// Lets go of what memory keeps of a file, so that it is read from the disk the next time. False
  /// where it may still come from memory.
  bool (*forget)(const std::filesystem::path& path);
};
ReadCalls& ReaderCalls();

[[nodiscard]] inline bool ReadInfo(const std::filesystem::path& path, FileInfo* info) {
  return ReaderCalls().info(path, info);
}
/// Whether there is a folder, by itself or by a link.
[[nodiscard]] inline bool IsFolder(const std::filesystem::path& path) {
  FileInfo info;
  return ReadInfo(path, &info) && info.kind == FileKind::kFolder;
}
[[nodiscard]] inline bool ReadInfo(int handle, FileInfo* info) {
  return ReaderCalls().info_of(handle, info);
}
/// Of a symbolic link itself, where `path` names one.
[[nodiscard]] inline bool ReadLinkInfo(const std::filesystem::path& path, FileInfo* info) {
  return ReaderCalls().link_info(path, info);
}

/// What the system says of an `errno` number, in English whatever the user's locale.
std::string SystemReason(int error);

/// Whether the `errno` of a look at a file says that there is none.
inline bool MeansNotThere(int error) { return error == ENOENT || error == ENOTDIR; }

/// Whether a file is there. A look that fails is never taken for "no": a writer would destroy what
/// it does not see.
enum class Existence { kThere, kNotThere };
inline Result<Existence> ExistenceFrom(bool is_seen) {
  if (!is_seen && !MeansNotThere(errno)) {
    return Failure(SystemReason(errno));
  }
  return is_seen ? Existence::kThere : Existence::kNotThere;
}
/// Of what `path` leads to: a link that leads nowhere is not there.
inline Result<Existence> Exists(const std::filesystem::path& path) {
  FileInfo info;
  return ExistenceFrom(ReadInfo(path, &info));
}
/// Of the name itself, also where it is a link that leads nowhere.
inline Result<Existence> IsTaken(const std::filesystem::path& path) {
  FileInfo info;
  return ExistenceFrom(ReadLinkInfo(path, &info));
}

/// Whether nobody but the user, or the system's administrator, can make files in a folder. Where
/// the system does not say, others can.
[[nodiscard]] bool IsOwnFolder(const std::filesystem::path& folder);

/// Whether the user may make files in a folder, as far as the system says without a trial: false
/// also where it does not exist.
[[nodiscard]] bool MayMakeFilesIn(const std::filesystem::path& folder);

/// Whether a folder is on a disk of this machine, not on one that others reach by a network. Where
/// the system does not say, it is not.
[[nodiscard]] bool IsOnLocalDisk(const std::filesystem::path& folder);

/// Where programs keep what they can make again, for this user; empty where the system has no such
/// place. It need not exist.
std::filesystem::path UserCacheFolder();

/// A text that is equal for names that this system takes for the same: in any case on Windows.
std::string NameIdentity(const std::filesystem::path& name);

/// Opens a file of any kind. A pipe without a writer holds nobody up; it reads as empty.
int OpenToRead(const std::filesystem::path& path);
/// Waits until a pipe, opened so, has more to read. False, with errno set, where the waiting is
/// given up.
[[nodiscard]] bool WaitToRead(int handle);
/// Closes what was only read.
void CloseRead(int handle);

/// Who has a file: locks end with the last handle to what was opened, also when the program dies.
enum class Lock { kTaken, kBusy, kUnknown };  ///< ours now, somebody else's, no locks to be had

/// The calls of the safe writer, replaceable so that tests can let a disk fail.
struct FileCalls {
  /// A file that exists, for writing. Of a pipe that nobody reads yet it waits for the reader.
  int (*open)(const std::filesystem::path& path);
  int (*create)(const std::filesystem::path& path);  ///< a new one; fails if the name is taken
  std::ptrdiff_t (*write)(int handle, const void* bytes, std::size_t size);
  int (*resize)(int handle, std::uint64_t size);
  int (*sync)(int handle);
  int (*close)(int handle);
  int (*rename)(const std::filesystem::path& from, const std::filesystem::path& to);
  int (*sync_folder)(
      const std::filesystem::path& folder);  ///< what cannot be synced counts as done
  int (*make_folder)(const std::filesystem::path& folder);  ///< fails if the name is taken
  Lock (*lock)(int handle);
  /// Asked while a pipe or another writer is waited for: true ends the waiting with EINTR.
  bool (*gives_up)();
};
FileCalls& WriterCalls();

/// Waits until a file being written, a pipe, takes more. False, with errno set, where it never will
/// or the waiting is given up.
[[nodiscard]] bool WaitToWrite(int handle);
/// Goes back to the first byte of a file being written.
[[nodiscard]] bool Rewind(int handle);
/// Gives a new file the mode bits and the access list of another and, where the system allows it,
/// its owner. False where mode bits or list cannot be set.
[[nodiscard]] bool TakeRights(int from, int to);

inline Lock TryLock(int handle) { return WriterCalls().lock(handle); }
/// Whether a file can be replaced while this program holds it open, as a lock of its own needs.
bool MayReplaceOpenFiles();
/// An existing regular file, never through a symbolic link, to be asked for its lock.
int OpenToLock(const std::filesystem::path& path);
/// A second handle that keeps the lock when the first is closed.
int KeepLock(int handle);

/// Lets writing beyond the size that the user may give a file fail with a reason, where the system
/// would end the program. For the beginning of main().
void ReportSizeLimits();

}  // namespace orvane

#endif  // ORVANE_FILES_FILE_SYSTEM_H_
