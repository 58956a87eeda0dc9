// SPDX-License-Identifier: GPL-3.0-or-later
// Files, read in pieces and written safely. The message of a failure is what the system said; the
// caller adds the path. The system's calls are in file_system.h.
#ifndef ORVANE_FILES_FILE_IO_H_
#define ORVANE_FILES_FILE_IO_H_

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "files/beside_file.h"
#include "files/file_memory.h"
#include "files/file_system.h"

namespace orvane {

/// "PATH: reason", as every message about a file reads.
std::string FileMessage(const std::filesystem::path& path, std::string_view reason);

/// Why something threw, in the words of the system. Takes no memory.
inline const char* ReasonOf(const std::exception& error) {
  const bool is_memory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
  return is_memory ? "Cannot allocate memory" : error.what();
}

/// Which paths lead to one file, through whatever links. Each file is looked at once, so that one
/// which another program replaces meanwhile stays what it was.
class FileIdentities {
 public:
  /// Equal for two paths of one file. A file that does not exist is known by its folder and name.
  Result<std::string> Of(const std::filesystem::path& path);

 private:
  std::unordered_map<std::string, std::string> known_;  // by folder and name
};

enum class Sameness { kSame, kDifferent };
/// Who would write over a file refuses where this fails.
Result<Sameness> CompareFiles(const std::filesystem::path& a, const std::filesystem::path& b);

/// A file that is read from front to back.
class InFile {
 public:
  InFile() = default;
  InFile(const InFile&) = delete;
  InFile& operator=(const InFile&) = delete;
  ~InFile();

  /// Folders and devices are refused: a device may never end.
  Result<> Open(const std::filesystem::path& path);

  /// Fills `bytes` as far as the file goes and returns how many there were. Less than asked for:
  /// the end, or a read error, which `Outcome()` then has.
  std::size_t Read(std::span<std::byte> bytes);

  /// The next `count` bytes, at most kMostPeeked, without taking them; fewer at the end. Valid
  /// until the next call.
  std::span<const std::byte> Peek(std::size_t count);
  /// Takes bytes that `Peek()` has shown.
  void Skip(std::size_t count) { unread_ = unread_.subspan(count); }
  static constexpr std::size_t kMostPeeked = 64;

  /// Of all reading so far.
  const Result<>& Outcome() const { return outcome_; }
  /// What was known of the file when it was opened.
  const FileInfo& Info() const { return info_; }

 private:
  bool Refill();
  std::size_t ReadPiece(std::span<std::byte> bytes);

  int handle_ = -1;
  FileInfo info_;
  std::unique_ptr<std::byte[]> buffer_;  // NOLINT(modernize-avoid-c-arrays): not to be zeroed
  std::size_t piece_ = 0;                // size of the buffer
  std::span<const std::byte> unread_;
  bool is_at_end_ = false;
  Result<> outcome_;
};

/// A file being written. The bytes go to a new file beside the target, which takes the target's
/// place only in `Commit()`, after a flush to the disk: until then, and after any failure, the file
/// has all its old bytes, or, where only the folder failed, all its new ones. Mode bits, access
/// list and owner of an existing file are kept and symbolic links followed. Where the folder takes
/// no second file, or the target may not be replaced, it is rewritten in place, its old bytes put
/// back if that fails. A device or pipe is opened and written, never replaced.
class OutFile {
 public:
  OutFile() = default;
  OutFile(const OutFile&) = delete;
  OutFile& operator=(const OutFile&) = delete;
  ~OutFile() { Abandon(); }  ///< without `Commit()` nothing happened

  /// After a failure the later calls fail alike.
  Result<> Open(const std::filesystem::path& path);
  /// As `Open()`, and keeps away others who save the same file so: waits for them at most
  /// `kMostWait`, and lets them wait until this one is done. In a folder that others may write to,
  /// and where there are no locks, nobody is kept away.
  Result<> OpenAlone(const std::filesystem::path& path);
  /// As `OpenAlone()`, for a file that is read after it, changed and written back: `Commit()`
  /// fails, with `WasOvertaken()`, where the file is no longer what it was here.
  Result<> OpenToUpdate(const std::filesystem::path& path);
  /// The same for what somebody remembers of the file, where anything is.
  void Expect(const RememberedFile& memory);
  Result<> Write(std::span<const std::byte> bytes);
  /// For a library that writes files by itself: in place of `Write()` it may fill the file of this
  /// name, and must have closed it before `Commit()`. Fails where the target cannot be replaced by
  /// a new file.
  Result<std::filesystem::path> PathToFill();
  Result<> Commit();
  static constexpr std::chrono::seconds kMostWait{10};

  /// After a failure: another program has changed what was expected.
  bool WasOvertaken() const { return was_overtaken_; }

  /// Whether the target may hold other bytes than before: after a failure that it was in the way
  /// of.
  bool HasTouchedTarget() const { return has_touched_; }

 private:
  enum class Way { kNone, kBeside, kInPlace, kDirect };

  Result<> Start(const std::filesystem::path& path, bool is_alone);
  Result<> OpenBeside(bool is_alone);
  template <typename Take>
  bool WaitForTurn(Take take);
  bool CreateAlone();
  Result<> ComparedWithExpected();
  Result<> CommitBeside();
  Result<> CommitByCopying(int error);
  Result<> CommitInPlace();
  Result<> CommitDirectly();
  bool Rewrite(std::span<const std::byte> bytes, std::size_t size, std::size_t* written);
  Result<> Done();
  Result<> Fail(int error);
  Result<> Fail(std::string reason);
  bool CloseTarget();
  void Abandon();

  Way way_ = Way::kNone;
  int handle_ = -1;  // of the target itself, in place and directly
  std::filesystem::path target_;
  BesideFile beside_;
  std::vector<std::byte> pending_;  // in place: everything until Commit()
  Result<> outcome_;
  bool has_touched_ = false;
  std::optional<RememberedFile> expected_;
  bool was_overtaken_ = false;
};

/// Writes a whole file through `OutFile`. `has_touched`, which may be null, becomes true where the
/// file may hold other bytes than before, also after a failure.
Result<> WriteFile(const std::filesystem::path& path, std::span<const std::byte> bytes,
                   bool* has_touched = nullptr);

/// Copies a file's bytes, in pieces, to another through `OutFile`.
Result<> CopyBytes(const std::filesystem::path& from, const std::filesystem::path& to);

/// Makes a folder and those above it, each on the disk before the next. A failure names the folder
/// too.
Result<> MakeFolders(const std::filesystem::path& folder);

/// Whether two files can be read and hold the same.
bool HaveSameBytes(const std::filesystem::path& a, const std::filesystem::path& b);

/// Copies a file, with its mode bits, to a name beside it that no file has yet: FILE.bak, FILE.bak1
/// ... Returns the path of the copy, whose name a failure has too.
Result<std::filesystem::path> KeepBackup(const std::filesystem::path& path);

}  // namespace orvane

#endif  // ORVANE_FILES_FILE_IO_H_
