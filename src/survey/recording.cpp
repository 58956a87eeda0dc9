// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/recording.h"

#include <algorithm>
#include <array>
#include <map>

#include "base/ascii.h"
#include "base/number_text.h"
#include "table/box_keys.h"
#include "timeseries/time_series_text.h"

namespace orvane {
namespace {

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperCased);
  return upper;
}

std::string StemOf(const FoundFile& file) {
  std::string stem(std::string_view(file.name).substr(0, file.name.rfind('.')));
  if (file.type != FileType::kText) {
    return stem;
  }
  // What conversions append.
  const auto cut = [&stem](std::string_view end) {
    const bool has_end = EndsWithoutCase(stem, end);
    stem.resize(stem.size() - (has_end ? end.size() : 0));
    return has_end;
  };
  cut("_cal");
  if (!cut("_TSK")) {
    for (int band = kLastBand; band >= 1 && !cut("_TS" + FormatInt(band)); --band) {
    }
  }
  return stem;
}

bool IsSeries(FileType type) { return type == FileType::kWaveform || type == FileType::kBand; }

// The type that a row is named after comes first.
constexpr auto kOrder = std::to_array<std::pair<FileType, RowKind>>({
    {FileType::kWaveform, RowKind::kRecording},
    {FileType::kBand, RowKind::kRecording},
    {FileType::kStackedWaveform, RowKind::kStack},
    {FileType::kStackResult, RowKind::kStack},
    {FileType::kTable, RowKind::kTable},
    {FileType::kSchedule, RowKind::kSchedule},
    {FileType::kBoxCalibration, RowKind::kBoxCalibration},
    {FileType::kSensorCalibration, RowKind::kSensorCalibration},
});

const FactedFile* FirstOf(std::span<const FactedFile> files, FileType type) {
  const auto found = std::find_if(files.begin(), files.end(),
                                  [type](const auto& file) { return file.file->type == type; });
  return found == files.end() ? nullptr : &*found;
}

constexpr std::int64_t kYear = std::int64_t{366} * 86400;

// Overlapping ones become one.
void AddStretches(const std::vector<TimeStretch>& more, SurveyRow* row) {
  std::vector<TimeStretch> all = row->stretches;
  all.insert(all.end(), more.begin(), more.end());
  std::sort(all.begin(), all.end(), [](const TimeStretch& a, const TimeStretch& b) {
    return std::pair(a.start, a.end) < std::pair(b.start, b.end);
  });
  row->stretches.clear();
  for (const TimeStretch& one : all) {
    if (row->stretches.empty() || one.start > row->stretches.back().end) {
      row->stretches.push_back(one);
    } else {
      row->stretches.back().end = std::max(row->stretches.back().end, one.end);
    }
  }
}

// Of files of one recording that are far apart the later count.
void AddTimes(const FileFacts& facts, SurveyRow* row) {
  row->odd_dates += facts.odd_dates;
  row->odd_date = row->odd_date == 0 ? facts.odd_date : row->odd_date;
  if (facts.start == 0) {
    return;
  }
  const bool is_later = row->start > 0 && facts.start > row->end + kFarApart;
  if (row->start > 0 && facts.end < row->start - kFarApart) {
    row->odd_dates += facts.records - facts.odd_dates;
    row->odd_date = facts.start;
    return;
  }
  if (is_later) {
    row->odd_dates += row->records - row->odd_dates + facts.odd_dates;
    row->odd_date = row->start;
    row->stretches.clear();
  }
  row->start = row->start == 0 || is_later ? facts.start : std::min(row->start, facts.start);
  row->end = is_later ? facts.end : std::max(row->end, facts.end);
  AddStretches(facts.stretches, row);
}

void NoteOtherBox(std::int32_t serial, SurveyRow* row) {
  if (row->other_box == 0 && serial != row->box) {
    row->other_box = serial;
  }
}

void AddSeries(const FileFacts& facts, SurveyRow* row) {
  row->box = row->box == 0 ? facts.serial : row->box;
  NoteOtherBox(facts.other_serial, row);
  NoteOtherBox(facts.serial, row);
  AddTimes(facts, row);
  row->channels = std::max(row->channels, facts.channels);
  row->rate = std::max(row->rate, facts.rate);
  std::vector<double> all;
  std::set_union(row->frequencies.begin(), row->frequencies.end(), facts.frequencies.begin(),
                 facts.frequencies.end(), std::back_inserter(all));
  row->frequencies = std::move(all);
  row->records += facts.records;
  row->bad += facts.bad;
  row->is_deep = row->is_deep || facts.is_deep != 0;
}

// Of several files a channel has the sum; equal or dead it is only where it is so in each.
void AddSamples(const FileFacts& facts, SurveyRow* row) {
  row->samples.resize(std::max(row->samples.size(), facts.samples.size()));
  for (std::size_t i = 0; i < facts.samples.size(); ++i) {
    const ChannelFacts& from = facts.samples[i];
    ChannelFacts& to = row->samples[i];
    to.least = to.samples == 0 ? from.least : std::min(to.least, from.least);
    to.most = to.samples == 0 ? from.most : std::max(to.most, from.most);
    to.samples += from.samples;
    to.saturated += from.saturated;
    to.sum = to.sum * 31 + from.sum;
  }
}

// Written after the recording: a table of a later day, or changed by hand.
bool IsNewer(const FileInfo& table, const FileInfo& series) {
  constexpr std::int64_t kTolerance = 600'000'000'000;  // boxes write it when they end
  return table.written - series.written > kTolerance;
}

void CompareHeaders(SurveyRow* row) {
  const TableFacts& table = *row->table;
  // The headers keep 16 bits of a serial number.
  const bool is_box =
      static_cast<std::uint16_t>(table.serial) == static_cast<std::uint16_t>(row->box);
  if (table.serial != 0 && (row->box == 0 || is_box)) {
    row->box = table.serial;
  } else if (table.serial != 0) {
    row->differs.append("box ")
        .append(FormatInt(row->box))
        .append(" in the records, ")
        .append(FormatInt(table.serial))
        .append(" in the table");
  }
  if (table.counted != 0 && row->channels != 0 && table.counted != row->channels) {
    row->differs.append(row->differs.empty() ? "" : "; ")
        .append(FormatInt(row->channels))
        .append(" channels in the records, ")
        .append(FormatInt(table.counted))
        .append(" in the table");
  }
}

void AddTable(const FactedFile& file, const FileInfo* series, SurveyRow* row) {
  row->table_state = TableState::kUnreadable;
  if (file.facts.table) {
    row->table = std::make_shared<const TableFacts>(*file.facts.table);
    const bool is_newer = series != nullptr && IsNewer(file.file->info, *series);
    row->table_state = is_newer ? TableState::kNewer : TableState::kThere;
    CompareHeaders(row);
  }
}

// Receivers that know the time by satellites are younger.
void JudgeClock(SurveyRow* row) {
  constexpr std::int64_t kFirst = 946'684'800;  // 2000-01-01
  const TableFacts* const table = row->table.get();
  const bool has_plan =
      table != nullptr && table->plan_start > 0 && table->plan_end > table->plan_start;
  // After the plan it is the plan that is old.
  row->has_wrong_clock =
      row->start > 0 && (has_plan ? row->end < table->plan_start - kYear : row->start < kFirst);
}

bool HasRecords(FileType type) {
  return IsSeries(type) || type == FileType::kStackedWaveform || type == FileType::kStackResult ||
         type == FileType::kBoxCalibration || type == FileType::kSensorCalibration;
}

void AddFile(const FactedFile& file, SurveyRow* row) {
  row->files.push_back({file.file->type, file.file->name, file.shown, file.file->info, {}});
  if (!file.facts.failure.empty()) {
    row->failure.append(row->failure.empty() ? "" : "; ")
        .append(file.shown.substr(file.shown.rfind('/') + 1))
        .append(": ")
        .append(file.facts.failure);
  }
  const FileType type = file.file->type;
  const bool has_scans = IsSeries(type) || type == FileType::kStackedWaveform;
  const bool is_empty = HasRecords(type) && file.facts.failure.empty() &&
                        (has_scans ? file.facts.scans : file.facts.records) == 0;
  if (is_empty) {
    row->empty.push_back(file.shown);
  } else if (file.facts.is_cut != 0) {
    row->cut.push_back(file.shown);
  }
  if (file.facts.blank > 0) {
    row->blank.emplace_back(file.shown, file.facts.blank);
  }
}

// Names that differ in case only, of a file and its copy.
bool AreTwins(const FoundFile& a, const FoundFile& b) {
  return a.type != FileType::kText && EqualsWithoutCase(a.name, b.name);
}

// One name of what both are converted to: that of bands has the last digit of theirs only. A
// waveform and its table have one too, as all recordings do.
bool Clash(const FoundFile& a, const FoundFile& b) {
  return AreTwins(a, b) || (IsSeries(a.type) && IsSeries(b.type) &&
                            EqualsWithoutCase(TsTextName(a.name), TsTextName(b.name)));
}

int OrderOf(const FoundFile& file) {
  const auto* const place = std::find_if(kOrder.begin(), kOrder.end(),
                                         [&](const auto& pair) { return pair.first == file.type; });
  return static_cast<int>(place - kOrder.begin());
}

}  // namespace

std::string_view RowKindName(RowKind kind) {
  constexpr std::array<std::string_view, 6> kNames = {
      "recording", "stack", "table", "schedule", "box calibration", "sensor calibration"};
  return kNames[static_cast<std::size_t>(kind)];
}

std::string_view MethodName(std::int32_t tech) {
  constexpr std::array<std::string_view, 7> kNames = {"",      "SIP",    "TDIP", "TDEM",
                                                      "CSAMT", "MT/AMT", "FDEM"};
  return tech >= 1 && tech <= 6 ? kNames[static_cast<std::size_t>(tech)] : "";
}

std::string ClockText(const TableFacts& table) {
  constexpr std::array<std::string_view, 5> kTexts = {
      "Uninitialized", "Based on CPU", "Synch in progress", "Aligned to OCXO", "Locked to GPS"};
  if (table.has_status == 0) {
    return {};
  }
  return std::string(table.clock >= 0 && table.clock < 5
                         ? kTexts[static_cast<std::size_t>(table.clock)]
                         : "Unknown");
}

std::string FrequencyText(const SurveyRow& row) {
  if (row.frequencies.empty()) {
    return {};
  }
  std::string text = FormatReal(row.frequencies.front(), 6);
  if (row.frequencies.size() > 1) {
    text.append(" to ").append(FormatReal(row.frequencies.back(), 6)).append(" (");
    text.append(FormatInt(row.frequencies.size())).append(")");
  }
  return text;
}

std::string CalibrationText(const SurveyRow& row) {
  std::string text;
  for (const RowCalibration& one : row.calibrations) {
    text.append(text.empty() ? "" : ", ").append(one.name);
    if (!one.is_found) {
      text.append(one.fault.empty() ? " missing" : " of no use");
    } else if (one.age_days) {
      text.append(" (").append(FormatInt(*one.age_days)).append(" days)");
    }
  }
  return text;
}

std::string_view TableStateName(TableState state) {
  constexpr std::array<std::string_view, 5> kNames = {"", "there", "missing", "unreadable",
                                                      "newer"};
  return kNames[static_cast<std::size_t>(state)];
}

double SurveyRow::SaturatedShare() const {
  double share = 0;
  for (const ChannelFacts& channel : samples) {
    if (channel.samples > 0) {
      share = std::max(
          share, static_cast<double>(channel.saturated) / static_cast<double>(channel.samples));
    }
  }
  return share;
}

std::vector<int> SurveyRow::DeadChannels() const {
  std::vector<int> dead;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    if (samples[i].IsDead()) {
      dead.push_back(static_cast<int>(i) + 1);
    }
  }
  return dead;
}

std::vector<std::pair<int, int>> SurveyRow::EqualChannels() const {
  std::vector<std::pair<int, int>> equal;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    for (std::size_t j = i + 1; j < samples.size(); ++j) {
      if (samples[i].sum == samples[j].sum && samples[i].samples == samples[j].samples &&
          samples[i].samples > 0 && !samples[i].IsDead()) {
        equal.emplace_back(static_cast<int>(i) + 1, static_cast<int>(j) + 1);
      }
    }
  }
  return equal;
}

std::vector<std::vector<const FoundFile*>> GroupFiles(std::span<const FoundFile> files) {
  // Boxes write upper case, copies often have lower case.
  std::map<std::string, std::vector<const FoundFile*>> groups;
  for (const FoundFile& file : files) {
    groups[UpperCase(StemOf(file))].push_back(&file);
  }
  std::vector<std::vector<const FoundFile*>> result;
  for (auto& [stem, members] : groups) {
    std::sort(members.begin(), members.end(), [](const FoundFile* a, const FoundFile* b) {
      return std::pair(OrderOf(*a), std::pair(a->name.size(), a->name)) <
             std::pair(OrderOf(*b), std::pair(b->name.size(), b->name));
    });
    result.push_back(std::move(members));
  }
  return result;
}

std::optional<SurveyRow> MakeRow(std::span<const FactedFile> files) {
  SurveyRow row;
  const FactedFile* first = nullptr;
  for (const auto& [type, kind] : kOrder) {
    if (first = FirstOf(files, type); first != nullptr) {
      row.kind = kind;
      break;
    }
  }
  if (first == nullptr) {
    return std::nullopt;
  }
  row.name = first->shown;
  const std::size_t slash = first->shown.rfind('/');
  row.folder = slash == std::string::npos ? "." : first->shown.substr(0, slash);
  const FileInfo* series = nullptr;
  for (std::size_t i = 0; i < files.size(); ++i) {
    const FactedFile& file = files[i];
    AddFile(file, &row);
    const auto before = files.subspan(0, i);
    if (std::any_of(before.begin(), before.end(),
                    [&](const FactedFile& other) { return Clash(*other.file, *file.file); })) {
      row.clashes.push_back(file.shown);
    }
    if (std::any_of(before.begin(), before.end(),
                    [&](const FactedFile& other) { return AreTwins(*other.file, *file.file); })) {
      continue;
    }
    if (IsSeries(file.file->type) || (row.kind != RowKind::kRecording && &file == first)) {
      AddSeries(file.facts, &row);
      AddSamples(file.facts, &row);
    } else if (file.file->type == FileType::kStackedWaveform && file.facts.serial != 0) {
      NoteOtherBox(file.facts.serial, &row);
    }
    if (IsSeries(file.file->type) &&
        (series == nullptr || series->written < file.file->info.written)) {
      series = &file.file->info;
    }
  }
  if (row.IsRecording()) {
    row.table_state = TableState::kMissing;
  }
  if (const FactedFile* table = FirstOf(files, FileType::kTable); table != nullptr) {
    AddTable(*table, series, &row);
  }
  if (row.IsRecording()) {
    JudgeClock(&row);
  }
  return row;
}

}  // namespace orvane
