// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/netcdf_file.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <mutex>
#include <numeric>

#include "files/file_system.h"

namespace orvane {
namespace {

std::mutex& LibraryMutex() {
  static std::mutex mutex;
  return mutex;
}

constexpr float kPreemption = 0.75F;  // the library's own default

// Of a call that failed, with what the system said last. A positive status is of the system, but
// guessed: whatever keeps a file from being created is "Permission denied".
std::string ReasonOf(const NetcdfLibrary& nc, int status, int system) {
  if (system == 0) {
    return nc.strerror(status);
  }
  const std::string reason = SystemReason(system);
  return status > 0 ? reason : std::string(nc.strerror(status)).append(": ").append(reason);
}

}  // namespace

template <typename Call>
void NcFile::Do(Call call) {
  if (!outcome_) {
    return;
  }
  const std::lock_guard lock(LibraryMutex());
  errno = 0;
  if (const int status = call(*nc_); status != NC_NOERR) {
    outcome_ = Failure(ReasonOf(*nc_, status, errno));
  }
}

NcFile::~NcFile() {
  if (is_open_) {
    const std::lock_guard lock(LibraryMutex());
    nc_->close(root_);
  }
}

void NcFile::Create(const std::filesystem::path& path) {
  const auto library = LoadNetcdf();
  if (!library) {
    outcome_ = Failure(library.Message());
    return;
  }
  nc_ = *library;
  Do([&](const NetcdfLibrary& nc) {
    const int status = nc.create(path.c_str(), NC_NETCDF4 | NC_CLOBBER, &root_);
    is_open_ = status == NC_NOERR;
    return status;
  });
}

int NcFile::AddGroup(const std::string& name) {
  int id = -1;
  Do([&](const NetcdfLibrary& nc) { return nc.def_grp(root_, name.c_str(), &id); });
  return id;
}

int NcFile::AddDim(int group, const char* name, std::size_t size) {
  int id = -1;
  Do([&](const NetcdfLibrary& nc) { return nc.def_dim(group, name, size, &id); });
  return id;
}

int NcFile::AddVar(int group, const std::string& name, nc_type type, const std::vector<int>& dims) {
  int id = -1;
  Do([&](const NetcdfLibrary& nc) {
    return nc.def_var(group, name.c_str(), type, static_cast<int>(dims.size()), dims.data(), &id);
  });
  if (type != NC_STRING) {  // else the whole file would be written twice
    Do([&](const NetcdfLibrary& nc) { return nc.def_var_fill(group, id, NC_NOFILL, nullptr); });
  }
  return id;
}

void NcFile::Deflate(int group, int var, const std::vector<std::size_t>& chunk, int level) {
  const std::size_t bytes = std::accumulate(chunk.begin(), chunk.end(), sizeof(int),
                                            [](std::size_t a, std::size_t b) { return a * b; });
  Do([&](const NetcdfLibrary& nc) {
    return nc.def_var_chunking(group, var, NC_CHUNKED, chunk.data());
  });
  Do([&](const NetcdfLibrary& nc) { return nc.def_var_deflate(group, var, 1, 1, level); });
  Do([&](const NetcdfLibrary& nc) {
    return nc.set_var_chunk_cache(group, var, bytes, 3, kPreemption);
  });
}

void NcFile::AddText(int group, int var, const char* name, std::string_view text) {
  Do([&](const NetcdfLibrary& nc) {
    return nc.put_att_text(group, var, name, text.size(), text.data());
  });
}

void NcFile::AddReal(int group, int var, const char* name, double value) {
  Do([&](const NetcdfLibrary& nc) {
    return nc.put_att_double(group, var, name, NC_DOUBLE, 1, &value);
  });
}

void NcFile::AddInt(int group, int var, const char* name, int value) {
  Do([&](const NetcdfLibrary& nc) { return nc.put_att_int(group, var, name, NC_INT, 1, &value); });
}

void NcFile::AddByte(int group, int var, const char* name, signed char value) {
  Do([&](const NetcdfLibrary& nc) {
    return nc.put_att_schar(group, var, name, NC_BYTE, 1, &value);
  });
}

void NcFile::EndDefinitions() {
  Do([&](const NetcdfLibrary& nc) { return nc.enddef(root_); });
}

void NcFile::Put(int group, int var, const std::vector<std::size_t>& start,
                 const std::vector<std::size_t>& count, const void* values) {
  Do([&](const NetcdfLibrary& nc) {
    return nc.put_vara(group, var, start.data(), count.data(), values);
  });
}

void NcFile::PutTexts(int group, int var, const std::vector<std::string>& texts) {
  std::vector<const char*> pointers;
  std::transform(texts.begin(), texts.end(), std::back_inserter(pointers),
                 [](const std::string& text) { return text.c_str(); });
  Put(group, var, {0}, {texts.size()}, pointers.data());
}

// The library ends the program where the last bytes cannot be written while it closes the file.
Result<> NcFile::Close() {
  Do([&](const NetcdfLibrary& nc) { return nc.sync(root_); });
  Do([&](const NetcdfLibrary& nc) {
    is_open_ = false;
    return nc.close(root_);
  });
  return outcome_;
}

}  // namespace orvane
