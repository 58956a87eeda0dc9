// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/recording_input.h"

#include "timeseries/ts_listing.h"

namespace orvane {

Result<> RecordingInput::Open(const std::filesystem::path& path, const TsFile::Options& options,
                              const LeaveOutChoice& choice) {
  if (const Result<> opened = OpenForListing(path, options, &file, &note); !opened) {
    return opened;
  }
  const auto size = file.Bytes().Size();
  auto left_out = LeaveOutOf(choice, path, file.Bytes(), file.HeaderSize());
  if (!size || !left_out) {
    return Failure(size ? left_out.Message() : size.Message());
  }
  end = *size;
  leave_out = *left_out;
  return {};
}

}  // namespace orvane
