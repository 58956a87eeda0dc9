// SPDX-License-Identifier: GPL-3.0-or-later
// Reads box and sensor calibration files: their header, records and passes.
#ifndef ORVANE_CALIBRATION_CAL_RECORDS_H_
#define ORVANE_CALIBRATION_CAL_RECORDS_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "calibration/cal_header.h"

namespace orvane {

inline constexpr std::size_t kMaxCalPasses = 30;
inline constexpr std::size_t kMaxPassRecords = 100;

/// A calibration as its file has it.
struct CalRecords {
  CalHeader header;                       ///< with "HW" in upper case
  std::vector<CalFileRecord> records;     ///< 1 to 500
  std::vector<std::uint32_t> pass_table;  ///< first record of each pass, then the record count

  std::size_t Channels() const { return header.Channels(); }
  std::size_t PassCount() const { return pass_table.size() - 1; }
  std::span<const CalFileRecord> Pass(std::size_t pass) const {
    return std::span(records).subspan(pass_table[pass], pass_table[pass + 1] - pass_table[pass]);
  }
};

/// What a reading came to. The status is for programs; the message names file, place and reason.
struct CalReport {
  Status status = kOk;
  std::string message;
  bool is_cut = false;  ///< the file ends within its last record, which is left out
};

CalReport NoMemoryForCal(const std::filesystem::path& path);

/// Reads a file of kind 1 to 3 by its whole name. Null, with a status, where the file is not wholly
/// right; a cut last record is left out.
std::unique_ptr<CalRecords> ReadCalRecordsAt(int kind, const std::filesystem::path& path,
                                             CalReport* report = nullptr);

/// The "CTYP" in a file's header; none where that cannot be read.
std::optional<int> CalKindIn(const std::filesystem::path& path);
/// The kind that a file is by its name and header, a `CalKind`.
int CalKindOf(const std::filesystem::path& path);

inline Status GetCalField(const CalRecords* cal, std::string_view key, ValueType type, void* out) {
  return GetCalField(cal == nullptr ? nullptr : &cal->header, key, type, out);
}

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_CAL_RECORDS_H_
