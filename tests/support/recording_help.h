// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_RECORDING_HELP_H_
#define ORVANE_TESTS_SUPPORT_RECORDING_HELP_H_

#include <string>
#include <vector>

#include "response/recording_header.h"
#include "support/tbl_bytes.h"
#include "support/temp_dir.h"

namespace orvane::testing {

/// A setting of a recording as a record of its companion table.
inline std::string Whole(const std::string& key, int number) {
  return RecordV2(key, kMaskAnyMode, IntPT, IntBytes(number));
}
inline std::string Real(const std::string& key, double number) {
  return RecordV2(key, kMaskAnyMode, FltPT, RealBytes(number));
}
inline std::string Text(const std::string& key, const std::string& text) {
  return RecordV2(key, kMaskAnyMode, StrPT, text);
}

inline RecordingHeader Recording(const std::string& settings, int channels) {
  const TempDir dir;
  WriteAll(dir / "a.TBL", HeaderV2() + settings);
  RecordingHeader header{{}, channels};
  TblReport report;
  EXPECT_EQ(header.settings.Load(dir / "a.TBL", &report), kOk);
  return header;
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_RECORDING_HELP_H_
