// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_RECORDING_H_
#define ORVANE_SURVEY_RECORDING_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "survey/file_facts.h"

namespace orvane {

enum class RowKind : std::uint8_t {
  kRecording,  ///< waveform, bands or both, with all that was made of them
  kStack,      ///< stacked waveform or stack results alone
  kTable,
  kSchedule,
  kBoxCalibration,
  kSensorCalibration,
};
/// "recording", "stack", "table", "schedule", "box calibration", "sensor calibration".
std::string_view RowKindName(RowKind kind);

/// "SIP" ...; empty for what is no method.
std::string_view MethodName(std::int32_t tech);
/// "4", or "0.125 to 9600 (20)" of several; empty without.
std::string FrequencyText(const struct SurveyRow& row);
/// "2417.CLB (12 days), TARK2041.CLC missing"; empty where none is needed.
std::string CalibrationText(const struct SurveyRow& row);
/// What "CLST" means; empty where the box has not written its state.
std::string ClockText(const TableFacts& table);

/// One file of a row.
struct RowFile {
  FileType type = FileType::kOther;
  std::string name;   ///< its bytes
  std::string shown;  ///< printable
  FileInfo info;
  std::string sha256;  ///< where it was asked for, in hexadecimal
};

enum class TableState : std::uint8_t { kNotNeeded, kThere, kMissing, kUnreadable, kNewer };
std::string_view TableStateName(TableState state);

/// A calibration that a recording needs.
struct RowCalibration {
  std::string name;  ///< "2417.CLB"; "of channel 4" where the table has no number
  bool is_found = false;
  std::int64_t time = 0;    ///< of the calibration, seconds since 1970; 0: not known
  std::int32_t serial = 0;  ///< in its header
  std::int32_t wanted = 0;  ///< in its name
  /// Days from the calibration to the recording; none where either is not known.
  std::optional<std::int64_t> age_days;
  std::string fault = {};  ///< why it is of no use, where there is one; then it is not found
};

/// One recording with the files that belong to it, or another file of the survey. Texts are UTF-8
/// and printable.
struct SurveyRow {
  RowKind kind = RowKind::kRecording;
  std::string name;             ///< of its first file, relative to the survey's folder
  std::string folder;           ///< as shown, "." for the survey's own
  std::filesystem::path place;  ///< the same as it is, relative to the survey's folder
  std::vector<RowFile> files;
  std::string failure;     ///< "NAME: reason" of files that could not be read
  std::int32_t box = 0;    ///< serial number of the box in the records, else in the table
  std::int64_t start = 0;  ///< the earliest, seconds since 1970; 0: not known
  std::int64_t end = 0;
  std::vector<TimeStretch> stretches;  ///< what was recorded between them, of all files together
  std::uint64_t odd_dates = 0;         ///< records that do not count in times, see `FileFacts`
  std::int64_t odd_date = 0;
  /// All records are dated more than a year before the plan of the table; without one, before 2000.
  bool has_wrong_clock = false;
  std::int32_t channels = 0;
  double rate = 0;                  ///< Hz, the highest
  std::vector<double> frequencies;  ///< Hz, ascending
  std::uint64_t records = 0;        ///< of waveform and bands
  std::uint64_t bad = 0;
  std::vector<std::string> cut;    ///< names of files that end within a record
  std::vector<std::string> empty;  ///< names of files without a whole record
  /// Names of files in which bytes of zeros come where a header was to be, and how many.
  std::vector<std::pair<std::string, std::uint64_t>> blank;
  std::int32_t other_box = 0;  ///< the first other serial number in the records
  TableState table_state = TableState::kNotNeeded;
  std::shared_ptr<const TableFacts> table;
  std::string differs;                       ///< what the headers say otherwise than the table
  std::vector<RowCalibration> calibrations;  ///< that of the box first
  bool is_deep = false;
  std::vector<ChannelFacts> samples;  ///< by channel, of waveform and bands
  /// Files whose conversions have the names of those of others.
  std::vector<std::string> clashes;

  bool IsRecording() const { return kind == RowKind::kRecording; }
  /// A recording whose times can be compared with others.
  bool HasTimes() const { return IsRecording() && start > 0 && !has_wrong_clock; }
  /// Largest share of saturated samples of a channel.
  double SaturatedShare() const;
  /// Channels, from 1, that never change.
  std::vector<int> DeadChannels() const;
  /// Pairs of channels with the same samples.
  std::vector<std::pair<int, int>> EqualChannels() const;
};

/// A file of one group and what it says.
struct FactedFile {
  const FoundFile* file = nullptr;
  std::string shown;
  FileFacts facts;
};

/// Files that belong together, by folder and name: NAME.TSS, NAME.TBL, name.txt, name_TS3.txt,
/// NAME_TSK_cal.txt in any case. `names` are those of one folder, as `FoundFile`.
std::vector<std::vector<const FoundFile*>> GroupFiles(std::span<const FoundFile> files);

/// Puts a row together; `calibrations` stay empty. None where the files are texts alone.
std::optional<SurveyRow> MakeRow(std::span<const FactedFile> files);

}  // namespace orvane

#endif  // ORVANE_SURVEY_RECORDING_H_
