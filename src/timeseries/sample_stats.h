// SPDX-License-Identifier: GPL-3.0-or-later
// Statistics of samples as they are, in counts: exact sums, no rounding before the last division.
#ifndef ORVANE_TIMESERIES_SAMPLE_STATS_H_
#define ORVANE_TIMESERIES_SAMPLE_STATS_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace orvane {

/// What the samples of a channel come to. A record has at most 65535 scans of 24-bit samples, so
/// that no sum exceeds its bits: the squares take 62.
struct ChannelStats {
  std::int32_t least = std::numeric_limits<std::int32_t>::max();
  std::int32_t most = std::numeric_limits<std::int32_t>::min();
  std::int64_t sum = 0;
  std::int64_t squares = 0;
  std::uint32_t count = 0;      ///< of samples
  std::uint32_t saturated = 0;  ///< of them; see `kSaturatedFrom`

  /// Counts; 0 where there is no sample.
  std::int32_t Min() const { return count == 0 ? 0 : least; }
  std::int32_t Max() const { return count == 0 ? 0 : most; }
  std::int32_t PeakToPeak() const { return Max() - Min(); }
  double Mean() const;
  /// Root of the mean square of the samples as they are, about zero and not about their mean.
  double Rms() const;
  bool operator==(const ChannelStats&) const = default;
};

/// A sample of 3 bytes is saturated where its magnitude is not below this.
inline constexpr std::int32_t kSaturatedFrom = 8388607;

/// Adds `scans` whole scans of 3-byte samples, one sample for each of `stats`. Behind them
/// kDecoderSlack bytes must be readable.
using AddThreeByteScans = void (*)(const std::byte* from, std::size_t scans,
                                   std::span<ChannelStats> stats);
/// Works everywhere.
extern const AddThreeByteScans kPortableStats;
/// The fastest that this processor can do, with the same results.
AddThreeByteScans BestStats();

/// The same for samples of any width. `scratch` is the caller's room, kept from call to call.
void AddScanStats(const std::byte* from, int width, std::size_t scans,
                  std::span<ChannelStats> stats, std::vector<std::int32_t>* scratch);

/// The same for held values (sample x 256), scan after scan; `width` is that of their samples.
void AddHeldStats(std::span<const std::int32_t> held, int width, std::span<ChannelStats> stats);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_SAMPLE_STATS_H_
