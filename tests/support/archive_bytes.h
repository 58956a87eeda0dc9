// SPDX-License-Identifier: GPL-3.0-or-later
// An archived calibration put together byte by byte, apart from the code under test.
#ifndef ORVANE_TESTS_SUPPORT_ARCHIVE_BYTES_H_
#define ORVANE_TESTS_SUPPORT_ARCHIVE_BYTES_H_

#include <string>
#include <string_view>

#include "support/tbl_bytes.h"

namespace orvane::testing {

inline std::string ArchivedText(std::string_view text) {
  return IntBytes(static_cast<std::int32_t>(text.size())).append(text);
}

inline std::string ArchiveBytes() {
  std::string bytes = ArchivedText("CalData") + IntBytes(1);
  for (const int number : {1, 2, 3, 4, 5}) {
    bytes += IntBytes(number);
  }
  bytes += ArchivedText("ZLA5") + ArchivedText("5.\xE9");
  for (const int number : {6, 7, 8, 9, 10}) {
    bytes += IntBytes(number);
  }
  bytes += ArchivedText("T") + RealBytes(0.5) + RealBytes(0.25) + RealBytes(-1) + IntBytes(11);
  bytes += IntBytes(1) + RealBytes(1.5);
  bytes += IntBytes(1) + IntBytes(12) + RealBytes(64);
  for (const int setting : {1, 2, 3, 4}) {
    bytes += IntBytes(setting);
  }
  bytes += IntBytes(1) + IntBytes(-3) + RealBytes(double{0.1F});
  for (const int value : {3, 4, 1, 2, 5, 6}) {
    bytes += RealBytes(value);
  }
  return bytes + IntBytes(1) + IntBytes(7) + IntBytes(1) + RealBytes(0) + RealBytes(2) +
         RealBytes(-2);
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_ARCHIVE_BYTES_H_
