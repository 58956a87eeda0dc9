// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_FAILING_DISK_H_
#define ORVANE_TESTS_SUPPORT_FAILING_DISK_H_

#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <span>
#include <string>

#include "core/file_system.h"

namespace orvane::testing {

/// As long as it lives, reads and calls of the safe writer fail as they are told to. The others
/// reach the system, except that nothing waits for the disk.
class FailingDisk {
 public:
  enum Call { kOpen, kCreate, kWrite, kResize, kSync, kClose, kRename, kSyncFolder, kCalls };
  static constexpr Call kRead = kCalls;  ///< of whatever reader

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
  /// The writer's calls of one thread in their order, a letter of "ocwrsxmf" for each `Call`.
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
    WriterCalls() = {[](const Path& path) { return Fails(kOpen) ? -1 : system_.open(path); },
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
                     [](const Path&) { return Fails(kSyncFolder) ? -1 : 0; }};
    ReaderCalls() = {[](int handle, std::span<std::byte> bytes) {
                       return Fails(kRead) ? -1 : reads_.some(handle, bytes);
                     },
                     [](int handle, std::uint64_t offset, std::span<std::byte> bytes) {
                       return Fails(kRead) ? -1 : reads_.some_at(handle, offset, bytes);
                     }};
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
    if (call != kRead) {
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
  static inline std::array<Rule, kCalls + 1> rules_{};
  static inline std::array<std::atomic<int>, kCalls + 1> counts_{};
  static inline std::string order_;
  static inline bool writes_short_ = false;
};

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_FAILING_DISK_H_
