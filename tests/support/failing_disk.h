// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_FAILING_DISK_H_
#define ORVANE_TESTS_SUPPORT_FAILING_DISK_H_

#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "files/file_system.h"

namespace orvane::testing {

/// As long as it lives, reads and calls of the safe writer fail as they are told to. The others
/// reach the system, except that nothing waits for the disk.
class FailingDisk {
 public:
  /// First those of the writer, then those of whoever looks at files or reads them.
  enum Call {
    kOpen,
    kCreate,
    kWrite,
    kResize,
    kSync,
    kClose,
    kRename,
    kSyncFolder,
    kLock,
    kLook,
    kList,
    kRead,
    kMakeFolder,
    kCalls
  };

  FailingDisk() : FailingDisk(WriterCalls()) {}
  FailingDisk(const FailingDisk&) = delete;
  FailingDisk& operator=(const FailingDisk&) = delete;
  ~FailingDisk() {
    WriterCalls() = system_;
    ReaderCalls() = reads_;
  }

  /// The calls number `first` to `last` (from 1) fail with `error`. A write that fails has written
  /// half of its bytes; a close that fails has closed.
  void Fail(Call call, int error, int first = 1, int last = 1 << 30) {
    rules_[call] = {error, first, last};
  }
  /// Writes take half of what they are given, until a single byte is left.
  void WriteShort() { writes_short_ = true; }

  static int Count(Call call) { return counts_[call]; }
  /// The writer's calls of one thread in their order, but for locks: a letter of "ocwrsxmf" for
  /// each.
  static const std::string& Order() { return order_; }

 private:
  struct Rule {
    int error;  // 0: none
    int first;
    int last;
  };
  using Path = std::filesystem::path;

  explicit FailingDisk(const FileCalls& system) {
    system_ = system;
    reads_ = ReaderCalls();
    order_.clear();
    rules_ = {};
    for (auto& count : counts_) {
      count = 0;
    }
    writes_short_ = false;
    WriterCalls() = {
        [](const Path& path) { return Fails(kOpen) ? -1 : system_.open(path); },
        [](const Path& path) { return Fails(kCreate) ? -1 : system_.create(path); },
        Write,
        [](int handle, std::uint64_t size) {
          return Fails(kResize) ? -1 : system_.resize(handle, size);
        },
        [](int) { return Fails(kSync) ? -1 : 0; },
        [](int handle) {
          const int result = system_.close(handle);
          return Fails(kClose) ? -1 : result;
        },
        [](const Path& from, const Path& to) {
          return Fails(kRename) ? -1 : system_.rename(from, to);
        },
        [](const Path&) { return Fails(kSyncFolder) ? -1 : 0; },
        [](const Path& folder) { return Fails(kMakeFolder) ? -1 : system_.make_folder(folder); },
        [](int handle) { return Fails(kLock) ? Lock::kUnknown : system_.lock(handle); },
        system_.gives_up};
    ReaderCalls() = {
        [](const Path& path, FileInfo* info) { return !Fails(kLook) && reads_.info(path, info); },
        [](int handle, FileInfo* info) { return !Fails(kLook) && reads_.info_of(handle, info); },
        [](const Path& path, FileInfo* info) {
          return !Fails(kLook) && reads_.link_info(path, info);
        },
        [](const Path& folder, std::vector<Path>* names) {
          return !Fails(kList) && reads_.list(folder, names);
        },
        [](int handle, std::span<std::byte> bytes) {
          return Fails(kRead) ? -1 : reads_.some(handle, bytes);
        },
        [](int handle, std::uint64_t offset, std::span<std::byte> bytes) {
          return Fails(kRead) ? -1 : reads_.some_at(handle, offset, bytes);
        },
        reads_.forget};
  }

  static std::ptrdiff_t Write(int handle, const void* bytes, std::size_t size) {
    if (!Fails(kWrite)) {
      return system_.write(handle, bytes, writes_short_ ? (size + 1) / 2 : size);
    }
    const int error = errno;
    static_cast<void>(system_.write(handle, bytes, size / 2));
    errno = error;
    return -1;
  }

  static bool Fails(Call call) {
    const int number = ++counts_[call];
    if (call < kLock) {
      order_ += "ocwrsxmf"[call];
    }
    const Rule& rule = rules_[call];
    if (rule.error == 0 || number < rule.first || number > rule.last) {
      return false;
    }
    errno = rule.error;
    return true;
  }

  // A batch writes from a thread of its own, and some readers read from several.
  static inline FileCalls system_{};
  static inline ReadCalls reads_{};
  static inline std::array<Rule, kCalls> rules_{};
  static inline std::array<std::atomic<int>, kCalls> counts_{};
  static inline std::string order_;
  static inline bool writes_short_ = false;
};

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_FAILING_DISK_H_
