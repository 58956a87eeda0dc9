// SPDX-License-Identifier: GPL-3.0-or-later
// Files that say which records of a time series file results leave out; docs/formats/leave-out.md
// describes them.
#ifndef ORVANE_TIMESERIES_LEAVE_OUT_FILE_H_
#define ORVANE_TIMESERIES_LEAVE_OUT_FILE_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "timeseries/record_numbers.h"

namespace orvane {

/// What such a file says.
struct LeaveOutList {
  std::uint64_t size = 0;     ///< bytes of the data file that it was made for
  std::uint64_t records = 0;  ///< in that file
  RecordNumbers numbers;

  bool operator==(const LeaveOutList&) const = default;
};

/// The largest file that is read: half a million numbers.
inline constexpr std::size_t kMostLeaveOutBytes = std::size_t{4} << 20U;

/// NAME.TSS.leave-out.txt, beside the data file.
std::filesystem::path LeaveOutPath(const std::filesystem::path& data);

/// Any bytes may come in. A failure names the line.
Result<LeaveOutList> ReadLeaveOutText(std::string_view text);
/// As `ReadLeaveOutText` takes it.
std::string LeaveOutText(const LeaveOutList& list);

/// A failure names the file and, where that is the reason, the line.
Result<LeaveOutList> LoadLeaveOut(const std::filesystem::path& path);
/// Writes the file beside a data file, or removes it where no record is left out. What stood there
/// goes. A failure names the file; what stood there then stays.
Result<> SaveLeaveOut(const std::filesystem::path& data, const LeaveOutList& list);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_LEAVE_OUT_FILE_H_
