// SPDX-License-Identifier: GPL-3.0-or-later
// Samples of a file as held values. A sample's bytes, little-endian, go to the low end of a word
// that is shifted left by 8: of 3 bytes, the usual width, that is the signed sample times 256.
// kept: whatever the width, the same way. One and two bytes are therefore not sign-extended, of
// four the highest is lost and of more only the first four are looked at.
#ifndef ORVANE_TIMESERIES_SAMPLE_DECODER_H_
#define ORVANE_TIMESERIES_SAMPLE_DECODER_H_

#include <cstddef>
#include <cstdint>
#include <span>

namespace orvane {

/// Bytes that must be readable after the samples given to a decoder.
inline constexpr std::size_t kDecoderSlack = 32;
/// Bulk work reads pieces of this size: they stay in the cache between reading and decoding.
inline constexpr std::size_t kTsPiece = std::size_t{128} * 1024;

/// The sample of a held value.
constexpr std::int32_t SampleOf(std::int32_t held) { return held >> 8; }

/// One way of decoding: `count` samples of `width` bytes each.
struct SampleDecoder {
  void (*put)(const std::byte* from, int width, std::span<std::int32_t> to);
  /// Adds the samples themselves, not their held values, with wrapping.
  void (*add)(const std::byte* from, int width, std::span<std::int32_t> to);
};

/// Works everywhere.
extern const SampleDecoder kPortableDecoder;
/// The fastest this processor can do, with the same results.
const SampleDecoder& BestDecoder();

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_SAMPLE_DECODER_H_
