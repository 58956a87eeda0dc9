// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXPORT_RECORDING_INPUT_H_
#define ORVANE_EXPORT_RECORDING_INPUT_H_

#include <cstdint>
#include <filesystem>
#include <string>

#include "timeseries/leave_out.h"
#include "timeseries/ts_file.h"

namespace orvane {

/// A recording as it was when its conversion began, and which of its records do not go along.
struct RecordingInput {
  TsFile file;
  LeaveOut leave_out;
  std::uint64_t end = 0;  ///< bytes of the file; what comes later is not read
  std::string note;       ///< what a user should know; mostly empty

  /// Fails with a reason that does not name the file.
  Result<> Open(const std::filesystem::path& path, const TsFile::Options& options,
                const LeaveOutChoice& choice);
  TsWalker Walk() const { return {&file.Bytes(), file.HeaderSize(), end}; }
};

}  // namespace orvane

#endif  // ORVANE_EXPORT_RECORDING_INPUT_H_
