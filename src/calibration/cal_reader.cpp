// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/cal_reader.h"

namespace orvane {

bool CalReader::TakeHeader(CalHeader* header) {
  const auto bytes = std::as_writable_bytes(std::span<CalHeader, 1>(header, 1));
  if (file_.Read(bytes) < bytes.size()) {
    return false;
  }
  const std::size_t channels = header->Channels();
  record_bytes_ = channels == 0 ? 0 : CalFileRecord::BytesFor(channels);
  return true;
}

bool CalReader::TakeRecord(CalFileRecord* record) {
  const auto bytes =
      std::as_writable_bytes(std::span<CalFileRecord, 1>(record, 1)).first(record_bytes_);
  if (bytes.empty()) {
    return false;
  }
  const std::size_t read = file_.Read(bytes);
  is_cut_ = read > 0 && read < bytes.size();
  return read == bytes.size();
}

}  // namespace orvane
