// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_TBL_READ_BACK_H_
#define ORVANE_TABLE_TBL_READ_BACK_H_

#include <cstdint>
#include <filesystem>
#include <string>

#include "table/param_table.h"
#include "table/tbl_file.h"

namespace orvane {

/// What a file holds that was written and synced.
struct TblReadBack {
  std::uint64_t size = 0;     ///< bytes of the file as it was meant
  bool is_from_disk = false;  ///< else it may have come from memory, and says nothing of the disk
  std::string fault;          ///< what is not as it was meant; empty: every byte is
};

/// Reads a file again from the disk and compares it with what `SaveParamFile()` was to write: the
/// table as it was after that, with the same options.
TblReadBack ReadBack(const std::filesystem::path& path, const ParamTable& meant,
                     const TblSaveOptions& options);

}  // namespace orvane

#endif  // ORVANE_TABLE_TBL_READ_BACK_H_
