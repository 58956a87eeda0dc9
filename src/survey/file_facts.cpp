// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/file_facts.h"

#include <algorithm>
#include <cmath>

#include "base/checksum.h"
#include "base/latin1.h"
#include "base/number_text.h"
#include "calibration/cal_reader.h"
#include "files/path_text.h"
#include "spectra/calibrated_channel.h"
#include "stepping/tfs_file.h"
#include "table/box_keys.h"
#include "table/param_time.h"
#include "table/tech.h"
#include "timeseries/record_stats.h"
#include "timeseries/stack_result.h"
#include "timeseries/ts_file.h"

namespace orvane {
namespace {

// 0 for what is no date.
std::int64_t SecondsOf(const ParamTime& time) {
  const bool is_date = IsValid(time) && !HasNoDate(time);
  const std::uint32_t seconds = is_date ? ParamTimeToSeconds(time) : 0;
  return seconds == 0xFFFFFFFFU ? 0 : std::int64_t{seconds};
}

void NoteTime(std::int64_t start, std::int64_t end, FileFacts* facts) {
  if (start > 0) {
    facts->start = facts->start == 0 ? start : std::min(facts->start, start);
    facts->end = std::max(facts->end, end);
  }
}

// The dates of a file's records. A clock that was not set, or lost its time, is far off; no box
// pauses for a month within a file.
class RecordDates {
 public:
  void Note(std::int64_t start, std::int64_t end) {
    if (start <= 0) {
      ++undated_;
      return;
    }
    const auto near = std::find_if(spans_.begin(), spans_.end(), [&](const Span& span) {
      return start >= span.start - kFarApart && start <= span.end + kFarApart;
    });
    if (near != spans_.end()) {
      near->Add(start, end);
    } else if (spans_.size() < kMostSpans) {
      spans_.push_back({start, end, 1, {{start, end}}});
    } else {
      ++spans_.back().records;
    }
  }

  // Where as many are of one time as of another the later counts: clocks begin in the past.
  void Tell(FileFacts* facts) const {
    facts->odd_dates = undated_;
    const auto most =
        std::max_element(spans_.begin(), spans_.end(), [](const Span& a, const Span& b) {
          return std::pair(a.records, a.start) < std::pair(b.records, b.start);
        });
    for (auto span = spans_.begin(); span != spans_.end(); ++span) {
      if (span != most) {
        facts->odd_dates += span->records;
        facts->odd_date = facts->odd_date == 0 ? span->start : facts->odd_date;
      } else {
        facts->start = span->start;
        facts->end = span->end;
        facts->stretches = span->stretches;
      }
    }
  }

 private:
  static constexpr std::size_t kMostSpans = 16;

  struct Span {
    std::int64_t start;
    std::int64_t end;
    std::uint64_t records;
    std::vector<TimeStretch> stretches;

    void Add(std::int64_t more_start, std::int64_t more_end) {
      constexpr std::int64_t kPause = 60;
      constexpr std::size_t kMostStretches = 64;
      TimeStretch& last = stretches.back();
      if (more_start - last.end > kPause && stretches.size() < kMostStretches) {
        stretches.push_back({more_start, more_end});
      } else {
        last = {std::min(last.start, more_start), std::max(last.end, more_end)};
      }
      start = std::min(start, more_start);
      end = std::max(end, more_end);
      ++records;
    }
  };

  std::vector<Span> spans_;
  std::uint64_t undated_ = 0;
};

void NoteFrequency(double frequency, FileFacts* facts) {
  constexpr std::size_t kMost = 64;
  if (frequency > 0 && std::isfinite(frequency) && facts->frequencies.size() < kMost) {
    const auto place =
        std::lower_bound(facts->frequencies.begin(), facts->frequencies.end(), frequency);
    if (place == facts->frequencies.end() || *place != frequency) {
      facts->frequencies.insert(place, frequency);
    }
  }
}

void NoteRecord(const TsPlace& place, bool is_band, RecordDates* dates, FileFacts* facts) {
  const TsHeader& header = place.header;
  ++facts->records;
  facts->bad += !is_band && header.IsBad() ? 1 : 0;
  facts->scans += place.scans_held;
  facts->serial = facts->serial == 0 ? std::int32_t{header.box} : facts->serial;
  if (facts->other_serial == 0 && header.box != 0 && header.box != facts->serial) {
    facts->other_serial = header.box;
  }
  facts->channels = std::max<std::int32_t>(facts->channels, header.channels);
  const double rate = SampleRate(header);
  facts->rate = std::max(facts->rate, rate);
  const std::int64_t start = SecondsOf(header.time);
  const double length = rate > 0 ? std::ceil(place.scans_held / rate) : 0;
  dates->Note(start, start + static_cast<std::int64_t>(length));
  NoteFrequency(header.frequency, facts);
  facts->is_cut = facts->is_cut != 0 || place.is_cut ? 1 : 0;
}

void NoteSamples(const RecordStats& stats, bool is_band, FileFacts* facts) {
  if (!is_band && stats.place.header.IsBad()) {
    return;  // what is left out anyway
  }
  facts->samples.resize(std::max(facts->samples.size(), stats.channels.size()));
  for (std::size_t i = 0; i < stats.channels.size(); ++i) {
    const ChannelStats& from = stats.channels[i];
    ChannelFacts& to = facts->samples[i];
    to.least = to.samples == 0 ? from.Min() : std::min(to.least, from.Min());
    to.most = to.samples == 0 ? from.Max() : std::max(to.most, from.Max());
    to.samples += from.count;
    to.saturated += from.saturated;
    for (const std::int64_t number :
         {std::int64_t{from.Min()}, std::int64_t{from.Max()}, from.sum, from.squares}) {
      to.sum = Checksum(BytesOf(Le<std::int64_t>(number)), to.sum);
    }
  }
}

// What follows the last whole header, and the end of the walk itself.
void NoteEnd(const TsWalker& walker, std::uint64_t next, FileFacts* facts) {
  facts->is_cut = facts->is_cut != 0 || next + facts->blank < walker.End() ? 1 : 0;
  if (!walker.Outcome()) {
    facts->failure = PrintableUtf8(walker.Outcome().Message());
  }
}

void ReadSeries(TsHeaderSize size, const ReadingOptions& options, const RandomFile& file,
                FileFacts* facts) {
  const bool is_band = size == TsHeaderSize::kBand;
  facts->header_size = static_cast<std::int32_t>(BytesIn(size));
  TsWalker walker(&file, size);
  TsPlace place;
  RecordDates dates;
  std::uint64_t next = 0;
  while (!options.stopped() && walker.Next(&place)) {
    if (IsBlank(place.header)) {
      facts->blank = walker.End() - place.offset;
      break;
    }
    NoteRecord(place, is_band, &dates, facts);
    next = place.next;
  }
  dates.Tell(facts);
  NoteEnd(walker, next, facts);
  if (!options.is_deep || options.stopped()) {
    return;
  }
  const Result<> done =
      StatsOfRecords(file, TsWalker(&file, size, walker.End() - facts->blank), {1, options.stopped},
                     [&](const RecordStats& stats) { NoteSamples(stats, is_band, facts); });
  facts->is_deep = 1;
  if (!done) {
    facts->failure = PrintableUtf8(done.Message());
  }
}

void ReadSeriesFile(FileType type, const std::filesystem::path& path, const ReadingOptions& options,
                    FileFacts* facts) {
  RandomFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    facts->failure = PrintableUtf8(opened.Message());
    return;
  }
  TsHeaderSize size = TsHeaderSize::kFull;
  if (type == FileType::kBand) {
    size = TsHeaderSize::kBand;
  } else if (type == FileType::kWaveform) {
    size = options.header_size ? *options.header_size : FittingHeaders(file, options.stopped);
    facts->is_guessed = options.header_size ? 0 : 1;
  }
  ReadSeries(size, options, file, facts);
}

std::string TextIn(const RecordingHeader& header, std::string_view key) {
  return PrintableLatin1(SettingText(header, key));
}

// Channels that are not switched on record nothing; a box in reserve has only such. Tables of
// version 1 have no switches.
std::int32_t RecordedChannels(const RecordingHeader& header, int number, std::int32_t channels,
                              bool has_switches) {
  if (!has_switches) {
    return channels;
  }
  std::int32_t recorded = 0;
  for (int channel = 1; channel <= std::min(channels, kMostBoxChannels); ++channel) {
    std::string key = "FLAG";
    key.append(FormatInt(number)).append("R").append(FormatInt(channel));
    recorded += SettingInt(header, key) != 0 ? 1 : 0;
  }
  return recorded;
}

void NoteBoxes(const RecordingHeader& header, TableFacts* table) {
  int number = 0;
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    const std::int32_t serial = SettingInt(header, keys.serial);
    const std::int32_t channels =
        RecordedChannels(header, ++number, SettingInt(header, keys.channels), table->version != 1);
    if (serial > 0 && channels > 0) {
      table->boxes.push_back({serial, channels, BoxRole::kAuxiliary});
    }
  }
  // The same boxes as the list of boxes of the dialogs has for the method.
  if (const std::int32_t serial = SettingInt(header, "SNTX");
      serial > 0 && table->method != kMtAmt) {
    table->boxes.push_back({serial, 1, BoxRole::kTransmitter});
  }
  if (const std::int32_t serial = SettingInt(header, "SNNR");
      serial > 0 && HasReferenceBox(static_cast<Tech>(table->method))) {
    table->boxes.push_back({serial, 2, BoxRole::kReference});
  }
}

void NoteSensors(RecordingHeader* header, TableFacts* table) {
  header->channels = kMostChannels;
  for (int channel = 1; channel <= kMostChannels; ++channel) {
    const SensorNeed need = SensorNeedOf(*header, channel);
    if (need.kind != 0) {
      table->sensors.push_back(
          {channel, need.kind, need.has_number ? PrintableLatin1(need.unit) : std::string()});
    }
  }
}

// A table that a box has written says when it recorded or when it last knew the time.
bool HasStatus(const RecordingHeader& header) {
  return SettingInt(header, "TOTL") > 0 ||
         SecondsOf(TimeParam(header.settings.Table(), "FTIM")) > 0 ||
         SecondsOf(TimeParam(header.settings.Table(), "LFIX")) > 0;
}

void ReadTable(const std::filesystem::path& path, FileFacts* facts) {
  RecordingHeader header;
  TblReport report;
  if (header.settings.Load(path, &report) != kOk) {
    // Without the path, which the user knows: results are the same wherever a survey lies.
    const std::string begin = PathText(path).append(": ");
    const bool has_path = report.message.starts_with(begin);
    facts->failure = PrintableUtf8(report.message.substr(has_path ? begin.size() : 0));
    return;
  }
  facts->is_cut = report.cut_at > 0 ? 1 : 0;
  TableFacts& table = facts->table.emplace();
  const ParamTable& values = header.settings.Table();
  table.version = report.version;
  table.firmware = PrintableLatin1(header.settings.Version());
  table.is_old = header.settings.IsOldVersion() ? 1 : 0;
  table.serial = SettingInt(header, "SNUM");
  table.method = TechOf(values);
  table.hardware = TextIn(header, "HW");
  table.line = TextIn(header, "LINE");
  table.site = TextIn(header, "SITE");
  table.counted = SettingInt(header, kCountedChannels);
  table.channels = MainBoxChannels(values);
  table.plan_start = SecondsOf(TimeParam(values, "STIM"));
  table.plan_end = SecondsOf(TimeParam(values, "ETIM"));
  table.has_status = HasStatus(header) ? 1 : 0;
  table.recorded = SettingInt(header, "TOTL");
  table.first = SecondsOf(TimeParam(values, "FTIM"));
  table.fix = SecondsOf(TimeParam(values, "LFIX"));
  table.clock = SettingInt(header, "CLST");
  table.disk = SettingInt(header, "DISK");
  NoteBoxes(header, &table);
  NoteSensors(&header, &table);
  table.place = GridPlaceOf(values);
  table.geo = GeoPlaceOf(values);
  facts->serial = table.serial;
}

void ReadStack(const std::filesystem::path& path, const ReadingOptions& options, FileFacts* facts) {
  StackReader reader;
  const Result<> opened = reader.Open(path);
  StackRecord record;
  while (opened && !options.stopped() && reader.Next(&record)) {
    ++facts->records;
    const std::int64_t time = SecondsOf(record.header.time);
    NoteTime(time, time, facts);
  }
  facts->is_cut = opened && reader.Outcome() && reader.IsCut() ? 1 : 0;
  facts->failure = PrintableUtf8(opened ? reader.Outcome().Message() : opened.Message());
}

void ReadCalibration(const std::filesystem::path& path, FileFacts* facts) {
  CalReader reader;
  CalHeader header;
  const Result<> opened = reader.Open(path);
  if (!opened || !reader.TakeHeader(&header)) {
    facts->failure = PrintableUtf8(!opened             ? opened.Message()
                                   : !reader.Outcome() ? reader.Outcome().Message()
                                                       : "no calibration: too short");
    return;
  }
  CalFileRecord record;
  while (facts->records < kMaxCalRecords && reader.TakeRecord(&record)) {
    ++facts->records;
  }
  facts->is_cut = reader.IsCut() ? 1 : 0;
  facts->failure = PrintableUtf8(reader.Outcome().Message());
  facts->serial = header.snum;
  facts->kind = header.ctyp;
  facts->channels = header.nchn;
  facts->start = facts->end = SecondsOf(header.utc);
}

void ReadSchedule(const std::filesystem::path& path, FileFacts* facts) {
  const ScheduleRows rows = ReadScheduleRows(path);
  facts->records = rows.rows.size();
  facts->is_cut = rows.is_cut ? 1 : 0;
  facts->failure = PrintableUtf8(rows.outcome ? rows.refusal : rows.outcome.Message());
}

}  // namespace

FileFacts ReadFacts(FileType type, const std::filesystem::path& path,
                    const ReadingOptions& options) {
  FileFacts facts;
  switch (type) {
    case FileType::kTable:
      ReadTable(path, &facts);
      break;
    case FileType::kWaveform:
    case FileType::kBand:
    case FileType::kStackedWaveform:
      ReadSeriesFile(type, path, options, &facts);
      break;
    case FileType::kStackResult:
      ReadStack(path, options, &facts);
      break;
    case FileType::kSchedule:
      ReadSchedule(path, &facts);
      break;
    case FileType::kBoxCalibration:
    case FileType::kSensorCalibration:
      ReadCalibration(path, &facts);
      break;
    case FileType::kText:
    case FileType::kOther:
      break;
  }
  return facts;
}

}  // namespace orvane
