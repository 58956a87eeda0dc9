// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/sample_decoder.h"

#include <algorithm>
#include <cstring>

#include "base/wire.h"

#if defined(__x86_64__) && defined(__GNUC__)
#define ORVANE_HAS_AVX2 1
#include <immintrin.h>
#endif

namespace orvane {
namespace {

std::uint32_t LoadWord(const std::byte* from) {
  Le<std::uint32_t> word;
  std::memcpy(&word, from, sizeof word);
  return word;
}

std::uint32_t LoadFew(const std::byte* from, int width) {
  std::uint32_t word = 0;
  for (int i = 0; i < std::min(width, 4); ++i) {
    word |= std::to_integer<std::uint32_t>(from[i]) << (8 * i);
  }
  return word;
}

void Store(std::uint32_t held, std::int32_t* to) { *to = static_cast<std::int32_t>(held); }
void Add(std::uint32_t held, std::int32_t* to) {
  const auto sample = static_cast<std::uint32_t>(SampleOf(static_cast<std::int32_t>(held)));
  *to = static_cast<std::int32_t>(static_cast<std::uint32_t>(*to) + sample);
}

// The shift drops the byte that the four-byte load takes from the next sample.
template <void (*kTake)(std::uint32_t, std::int32_t*)>
void DecodePortably(const std::byte* from, int width, std::span<std::int32_t> to) {
  if (width == 3) {
    for (std::int32_t& held : to) {
      kTake(LoadWord(from) << 8U, &held);
      from += 3;
    }
    return;
  }
  for (std::int32_t& held : to) {
    kTake(LoadFew(from, width) << 8U, &held);
    from += width;
  }
}

#ifdef ORVANE_HAS_AVX2
// Eight samples at a time: four in each half, spread to the upper three bytes of their words.
template <bool kAdds>
__attribute__((target("avx2"))) void DecodeWithAvx2(const std::byte* from, int width,
                                                    std::span<std::int32_t> to) {
  constexpr auto kTail = kAdds ? DecodePortably<Add> : DecodePortably<Store>;
  if (width != 3) {
    kTail(from, width, to);
    return;
  }
  const __m256i spread = _mm256_setr_epi8(-1, 0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11,  //
                                          -1, 0, 1, 2, -1, 3, 4, 5, -1, 6, 7, 8, -1, 9, 10, 11);
  std::size_t i = 0;
  for (; i + 8 <= to.size(); i += 8, from += 24) {
    const __m128i low =
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));  // NOLINT: as below
    const __m128i high =
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + 12));  // NOLINT: as below
    __m256i held = _mm256_shuffle_epi8(_mm256_set_m128i(high, low), spread);
    auto* place = reinterpret_cast<__m256i*>(&to[i]);  // NOLINT: as the intrinsics want it
    if constexpr (kAdds) {
      held = _mm256_add_epi32(_mm256_srai_epi32(held, 8), _mm256_loadu_si256(place));
    }
    _mm256_storeu_si256(place, held);
  }
  kTail(from, width, to.subspan(i));
}

constexpr SampleDecoder kAvx2Decoder{DecodeWithAvx2<false>, DecodeWithAvx2<true>};
#endif

}  // namespace

const SampleDecoder kPortableDecoder{DecodePortably<Store>, DecodePortably<Add>};

const SampleDecoder& BestDecoder() {
#ifdef ORVANE_HAS_AVX2
  static const bool kHasAvx2 = __builtin_cpu_supports("avx2") != 0;
  return kHasAvx2 ? kAvx2Decoder : kPortableDecoder;
#else
  return kPortableDecoder;
#endif
}

}  // namespace orvane
