// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXPORT_WAVEFORM_NETCDF_H_
#define ORVANE_EXPORT_WAVEFORM_NETCDF_H_

#include <string>
#include <string_view>

#include "base/result.h"
#include "files/batch.h"
#include "timeseries/leave_out.h"
#include "timeseries/ts_file.h"

namespace orvane {

/// Why this build cannot write NetCDF; empty where it can.
std::string_view WhyNoNetcdf();

/// Fails with a reason also where the library is not installed or cannot be used. It is loaded for
/// that, which takes a moment the first time.
Result<> CanWriteNetcdf();

struct NetcdfOptions {
  TsFile::Options reading = {};
  LeaveOutChoice leave_out = {};
  int deflate = 0;            ///< 0: not compressed; 1 the fastest to 9 the smallest
  bool with_secrets = false;  ///< of the companion table also passwords and the like
};

/// Recordings as NetCDF-4 files, NAME.nc: docs/formats/netcdf.md. The same input gives the same
/// bytes. A file is read twice, first its headers; memory does not grow with it.
Conversion WaveformNetcdf(NetcdfOptions options);

}  // namespace orvane

#endif  // ORVANE_EXPORT_WAVEFORM_NETCDF_H_
