// SPDX-License-Identifier: GPL-3.0-or-later
// In place of waveform_netcdf.cpp where netCDF-C is not installed.
#include "export/waveform_netcdf.h"

namespace orvane {

std::string_view WhyNoNetcdf() { return "this build is without netCDF-C"; }

Conversion WaveformNetcdf(NetcdfOptions /*options*/) { return {}; }

}  // namespace orvane
