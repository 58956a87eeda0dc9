// SPDX-License-Identifier: GPL-3.0-or-later
// What single files say of themselves, short enough to be kept for each file of a survey.
#ifndef ORVANE_SURVEY_FILE_FACTS_H_
#define ORVANE_SURVEY_FILE_FACTS_H_

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "survey/folder_walk.h"
#include "survey/table_place.h"
#include "timeseries/ts_header.h"

namespace orvane {

/// Seconds. Records of one recording that are further apart are of a clock that was wrong.
inline constexpr std::int64_t kFarApart = std::int64_t{31} * 86400;

/// From one time to another, in seconds since 1970.
struct TimeStretch {
  std::int64_t start = 0;
  std::int64_t end = 0;
  friend bool operator==(const TimeStretch&, const TimeStretch&) = default;
};

enum class BoxRole : std::uint8_t { kAuxiliary, kTransmitter, kReference };

/// A box beside the main one that a table names.
struct PlannedBox {
  std::int32_t serial = 0;
  std::int32_t channels = 0;  ///< that are switched on
  BoxRole role = BoxRole::kAuxiliary;
  friend bool operator==(const PlannedBox&, const PlannedBox&) = default;
};

/// The calibration that a channel needs.
struct PlannedSensor {
  std::int32_t channel = 0;  ///< from 1
  std::int32_t kind = 0;     ///< a `CalKind`
  std::string unit;          ///< its serial number as files are named by; empty: the table has none
  friend bool operator==(const PlannedSensor&, const PlannedSensor&) = default;
};

/// What the survey needs of a parameter table. Texts are UTF-8 and printable; nothing secret is
/// among them.
struct TableFacts {
  std::int32_t version = 0;     ///< of the file, 1 or 2
  std::string firmware;         ///< "VER"
  std::uint8_t is_old = 0;      ///< waveforms beside it have headers of the older version
  std::int32_t serial = 0;      ///< "SNUM"
  std::int32_t method = 0;      ///< "TECH"
  std::string hardware;         ///< "HW", the kind of the box
  std::string line;             ///< "LINE"
  std::string site;             ///< "SITE"
  std::int32_t counted = 0;     ///< channels as the box counted them, "TCHN"; 0: it did not
  std::int32_t channels = 0;    ///< the same, else as they were set
  std::int64_t plan_start = 0;  ///< "STIM", seconds since 1970; 0 without a date
  std::int64_t plan_end = 0;    ///< "ETIM", likewise
  std::uint8_t has_status = 0;  ///< the box has written its state
  std::int32_t recorded = 0;    ///< records as the box counted them, "TOTL"
  std::int64_t first = 0;       ///< of these, "FTIM"
  std::int64_t fix = 0;         ///< when it last knew the time by satellites, "LFIX"
  std::int32_t clock = 0;       ///< "CLST", 4: locked
  std::int32_t disk = 0;        ///< "DISK", bytes
  std::vector<PlannedBox> boxes;
  std::vector<PlannedSensor> sensors;
  std::optional<MapPoint> place;  ///< of the box on the survey's grid, see `GridPlaceOf()`
  std::optional<GeoPlace> geo;    ///< "LATG" and "LNGG", where both can be read
};

/// The samples of one channel of a file.
struct ChannelFacts {
  std::uint64_t samples = 0;
  std::uint64_t saturated = 0;
  std::int32_t least = 0;
  std::int32_t most = 0;
  std::uint64_t sum = 0;  ///< a checksum of the statistics of each record
  bool IsDead() const { return samples > 1 && least == most; }
};

/// What a file says. Records with an odd date, and what follows a blank header, count in no time.
struct FileFacts {
  std::string failure;                 ///< why it could not be read, or not to its end; printable
  std::uint8_t is_cut = 0;             ///< ends within a record
  std::int32_t serial = 0;             ///< of records' headers or of a calibration's
  std::int32_t other_serial = 0;       ///< the first other one in the records
  std::int64_t start = 0;              ///< the earliest, seconds since 1970; 0: not known
  std::int64_t end = 0;                ///< of the last scan
  std::vector<TimeStretch> stretches;  ///< without the pauses of more than a minute; the first 64
  std::uint64_t odd_dates = 0;         ///< records without a date, or `kFarApart` from most others
  std::int64_t odd_date = 0;           ///< the first such; 0: none is a date
  std::uint64_t blank = 0;          ///< bytes from the first header that is blank, see `IsBlank()`
  std::int32_t channels = 0;        ///< most of a record
  double rate = 0;                  ///< Hz, the highest
  std::vector<double> frequencies;  ///< Hz, each once, ascending; the first 64 met
  std::uint64_t records = 0;
  std::uint64_t bad = 0;
  std::uint64_t scans = 0;       ///< that are there, of all records
  std::int32_t header_size = 0;  ///< as records were read
  std::uint8_t is_guessed = 0;   ///< the header's size, as records fit the file
  std::int32_t kind = 0;         ///< of a calibration, a `CalKind`
  std::optional<TableFacts> table;
  std::uint8_t is_deep = 0;           ///< samples were looked at
  std::vector<ChannelFacts> samples;  ///< then; by channel
};

/// As bytes, to be kept, and back. False where they are not those of this program's version.
std::string FactsImage(const FileFacts& facts);
[[nodiscard]] bool FactsFrom(std::span<const char> image, FileFacts* facts);

struct ReadingOptions {
  bool is_deep = false;
  /// Of waveforms, whose table says it; none: as records fit the file.
  std::optional<TsHeaderSize> header_size;
  std::function<bool()> stopped;  ///< never empty
};

/// Reads a file of a type. What it may fail for is in the facts. Never opens a file for writing.
FileFacts ReadFacts(FileType type, const std::filesystem::path& path,
                    const ReadingOptions& options);

}  // namespace orvane

#endif  // ORVANE_SURVEY_FILE_FACTS_H_
