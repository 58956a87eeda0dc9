// SPDX-License-Identifier: GPL-3.0-or-later
// netCDF-C, loaded when the first file is written: it brings forty libraries, which every other
// start of the program would wait for.
#ifndef ORVANE_EXPORT_NETCDF_LIBRARY_H_
#define ORVANE_EXPORT_NETCDF_LIBRARY_H_

#include <netcdf.h>

#include "base/result.h"

namespace orvane {

/// The calls of netCDF-C that are used, named as there without "nc_".
struct NetcdfLibrary {
  decltype(&nc_create) create;
  decltype(&nc_sync) sync;
  decltype(&nc_close) close;
  decltype(&nc_def_grp) def_grp;
  decltype(&nc_def_dim) def_dim;
  decltype(&nc_def_var) def_var;
  decltype(&nc_def_var_fill) def_var_fill;
  decltype(&nc_def_var_chunking) def_var_chunking;
  decltype(&nc_def_var_deflate) def_var_deflate;
  decltype(&nc_set_var_chunk_cache) set_var_chunk_cache;
  decltype(&nc_put_att_text) put_att_text;
  decltype(&nc_put_att_double) put_att_double;
  decltype(&nc_put_att_int) put_att_int;
  decltype(&nc_put_att_schar) put_att_schar;
  decltype(&nc_enddef) enddef;
  decltype(&nc_put_vara) put_vara;
  decltype(&nc_strerror) strerror;
};

/// The library, loaded once and kept. Fails where it is not installed or lacks a call.
Result<const NetcdfLibrary*> LoadNetcdf();

}  // namespace orvane

#endif  // ORVANE_EXPORT_NETCDF_LIBRARY_H_
