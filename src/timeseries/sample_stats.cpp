// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/sample_stats.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <numeric>

#include "base/wire.h"
#include "timeseries/sample_decoder.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define ORVANE_HAS_AVX2 1
#include <immintrin.h>
#endif

namespace orvane {
namespace {

constexpr int kUsualWidth = 3;

void AddSample(std::int32_t sample, ChannelStats* stats) {
  stats->least = std::min(stats->least, sample);
  stats->most = std::max(stats->most, sample);
  stats->sum += sample;
  stats->squares += std::int64_t{sample} * sample;
  stats->saturated += std::abs(sample) >= kSaturatedFrom ? 1 : 0;
  ++stats->count;
}

void AddPortably(const std::byte* from, std::size_t scans, std::span<ChannelStats> stats) {
  for (std::size_t scan = 0; scan < scans; ++scan) {
    for (ChannelStats& channel : stats) {
      Le<std::uint32_t> word;  // its last byte is the next sample's
      std::memcpy(&word, from, sizeof word);
      AddSample(SampleOf(static_cast<std::int32_t>(std::uint32_t{word} << 8U)), &channel);
      from += kUsualWidth;
    }
  }
}

#ifdef ORVANE_HAS_AVX2
constexpr std::size_t kLanes = 8;
constexpr std::size_t kVectorBytes = kLanes * kUsualWidth;
// Sums of so many samples of 24 bits fit 32.
constexpr std::size_t kMostTurns = 255;

// What eight neighbouring places of a repeating pattern come to.
struct LaneStats {
  std::array<std::int32_t, kLanes> least;
  std::array<std::int32_t, kLanes> most;
  std::array<std::int32_t, kLanes> sum;
  std::array<std::int32_t, kLanes> saturated;  // negative
  std::array<std::int64_t, kLanes / 2> even_squares;
  std::array<std::int64_t, kLanes / 2> odd_squares;
};

template <typename T>
__attribute__((target("avx2"))) void Store(__m256i value, T* to) {
  static_assert(sizeof(T) == sizeof value);
  // Not by memcpy: its checked form keeps sums in memory all the while.
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(to), value);  // NOLINT: as the intrinsics want it
}

// Eight samples at each of `turns` places, `step` bytes apart.
__attribute__((target("avx2"))) LaneStats AddLanes(const std::byte* from, std::size_t turns,
                                                   std::size_t step) {
  const __m256i spread = _mm256_setr_epi8(-1, 0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11,  //
                                          -1, 0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11);
  const __m256i below = _mm256_set1_epi32(kSaturatedFrom - 1);
  __m256i least = _mm256_set1_epi32(std::numeric_limits<std::int32_t>::max());
  __m256i most = _mm256_set1_epi32(std::numeric_limits<std::int32_t>::min());
  __m256i sum = _mm256_setzero_si256();
  __m256i saturated = _mm256_setzero_si256();
  __m256i even = _mm256_setzero_si256();
  __m256i odd = _mm256_setzero_si256();
  for (std::size_t turn = 0; turn < turns; ++turn, from += step) {
    const __m128i low =
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));  // NOLINT: as below
    const __m128i high = _mm_loadu_si128(
        reinterpret_cast<const __m128i*>(from + 12));  // NOLINT: as the intrinsics want it
    const __m256i sample =
        _mm256_srai_epi32(_mm256_shuffle_epi8(_mm256_set_m128i(high, low), spread), 8);
    least = _mm256_min_epi32(least, sample);
    most = _mm256_max_epi32(most, sample);
    sum = _mm256_add_epi32(sum, sample);
    saturated = _mm256_add_epi32(saturated, _mm256_cmpgt_epi32(_mm256_abs_epi32(sample), below));
    even = _mm256_add_epi64(even, _mm256_mul_epi32(sample, sample));
    const __m256i next = _mm256_srli_epi64(sample, 32);
    odd = _mm256_add_epi64(odd, _mm256_mul_epi32(next, next));
  }
  LaneStats lanes;
  Store(least, &lanes.least);
  Store(most, &lanes.most);
  Store(sum, &lanes.sum);
  Store(saturated, &lanes.saturated);
  Store(even, &lanes.even_squares);
  Store(odd, &lanes.odd_squares);
  return lanes;
}

// The first lane belongs to the channel of sample `first`.
void Fold(const LaneStats& lanes, std::size_t first, std::size_t turns,
          std::span<ChannelStats> stats) {
  for (std::size_t lane = 0; lane < kLanes; ++lane) {
    ChannelStats& channel = stats[(first + lane) % stats.size()];
    channel.least = std::min(channel.least, lanes.least[lane]);
    channel.most = std::max(channel.most, lanes.most[lane]);
    channel.sum += lanes.sum[lane];
    channel.squares += (lane % 2 == 0 ? lanes.even_squares : lanes.odd_squares)[lane / 2];
    channel.count += static_cast<std::uint32_t>(turns);
    channel.saturated += static_cast<std::uint32_t>(-lanes.saturated[lane]);
  }
}

// Which channels the eight lanes of a vector belong to repeats after so many vectors: each of these
// is added up by itself, over a part that stays in the nearest cache from one to the next.
void AddWithAvx2(const std::byte* from, std::size_t scans, std::span<ChannelStats> stats) {
  const std::size_t vectors = stats.size() / std::gcd(stats.size(), kLanes);
  const std::size_t scans_per_turn = vectors * kLanes / stats.size();
  const std::size_t step = vectors * kVectorBytes;
  while (scans >= scans_per_turn) {
    const std::size_t turns = std::min(scans / scans_per_turn, kMostTurns);
    for (std::size_t vector = 0; vector < vectors; ++vector) {
      Fold(AddLanes(from + vector * kVectorBytes, turns, step), vector * kLanes, turns, stats);
    }
    from += turns * step;
    scans -= turns * scans_per_turn;
  }
  AddPortably(from, scans, stats);
}
#endif

}  // namespace

double ChannelStats::Mean() const { return count == 0 ? 0 : static_cast<double>(sum) / count; }

double ChannelStats::Rms() const {
  return count == 0 ? 0 : std::sqrt(static_cast<double>(squares) / count);
}

const AddThreeByteScans kPortableStats = AddPortably;

AddThreeByteScans BestStats() {
#ifdef ORVANE_HAS_AVX2
  static const bool kHasAvx2 = __builtin_cpu_supports("avx2") != 0;
  return kHasAvx2 ? AddWithAvx2 : AddPortably;
#else
  return AddPortably;
#endif
}

void AddScanStats(const std::byte* from, int width, std::size_t scans,
                  std::span<ChannelStats> stats, std::vector<std::int32_t>* scratch) {
  if (stats.empty()) {
    return;
  }
  if (width == kUsualWidth) {
    BestStats()(from, scans, stats);
    return;
  }
  scratch->resize(std::max(scratch->size(), scans * stats.size()));
  const auto held = std::span(*scratch).first(scans * stats.size());
  BestDecoder().put(from, width, held);
  AddHeldStats(held, width, stats);
}

void AddHeldStats(std::span<const std::int32_t> held, int width, std::span<ChannelStats> stats) {
  for (std::size_t i = 0; i + stats.size() <= held.size() && !stats.empty();) {
    for (ChannelStats& channel : stats) {
      AddSample(SampleOf(held[i++]), &channel);
      channel.saturated = width == kUsualWidth ? channel.saturated : 0;
    }
  }
}

}  // namespace orvane
