// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_RESTACK_SUMS_H_
#define ORVANE_TIMESERIES_RESTACK_SUMS_H_

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace orvane {

/// Exact sums of the samples of some records, and their means. A sample has 24 bits, so that 32
/// bits hold the sum of 256 records whatever they are; the sums of more records have 64.
class RestackSums {
 public:
  static constexpr std::uint64_t kMostInWord = 256;  ///< records

  /// Of `count` records with `samples` samples each.
  RestackSums(std::uint64_t count, std::uint64_t samples);
  /// Bytes that such sums need.
  static std::uint64_t Memory(std::uint64_t count, std::uint64_t samples) {
    return samples * (count > kMostInWord ? sizeof(std::int64_t) : sizeof(std::int32_t));
  }

  /// Adds `samples` samples of `width` bytes to the sums from `first` on. `scratch` is the caller's
  /// room, kept from one call to the next; threads may add to different sums at once. Behind the
  /// samples kDecoderSlack bytes must be readable.
  void Add(const std::byte* from, int width, std::size_t first, std::size_t samples,
           std::vector<std::int32_t>* scratch);

  std::size_t Size() const { return wide_.empty() ? narrow_.size() : wide_.size(); }
  /// The mean as a sample. It is the mean of the held values, a sample times 256, toward zero,
  /// without its low byte: -1.5 gives -2, what is between -1/256 and 0 gives 0.
  void PutMeans(std::size_t first, std::span<std::int32_t> means) const;

 private:
  std::uint64_t count_;
  std::vector<std::int32_t> narrow_;
  std::vector<std::int64_t> wide_;  // instead of the narrow ones
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_RESTACK_SUMS_H_
