// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXPORT_HARMONICS_NETCDF_H_
#define ORVANE_EXPORT_HARMONICS_NETCDF_H_

#include <memory>

#include "spectra/spectra_writer.h"

namespace orvane {

/// Calibrated spectra as a NetCDF-4 file: docs/formats/netcdf.md. All of a recording's are kept
/// until the file is written: 16 bytes for each harmonic and channel of a record.
std::shared_ptr<SpectraWriter> HarmonicsNetcdf();

}  // namespace orvane

#endif  // ORVANE_EXPORT_HARMONICS_NETCDF_H_
