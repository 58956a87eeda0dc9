// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_rec.h"

#include <algorithm>

namespace orvane {

Result<> CTsRec::Read(const RandomFile& file, const TsPlace& place) {
  place_ = place;
  scans_ = 0;
  held_.clear();
  const std::size_t width = place.header.sample_width;
  const auto scan_bytes = static_cast<std::size_t>(ScanBytes(place.header));
  if (scan_bytes == 0) {
    scans_ = place.scans_held;
    return {};
  }
  held_.reserve(place.scans_held * Channels());  // what the file held when it was walked
  // A scan is at most 255 x 255 bytes, so at least one fits.
  const std::size_t scans_per_piece =
      std::min<std::size_t>(kTsPiece / scan_bytes, std::max(place.scans_held, 1U));
  std::vector<std::byte> piece(scans_per_piece * scan_bytes + kDecoderSlack);
  Result<> outcome;
  while (scans_ < place.scans_held) {
    const std::size_t wanted = std::min<std::size_t>(scans_per_piece, place.scans_held - scans_);
    const BytesRead bytes = file.ReadAt(place.data + scans_ * std::uint64_t{scan_bytes},
                                        std::span(piece).first(wanted * scan_bytes));
    outcome = bytes.outcome;
    const std::size_t read = bytes.count / scan_bytes;
    const std::size_t before = held_.size();
    held_.resize(before + read * Channels());
    BestDecoder().put(piece.data(), static_cast<int>(width), std::span(held_).subspan(before));
    scans_ += read;
    if (read < wanted) {
      break;
    }
  }
  return outcome;
}

}  // namespace orvane
