// SPDX-License-Identifier: GPL-3.0-or-later
// NetCDF-4 files by netCDF-C, which is not made for several threads: only one of them is in it at a
// time. The first failure is kept; after it nothing more is done.
#ifndef ORVANE_EXPORT_NETCDF_FILE_H_
#define ORVANE_EXPORT_NETCDF_FILE_H_

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "export/netcdf_library.h"

namespace orvane {

class NcFile {
 public:
  NcFile() = default;
  NcFile(const NcFile&) = delete;
  NcFile& operator=(const NcFile&) = delete;
  ~NcFile();

  /// Makes a file, or empties the one that is there.
  void Create(const std::filesystem::path& path);
  int Root() const { return root_; }
  int AddGroup(const std::string& name);
  int AddDim(int group, const char* name, std::size_t size);
  /// A variable over some dimensions, in one piece, without values where none are put.
  int AddVar(int group, const std::string& name, nc_type type, const std::vector<int>& dims);
  /// The same in chunks that are compressed each by itself: 1 the fastest, 9 the smallest.
  void Deflate(int group, int var, const std::vector<std::size_t>& chunk, int level);
  void AddText(int group, int var, const char* name, std::string_view text);
  /// A number of the variable's type or another.
  void AddReal(int group, int var, const char* name, double value);
  void AddInt(int group, int var, const char* name, int value);
  void AddByte(int group, int var, const char* name, signed char value);
  void EndDefinitions();
  /// Values of the variable's own type, from `start` on in each dimension.
  void Put(int group, int var, const std::vector<std::size_t>& start,
           const std::vector<std::size_t>& count, const void* values);
  void PutTexts(int group, int var, const std::vector<std::string>& texts);

  bool HasFailed() const { return !outcome_; }
  /// Writes what is left; fails with what failed first.
  Result<> Close();

 private:
  template <typename Call>
  void Do(Call call);

  const NetcdfLibrary* nc_ = nullptr;  // from Create() on
  int root_ = -1;
  bool is_open_ = false;
  Result<> outcome_;
};

}  // namespace orvane

#endif  // ORVANE_EXPORT_NETCDF_FILE_H_
