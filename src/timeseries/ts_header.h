// SPDX-License-Identifier: GPL-3.0-or-later
// Headers of time series records; docs/formats/time-series.md describes the format.
#ifndef ORVANE_TIMESERIES_TS_HEADER_H_
#define ORVANE_TIMESERIES_TS_HEADER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/wire.h"
#include "table/param_entry.h"

namespace orvane {

/// Bytes of a record's header: in waveform files, in those of the older recording version, in band
/// files.
enum class TsHeaderSize : std::uint8_t { kFull = 252, kOld = 196, kBand = 32 };

constexpr std::size_t BytesIn(TsHeaderSize size) { return static_cast<std::size_t>(size); }

/// A header whole. The shorter ones are its first bytes; what they lack is zero here.
///
/// | offset | size | content |
/// |---|---|---|
/// | 0 | 8 | time of the record |
/// | 8 | 2 | serial number of the box |
/// | 10 | 2 | scans |
/// | 12 | 1 | channels |
/// | 14 | 1 | status; 6: bad (not in band files) |
/// | 17 | 1 | bytes per sample |
/// | 18 | 2 | sample rate value |
/// | 20 | 1 | sample rate unit, signed |
/// | 27 | 1 | scans after the data that do not count (not in band files) |
/// | 36 | 8 | frequency in Hz (full header only) |
/// | 52, 68 | 16, 16 | texts |
/// | 84, 132 | 48, 48 | 12 32-bit numbers each, one per channel |
/// | 180, 204, 228 | 24, 24, 24 | 12 16-bit numbers each, one per channel |
///
/// What has no name here is not interpreted and is written as it was found.
struct TsHeader {
  ParamTime time;
  Le<std::uint16_t> box;
  Le<std::uint16_t> scans;
  std::uint8_t channels = 0;
  std::uint8_t byte13 = 0;
  std::uint8_t status = 0;
  std::array<std::uint8_t, 2> bytes15{};
  std::uint8_t sample_width = 0;
  Le<std::uint16_t> rate;
  std::int8_t rate_unit = 0;
  std::array<std::uint8_t, 4> bytes21{};
  std::uint8_t byte25 = 0;
  std::uint8_t byte26 = 0;
  std::uint8_t trailing_scans = 0;
  std::array<std::uint8_t, 8> bytes28{};
  Le<double> frequency;
  std::array<std::uint8_t, 7> bytes44{};
  std::uint8_t byte51 = 0;
  std::array<char, 16> text52{};
  std::array<char, 16> text68{};
  std::array<std::uint8_t, 168> arrays84{};

  bool IsBad() const { return status == kBadStatus; }
  static constexpr std::uint8_t kBadStatus = 6;
};
static_assert(sizeof(TsHeader) == BytesIn(TsHeaderSize::kFull) && alignof(TsHeader) == 1);
static_assert(offsetof(TsHeader, box) == 8 && offsetof(TsHeader, scans) == 10);
static_assert(offsetof(TsHeader, channels) == 12 && offsetof(TsHeader, status) == 14);
static_assert(offsetof(TsHeader, sample_width) == 17 && offsetof(TsHeader, rate) == 18);
static_assert(offsetof(TsHeader, rate_unit) == 20 && offsetof(TsHeader, byte25) == 25);
static_assert(offsetof(TsHeader, trailing_scans) == 27 && offsetof(TsHeader, frequency) == 36);
static_assert(offsetof(TsHeader, byte51) == 51 && offsetof(TsHeader, text52) == 52);
static_assert(offsetof(TsHeader, text68) == 68 && offsetof(TsHeader, arrays84) == 84);

/// All bytes are 0, as in what a disk was to hold and never got, or FF, as in an erased one.
bool IsBlank(const TsHeader& header);

/// Samples per second; 0 for an unknown unit.
double SampleRate(const TsHeader& header);

/// Bytes of one scan, of all samples the header promises, and of the trailing scans after them.
std::uint64_t ScanBytes(const TsHeader& header);
std::uint64_t DataBytes(const TsHeader& header);
std::uint64_t TrailingBytes(const TsHeader& header);

/// The digit that ends the path, else 0: SITE.TS3 is band 3, SITE.TSS and SITE.dat are 0. kept: the
/// path is taken literally, whatever the file is.
int BandNumber(std::string_view path);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TS_HEADER_H_
