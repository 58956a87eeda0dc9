// SPDX-License-Identifier: GPL-3.0-or-later
// In place of waveform_netcdf.cpp and harmonics_netcdf.cpp where netCDF-C is not installed.
#include "export/harmonics_netcdf.h"
#include "export/waveform_netcdf.h"

namespace orvane {

std::string_view WhyNoNetcdf() { return "this build is without netCDF-C"; }

Result<> CanWriteNetcdf() { return Failure(std::string(WhyNoNetcdf())); }

Conversion WaveformNetcdf(NetcdfOptions /*options*/) { return {}; }

std::shared_ptr<SpectraWriter> HarmonicsNetcdf() { return nullptr; }

}  // namespace orvane
