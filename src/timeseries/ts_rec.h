// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TS_REC_H_
#define ORVANE_TIMESERIES_TS_REC_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "timeseries/sample_decoder.h"
#include "timeseries/ts_walker.h"

namespace orvane {

/// One scan of a record: the held value (sample x 256) of each channel. Valid as long as its record
/// is not changed.
class CTsRecRow {
 public:
  explicit CTsRecRow(std::span<const std::int32_t> held) : held_(held) {}

  std::size_t Channels() const { return held_.size(); }
  std::int32_t Held(std::size_t channel) const { return held_[channel]; }
  std::int32_t Sample(std::size_t channel) const { return SampleOf(held_[channel]); }

 private:
  std::span<const std::int32_t> held_;
};

/// One record: its header and its scans. A record that the file cuts has the whole scans only.
class CTsRec {
 public:
  const TsHeader& Header() const { return place_.header; }
  const TsPlace& Place() const { return place_; }
  std::size_t Channels() const { return place_.header.channels; }
  /// Scans held, at most those of the header.
  std::size_t Scans() const { return scans_; }
  CTsRecRow Row(std::size_t scan) const {
    return CTsRecRow(std::span(held_).subspan(scan * Channels(), Channels()));
  }
  /// Every held value, scan after scan.
  std::span<const std::int32_t> Held() const { return held_; }
  /// Other values for its channels, of as many scans as there are.
  void SetHeld(std::vector<std::int32_t> held) {
    held_ = std::move(held);
    scans_ = Channels() == 0 ? 0 : held_.size() / Channels();
  }

  /// Reads the samples of the record at `place`; what it held before goes. Where the file has
  /// become shorter there are fewer scans.
  Result<> Read(const RandomFile& file, const TsPlace& place);

 private:
  TsPlace place_;
  std::size_t scans_ = 0;
  std::vector<std::int32_t> held_;
};

/// The samples of the record at `place`, scan after scan, straight into the caller's room of
/// scans held x channels; `scans` gets how many whole scans there were, fewer where the file has
/// become shorter.
Result<> ReadSamples(const RandomFile& file, const TsPlace& place, std::span<std::int32_t> samples,
                     std::size_t* scans);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TS_REC_H_
