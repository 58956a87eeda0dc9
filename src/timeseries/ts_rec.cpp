// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_rec.h"

#include <algorithm>

namespace orvane {

namespace {

// Decodes the scans of a record piece by piece, so that they stay in the cache: `take(piece,
// scans)` gets whole scans. How many there are in `scans`, also where the outcome is a failure.
template <typename Take>
Result<> ReadPieces(const RandomFile& file, const TsPlace& place, std::size_t* scans,
                    const Take& take) {
  const auto scan_bytes = static_cast<std::size_t>(ScanBytes(place.header));
  // A scan is at most 255 x 255 bytes, so at least one fits.
  const std::size_t scans_per_piece =
      std::min<std::size_t>(kTsPiece / scan_bytes, std::max(place.scans_held, 1U));
  std::vector<std::byte> piece(scans_per_piece * scan_bytes + kDecoderSlack);
  Result<> outcome;
  while (*scans < place.scans_held) {
    const std::size_t wanted = std::min<std::size_t>(scans_per_piece, place.scans_held - *scans);
    const BytesRead bytes = file.ReadAt(place.data + *scans * std::uint64_t{scan_bytes},
                                        std::span(piece).first(wanted * scan_bytes));
    outcome = bytes.outcome;
    const std::size_t read = bytes.count / scan_bytes;
    take(piece.data(), read);
    *scans += read;
    if (read < wanted) {
      break;
    }
  }
  return outcome;
}

}  // namespace

Result<> CTsRec::Read(const RandomFile& file, const TsPlace& place) {
  place_ = place;
  scans_ = 0;
  held_.clear();
  if (ScanBytes(place.header) == 0) {
    scans_ = place.scans_held;
    return {};
  }
  held_.reserve(place.scans_held * Channels());  // what the file held when it was walked
  return ReadPieces(file, place, &scans_, [this](const std::byte* piece, std::size_t scans) {
    const std::size_t before = held_.size();
    held_.resize(before + scans * Channels());
    BestDecoder().put(piece, place_.header.sample_width, std::span(held_).subspan(before));
  });
}

Result<> ReadSamples(const RandomFile& file, const TsPlace& place, std::span<std::int32_t> samples,
                     std::size_t* scans) {
  *scans = 0;
  if (ScanBytes(place.header) == 0) {
    return {};
  }
  std::size_t at = 0;
  return ReadPieces(file, place, scans, [&](const std::byte* piece, std::size_t count) {
    const auto to = samples.subspan(at, count * place.header.channels);
    BestDecoder().put(piece, place.header.sample_width, to);
    std::transform(to.begin(), to.end(), to.begin(), SampleOf);
    at += to.size();
  });
}

}  // namespace orvane
