// SPDX-License-Identifier: GPL-3.0-or-later
// Header and records of calibration files (*.CLB, *.CLC); docs/formats/calibration.md describes the
// format.
#ifndef ORVANE_CALIBRATION_CAL_HEADER_H_
#define ORVANE_CALIBRATION_CAL_HEADER_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "base/status.h"
#include "base/wire.h"
#include "table/box_keys.h"
#include "table/param_entry.h"

namespace orvane {

inline constexpr int kMaxCalChannels = kMostBoxChannels;
inline constexpr std::size_t kMaxCalRecords = 500;

/// What a file calibrates, as its header says.
enum CalKind : int {
  kBoxCal = 1,            ///< a box's channels, "*.CLB"
  kSensorCal = 2,         ///< a coil, "*.CLC"
  kCurrentSensorCal = 3,  ///< a sensor of the second class, "*.CLC"
};

/// | offset | size | content |
/// |---|---|---|
/// | 0 | 8 | "UTC": time of the calibration |
/// | 8 | 2 | "SNUM": serial number of the box or sensor |
/// | 10 | 2 | "NCHN": channels in every record |
/// | 12 | 2 | not interpreted |
/// | 14 | 2 | "STAT": status word, only shown |
/// | 16 | 1 | "CTYP": a `CalKind` |
/// | 17 | 3 | not interpreted |
/// | 20 | 12 | "HW": board and unit tags, text up to a NUL |
/// | 32 | 12 | "VER": firmware version, text |
/// | 44 | 20 | "TCMB", "TALS", "LFRQ", "Q2SR", "LPFR": settings, 4 bytes each |
/// | 64 | 12 | "HSN": identification of the sensor, text |
/// | 76 | 24 | "HATT", "HNOM", "CPHC": doubles |
/// | 100 | 32 | not interpreted |
struct CalHeader {
  ParamTime utc;
  Le<std::int16_t> snum;
  Le<std::int16_t> nchn;
  std::array<std::uint8_t, 2> unknown12{};
  Le<std::int16_t> stat;
  std::uint8_t ctyp = 0;
  std::array<std::uint8_t, 3> unknown17{};
  std::array<char, 12> hw{};
  std::array<char, 12> ver{};
  Le<std::int32_t> tcmb;
  Le<std::int32_t> tals;
  Le<std::int32_t> lfrq;
  Le<std::int32_t> q2sr;
  Le<std::int32_t> lpfr;
  std::array<char, 12> hsn{};
  Le<double> hatt;
  Le<double> hnom;
  Le<double> cphc;
  std::array<std::uint8_t, 32> unknown100{};

  /// The number of channels where it is possible, 1 to 12; else 0.
  std::size_t Channels() const {
    return nchn >= 1 && nchn <= kMaxCalChannels ? static_cast<std::size_t>(nchn) : 0;
  }
};
static_assert(sizeof(CalHeader) == 132 && alignof(CalHeader) == 1);
static_assert(offsetof(CalHeader, nchn) == 10 && offsetof(CalHeader, stat) == 14);
static_assert(offsetof(CalHeader, ctyp) == 16 && offsetof(CalHeader, hw) == 20);
static_assert(offsetof(CalHeader, ver) == 32 && offsetof(CalHeader, tcmb) == 44);
static_assert(offsetof(CalHeader, hsn) == 64 && offsetof(CalHeader, hatt) == 76);
static_assert(offsetof(CalHeader, cphc) == 92 && offsetof(CalHeader, unknown100) == 100);

/// One channel at one frequency: four calibration values (the first two are the complex input) and
/// the complex response.
struct CalBlock {
  std::array<Le<float>, 4> values{};
  Le<float> real;
  Le<float> imaginary;
};
static_assert(sizeof(CalBlock) == 24 && alignof(CalBlock) == 1);

/// | offset | size | content |
/// |---|---|---|
/// | 0 | 1 | kind code |
/// | 1 | 1 | not interpreted |
/// | 2 | 4 | frequency in Hz, 32-bit float |
/// | 6 | 2 | step within the pass, signed; 0 or 1 starts a pass |
/// | 8 | 24 | block of the first channel; those of the others follow |
///
/// In memory always with room for 12 channels, in a file with those of its header only.
struct CalFileRecord {
  std::uint8_t kind = 0;
  std::uint8_t unknown1 = 0;
  Le<float> frequency;
  Le<std::int16_t> step;
  std::array<CalBlock, kMaxCalChannels> channels{};

  static constexpr std::size_t BytesFor(std::size_t channels) {
    return offsetof(CalFileRecord, channels) + channels * sizeof(CalBlock);
  }
};
static_assert(sizeof(CalFileRecord) == 296 && alignof(CalFileRecord) == 1);
static_assert(offsetof(CalFileRecord, step) == 6 && CalFileRecord::BytesFor(1) == 32);

/// The characters of a header's text before its NUL; all of them where there is none.
std::string_view CalText(const std::array<char, 12>& text);

/// One field of the header, by the name that it has in parameter tables.
struct CalFieldDef {
  std::array<char, 9> key{};  ///< NUL-terminated
  ValueType type = IntPT;
  std::uint8_t offset = 0;
  std::uint8_t length = 0;

  constexpr std::string_view Key() const { return key.data(); }
};

/// The fields that a header of this "CTYP" names; none for an unknown one. A box does not name
/// those of sensors although their bytes are there.
std::span<const CalFieldDef> CalFields(int ctyp);

/// Reads a field by its key, in any case. `out` gets 4 bytes for `IntPT`, 8 for `FltPT` and
/// `AmxPT`, up to 16 with a NUL for `StrPT`. Numbers of 1 and 2 bytes arrive zero-extended.
Status GetCalField(const CalHeader* header, std::string_view key, ValueType type, void* out);

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_CAL_HEADER_H_
