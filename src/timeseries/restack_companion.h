// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RESTACK_COMPANION_H_
#define ORVANE_TIMESERIES_RESTACK_COMPANION_H_

#include <filesystem>
#include <set>
#include <string>

#include "base/result.h"

namespace orvane {

/// What the user should know of the parameter table beside a waveform that was stacked; mostly
/// empty.
std::string CompanionNote(const std::filesystem::path& waveform);

struct CompanionCopy {
  std::filesystem::path written;  ///< empty: nothing was
  std::string note;               ///< the stack has another table beside it
};
/// Puts a copy of a waveform's parameter table beside its stack, where it has one and none of that
/// name, in whatever case, is there yet: never over a file but one of `replaceable`. A table that
/// cannot be read, or is not a file, is noted: the stack opens without it. A failure has the file's
/// name.
Result<CompanionCopy> CopyCompanion(const std::filesystem::path& waveform,
                                    const std::filesystem::path& stack,
                                    const std::set<std::filesystem::path>& replaceable);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RESTACK_COMPANION_H_
