// SPDX-License-Identifier: GPL-3.0-or-later
// Reads box and sensor calibration files for computing with them.
#ifndef ORVANE_RESPONSE_CAL_FILE_H_
#define ORVANE_RESPONSE_CAL_FILE_H_

#include <filesystem>
#include <memory>
#include <string>

#include "calibration/cal_records.h"
#include "response/box_model.h"
#include "response/channel_flags.h"

namespace orvane {

/// A calibration to compute with. Whoever read it owns it; it does not change any more.
struct CalData : CalRecords {
  ChannelModelFlags channel_flags{};  ///< as `ModelFlagsOf()`
  BoxModel model;
};

/// The variants of the channels of a box that gets a model, which takes three passes; else zero.
ChannelModelFlags ModelFlagsOf(const CalRecords& cal);

/// Reads the calibration of a unit: the path without its extension, "DIRECTORY/SERIAL", which
/// becomes ".CLB" for a box and ".CLC" for a sensor; a file whose name differs in case only will
/// do. A box of three passes or more gets its front-end model. Null, with a status,
/// where the file is not wholly right; a cut last record is left out.
std::unique_ptr<CalData> ReadCalFile(int kind, const std::string& base_path,
                                     CalReport* report = nullptr);

/// The same for a file by its whole name. Who needs no model reads with `ReadCalRecordsAt()`: the
/// fit is most of the work.
std::unique_ptr<CalData> ReadCalFileAt(int kind, const std::filesystem::path& path,
                                       CalReport* report = nullptr);

/// The circuit of one channel of a calibration: fitted, or nominal where it has no model.
FrontEndParameters ParametersOf(const CalData& cal, std::size_t channel);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_CAL_FILE_H_
