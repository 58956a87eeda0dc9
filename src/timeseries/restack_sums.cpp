// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/restack_sums.h"

#include <algorithm>

#include "timeseries/sample_decoder.h"

namespace orvane {
namespace {

constexpr std::int64_t kHeld = 256;  // a held value by its sample

// 256 x sum / count toward zero. The remainder goes on apart, so that nothing exceeds 64 bits.
std::int32_t HeldMean(std::int64_t sum, std::int64_t count) {
  return static_cast<std::int32_t>(sum / count * kHeld + sum % count * kHeld / count);
}

}  // namespace

RestackSums::RestackSums(std::uint64_t count, std::uint64_t samples)
    : count_(count),
      narrow_(count > kMostInWord ? 0 : static_cast<std::size_t>(samples)),
      wide_(count > kMostInWord ? static_cast<std::size_t>(samples) : 0) {}

void RestackSums::Add(const std::byte* from, int width, std::size_t first, std::size_t samples,
                      std::vector<std::int32_t>* scratch) {
  const SampleDecoder& decoder = BestDecoder();
  if (wide_.empty()) {
    decoder.add(from, width, std::span(narrow_).subspan(first, samples));
    return;
  }
  scratch->resize(std::max(scratch->size(), samples));
  decoder.put(from, width, std::span(*scratch).first(samples));
  for (std::size_t i = 0; i < samples; ++i) {
    wide_[first + i] += SampleOf((*scratch)[i]);
  }
}

void RestackSums::PutMeans(std::size_t first, std::span<std::int32_t> means) const {
  if (!wide_.empty()) {
    const auto count = static_cast<std::int64_t>(count_);
    std::transform(wide_.begin() + static_cast<std::ptrdiff_t>(first),
                   wide_.begin() + static_cast<std::ptrdiff_t>(first + means.size()), means.begin(),
                   [count](std::int64_t sum) { return SampleOf(HeldMean(sum, count)); });
    return;
  }
  // Division of doubles is exact here: the dividend has 39 bits, and a quotient by 256 at most is
  // never so close to a whole number that rounding could reach it. A loop of its own takes several
  // at a time.
  const auto count = static_cast<double>(count_);
  for (std::size_t i = 0; i < means.size(); ++i) {
    const double held = static_cast<double>(narrow_[first + i]) * static_cast<double>(kHeld);
    means[i] = SampleOf(static_cast<std::int32_t>(held / count));
  }
}

}  // namespace orvane
