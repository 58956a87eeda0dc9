// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FILES_BESIDE_FILE_H_
#define ORVANE_FILES_BESIDE_FILE_H_

#include <filesystem>

namespace orvane {

/// The file that a save fills beside its target before it takes the target's place. In a folder of
/// the user's own its name is always the same for one target, so that the next save finds what a
/// killed program left, and removes it. A lock, which ends with its program, marks a file that
/// another program is filling just now, and no leftover: that one is left alone, and the next of
/// `kNames` names is taken. Where a file system has no locks, what nobody has written to for an
/// hour is a leftover. In a folder that others may write to the name is random, so that nobody can
/// be there first; leftovers go the first time that a program saves there.
class BesideFile {
 public:
  static constexpr int kNames = 8;

  BesideFile() = default;
  BesideFile(const BesideFile&) = delete;
  BesideFile& operator=(const BesideFile&) = delete;
  ~BesideFile() { Remove(); }

  /// In a folder of the user's own.
  static std::filesystem::path NameFor(const std::filesystem::path& target, int number);

  /// Each false, with errno set, on failure.
  [[nodiscard]] bool Create(const std::filesystem::path& target);
  /// The same for one program at a time: EBUSY while another has the target so. The target itself
  /// is locked, where open files can be replaced, and in a folder of the user's own the first of
  /// the names is its lock.
  [[nodiscard]] bool CreateAlone(const std::filesystem::path& target);
  /// Gives back the target's own lock, for those who are going to write it in place.
  void FreeTarget();
  [[nodiscard]] bool Close();  ///< it stays ours
  /// ECANCELED where another program has taken the file away.
  [[nodiscard]] bool MoveTo(const std::filesystem::path& target);
  /// Does nothing where there is none.
  void Remove();

  int Handle() const { return handle_; }
  const std::filesystem::path& Path() const { return path_; }

 private:
  bool Make(const std::filesystem::path& path);
  bool CreateRandom(const std::filesystem::path& target);
  bool CreateFirst(const std::filesystem::path& target);
  bool LockTarget(const std::filesystem::path& target);
  void Release();

  std::filesystem::path path_;  // empty: there is none
  int handle_ = -1;
  int lock_ = -1;
  int target_lock_ = -1;
};

}  // namespace orvane

#endif  // ORVANE_FILES_BESIDE_FILE_H_
