// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CALIBRATION_CAL_READER_H_
#define ORVANE_CALIBRATION_CAL_READER_H_

#include <cstdint>
#include <filesystem>

#include "calibration/cal_header.h"
#include "files/file_io.h"

namespace orvane {

/// Takes a calibration file apart, record by record; what the records mean is for others.
class CalReader {
 public:
  Result<> Open(const std::filesystem::path& path) { return file_.Open(path); }

  /// The header, which must be taken before the records; false where the file is too short.
  bool TakeHeader(CalHeader* header);
  /// The next whole record; false at the end, at a record that is cut, after a read error, and
  /// always where the header names an impossible number of channels. Blocks of channels that the
  /// file does not have keep what they hold.
  bool TakeRecord(CalFileRecord* record);

  const Result<>& Outcome() const { return file_.Outcome(); }
  std::size_t RecordBytes() const { return record_bytes_; }
  std::uint64_t OffsetOf(std::size_t record) const {
    return sizeof(CalHeader) + std::uint64_t{record} * record_bytes_;
  }
  /// After `TakeRecord()` answered false: the file ended within a record.
  bool IsCut() const { return is_cut_; }

 private:
  InFile file_;
  std::size_t record_bytes_ = 0;  // 0: none can be read
  bool is_cut_ = false;
};

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_CAL_READER_H_
