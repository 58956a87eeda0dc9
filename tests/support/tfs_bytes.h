// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_TFS_BYTES_H_
#define ORVANE_TESTS_SUPPORT_TFS_BYTES_H_

#include <string>

#include "support/tbl_bytes.h"

namespace orvane::testing {

/// A row of a schedule file, byte by byte.
inline std::string StepBytes(std::int32_t end, std::int16_t waveform, double hertz, double ampere) {
  return IntBytes(end) + Little(static_cast<std::uint16_t>(waveform), 2) + RealBytes(hertz) +
         RealBytes(ampere);
}

/// `count` good rows.
inline std::string ManySteps(int count) {
  std::string bytes;
  for (int i = 1; i <= count; ++i) {
    bytes += StepBytes(i, 4, 1, 5);
  }
  return bytes;
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_TFS_BYTES_H_
