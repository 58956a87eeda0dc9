// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_PEAK_MEMORY_H_
#define ORVANE_TESTS_SUPPORT_PEAK_MEMORY_H_

#include <cstddef>

namespace orvane::testing {

/// The most memory that `new` has given out at a time since this was made, beyond what was given
/// out then. Counts in programs that are linked with peak_memory.cpp, in all threads.
class PeakMemory {
 public:
  PeakMemory();
  std::size_t Bytes() const;

 private:
  std::size_t before_;
};

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_PEAK_MEMORY_H_
