// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_SPECTRA_SOURCE_H_
#define ORVANE_SPECTRA_SPECTRA_SOURCE_H_

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "spectra/calibrated_channel.h"
#include "timeseries/leave_out.h"
#include "timeseries/ts_file.h"

namespace orvane {

/// A recording with everything that its calibration needs.
struct SpectraSource {
  TsFile file;
  LeaveOut leave_out;
  int band = 0;  ///< of a band file; 0: each record's rate decides
  RecordingHeader header;
  TsHeader first;  ///< header of the first record
  std::string box_path;
  std::shared_ptr<const CalData> box;
  std::vector<CalibratedChannel> channels;
  double base_frequency = 0;
  int most_harmonics = 0;
  std::set<int> reversed;  ///< channels from 1 that are to be reversed
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_SPECTRA_SOURCE_H_
