// SPDX-License-Identifier: GPL-3.0-or-later
// Schedule files as text.
#ifndef ORVANE_STEPPING_TFS_LISTING_H_
#define ORVANE_STEPPING_TFS_LISTING_H_

#include <filesystem>
#include <string>

#include "stepping/tfs_file.h"

namespace orvane {

/// One line for each row: number, end time, waveform, frequency, current. The reason stands behind
/// the first bad row.
std::string ListingOf(const ScheduleRows& rows);

/// Where the listing of a file goes: beside it, ".txt" in place of its extension.
std::filesystem::path ListingPathFor(const std::filesystem::path& path);

struct ListingResult {
  int rows = 0;
  std::string note;   ///< "PATH: reason" where a reader would refuse the file listed
  std::string error;  ///< "PATH: reason" where there is no listing
};
/// Lists a file; a refused one too.
ListingResult ListSchedule(const std::filesystem::path& path, const std::filesystem::path& to);

}  // namespace orvane

#endif  // ORVANE_STEPPING_TFS_LISTING_H_
