// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/netcdf_library.h"

#include <dlfcn.h>

#include <cstdlib>
#include <string>

namespace orvane {
namespace {

struct Loaded {
  NetcdfLibrary calls = {};
  Result<> outcome;
};

template <typename Call>
bool Find(void* library, const char* name, Call* call) {
  *call = reinterpret_cast<Call>(dlsym(library, name));
  return *call != nullptr;
}

// Before the library that netCDF-C writes with is first used. The safe writer has locked the file
// already, and that library's own lock would find it taken; and a file that could not be written,
// for want of space, would end the program with a fault when that library cleans up at its end.
bool PrepareHdf5(void* library) {
  int (*dont_atexit)() = nullptr;
  return Find(library, "H5dont_atexit", &dont_atexit) &&
         setenv("HDF5_USE_FILE_LOCKING", "FALSE", 1) == 0 && dont_atexit() >= 0;
}

Result<> LoadCalls(NetcdfLibrary* calls) {
  void* library = dlopen(ORVANE_NETCDF_SONAME, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    const char* why = dlerror();
    return Failure(std::string("netCDF-C cannot be loaded: ")
                       .append(why == nullptr ? ORVANE_NETCDF_SONAME : why));
  }
  const bool is_whole =
      Find(library, "nc_create", &calls->create) && Find(library, "nc_sync", &calls->sync) &&
      Find(library, "nc_close", &calls->close) && Find(library, "nc_def_grp", &calls->def_grp) &&
      Find(library, "nc_def_dim", &calls->def_dim) &&
      Find(library, "nc_def_var", &calls->def_var) &&
      Find(library, "nc_def_var_fill", &calls->def_var_fill) &&
      Find(library, "nc_def_var_chunking", &calls->def_var_chunking) &&
      Find(library, "nc_def_var_deflate", &calls->def_var_deflate) &&
      Find(library, "nc_set_var_chunk_cache", &calls->set_var_chunk_cache) &&
      Find(library, "nc_put_att_text", &calls->put_att_text) &&
      Find(library, "nc_put_att_double", &calls->put_att_double) &&
      Find(library, "nc_put_att_int", &calls->put_att_int) &&
      Find(library, "nc_put_att_schar", &calls->put_att_schar) &&
      Find(library, "nc_enddef", &calls->enddef) &&
      Find(library, "nc_put_vara", &calls->put_vara) &&
      Find(library, "nc_strerror", &calls->strerror) && PrepareHdf5(library);
  return is_whole ? Result<>()
                  : Failure("netCDF-C cannot be used: " ORVANE_NETCDF_SONAME " lacks a call");
}

}  // namespace

Result<const NetcdfLibrary*> LoadNetcdf() {
  static const Loaded loaded = [] {
    Loaded made;
    made.outcome = LoadCalls(&made.calls);
    return made;
  }();
  if (!loaded.outcome) {
    return Failure(loaded.outcome.Message());
  }
  return &loaded.calls;
}

}  // namespace orvane
