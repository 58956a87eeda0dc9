// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "calibration/cal_curves.h"
#include "calibration/cal_text.h"
#include "response/cal_file.h"
#include "stepping/schedule_text.h"
#include "stepping/tfs_file.h"
#include "support/batch_help.h"
#include "support/cal_bytes.h"
#include "support/tfs_bytes.h"
#include "support/ts_bytes.h"
#include "sweeps/sweep.h"
#include "table/table_text.h"
#include "table/tbl_file.h"
#include "timeseries/restack.h"
#include "timeseries/stack_csv.h"
#include "timeseries/time_series_text.h"
#include "timeseries/ts_file.h"

namespace orvane::testing {
namespace {

using std::filesystem::path;

// Whether a file can be converted; a thread for each of thousands would take most of the time.
bool Done(const Conversion& conversion, const path& file) {
  return RunJob(conversion, file, file.parent_path() / "converted").IsDone();
}

std::string Text(std::size_t number) { return std::to_string(number); }

std::string ReadTable(const path& file) {
  ParamTable table;
  EXPECT_EQ(table.BuildParamIndex(), kOk);
  TblReport report;
  const Status status = LoadParamFile(&table, file, &report);
  EXPECT_EQ(Done(TableText(), file), status == kOk && report.records > 0);
  return std::to_string(status) + ", " + Text(report.records) + " records";
}

std::string TableRule(const std::string& bytes) {
  if (bytes.size() < 32) {
    return "173, 0 records";
  }
  if (bytes.substr(0, 8) == std::string("\x03\0.TBL2%", 8)) {
    return "0, " + Text(bytes.size() / 32 - 1) + " records";
  }
  for (std::size_t i = 0; i < 4; ++i) {
    if (bytes[i] != '\0' && std::isalnum(static_cast<unsigned char>(bytes[i])) == 0) {
      return "174, 0 records";
    }
  }
  return bytes[4] == '\0' ? "0, " + Text(bytes.size() / 25) + " records" : "174, 0 records";
}

TEST(Sweeps, Tables) {
  const TempDir dir;
  RunSweep({"TBL version 1", "a.tbl",
            RecordV1("SITN", 0, StrPT, "abc") + RecordV1("TECH", 0, IntPT, IntBytes(3)) +
                RecordV1("LINE", 0, StrPT, "abcdefghijkl"),
            25, ReadTable, TableRule},
           dir);
  RunSweep(
      {"TBL version 2", "a.tbl",
       HeaderV2() + RecordV2("SITN", 0, StrPT, "abc") + RecordV2("TECH", 0, IntPT, IntBytes(3)), 64,
       ReadTable, TableRule},
      dir);
}

std::string ReadSchedule(const path& file) {
  ScheduleTable table;
  ScheduleReport report;
  const bool is_read = ReadScheduleFile(file, &table, &report);
  EXPECT_EQ(Done(ScheduleText(), file), report.rows > 0);
  return (is_read ? "read, " : "refused, ") + Text(static_cast<std::size_t>(report.rows));
}

std::string ScheduleRule(const std::string& bytes) {
  std::size_t rows = 0;
  bool is_good = true;
  std::int32_t before = 0;
  for (; 22 * rows + 22 <= bytes.size(); ++rows) {
    const auto number = [&](std::size_t at, std::size_t size) {
      return NumberAt(bytes, 22 * rows + at, size);
    };
    const auto end = static_cast<std::int32_t>(number(0, 4));
    const auto frequency = std::bit_cast<double>(number(6, 8));
    const auto current = std::bit_cast<double>(number(14, 8));
    if (end == 0) {
      break;
    }
    is_good = is_good && end > before && end <= 86400 && number(4, 2) < 12 &&
              std::isfinite(frequency) && frequency >= 0 && current >= 0 && current <= 200;
    before = end;
  }
  return (is_good && rows > 0 ? "read, " : "refused, ") + Text(rows);
}

TEST(Sweeps, Schedules) {
  RunSweep({"TFS", "a.TFS", StepBytes(60, 4, 8, 5) + StepBytes(120, 4, 16, 5), 22, ReadSchedule,
            ScheduleRule},
           TempDir());
}

std::string ReadWaveform(const path& file, const TsFile::Options& options) {
  TsFile waveform;
  if (!waveform.Open(file, options)) {
    return "not opened";
  }
  std::string outcome;
  bool has_whole = false;
  bool can_be_stacked = false;
  CTsRec record;
  for (std::uint64_t number = 1; number <= waveform.Count(); ++number) {
    EXPECT_EQ(waveform.Read(number, &record).Message(), "");
    EXPECT_EQ(record.Scans(), record.Place().scans_held);
    EXPECT_EQ(record.Held().size(), record.Scans() * record.Channels());
    has_whole = has_whole || !record.Place().is_cut;
    can_be_stacked =
        can_be_stacked || (!record.Place().is_cut && !std::isnan(record.Header().frequency));
    outcome += Text(record.Scans()) + " of " + Text(record.Header().scans) + ", ";
  }
  EXPECT_EQ(Done(TimeSeriesText(waveform.HeaderSize()), file), has_whole);
  if (waveform.HeaderSize() == TsHeaderSize::kFull && file.extension() == ".TSS") {
    EXPECT_EQ(Done(Restack(), file), can_be_stacked);
  }
  return outcome;
}

// The records that a file has, and the whole scans that it holds of each.
std::string WaveformRule(const std::string& bytes, std::size_t header) {
  std::string outcome;
  for (std::size_t at = 0; at + header <= bytes.size();) {
    const std::size_t scans = NumberAt(bytes, at + 10, 2);
    const std::size_t channels = NumberAt(bytes, at + 12, 1);
    const std::size_t scan = channels * NumberAt(bytes, at + 17, 1);
    const std::size_t trailing = header == 32 ? 0 : NumberAt(bytes, at + 27, 1);
    at += header;
    const std::size_t whole = scan > 0        ? std::min(scans, (bytes.size() - at) / scan)
                              : channels == 0 ? scans
                                              : 0;
    outcome += Text(whole) + " of " + Text(scans) + ", ";
    if (whole < scans) {
      break;
    }
    at += (scans + trailing) * scan;
  }
  return outcome;
}

TEST(Sweeps, Waveforms) {
  struct Case {
    const char* format;
    const char* name;
    TsHeaderSize header;
  };
  for (const auto& [format, name, header] :
       {Case{"TSS", "A.TSS", TsHeaderSize::kFull},
        Case{"TSS, older version", "A.TSS", TsHeaderSize::kOld},
        Case{"TSK", "A.TSK", TsHeaderSize::kFull}, Case{"TSn", "A.TS3", TsHeaderSize::kBand}}) {
    const TempDir dir;
    const std::size_t bytes = BytesIn(header);
    WriteAll(dir / "A.TBL",
             HeaderV2() + RecordV2("VER", 0, StrPT, header == TsHeaderSize::kOld ? "4.2b" : "5.0"));
    const TsBytes record{.channels = 2,
                         .samples = {1, 2, 3, 4, 5, 6},
                         .trailing = header == TsHeaderSize::kBand ? 0 : 1,
                         .header_size = bytes};
    RunSweep({format, name, record.Bytes() + record.Bytes(), bytes,
              [](const path& file) { return ReadWaveform(file, {}); },
              [bytes](const std::string& file) { return WaveformRule(file, bytes); }},
             dir);
  }
}

// The waveform is there and right: only its companion is not.
TEST(Sweeps, Companions) {
  const TempDir dir;
  const std::string waveform = TsBytes{.samples = {1, 2}}.Bytes();
  WriteAll(dir / "A.TSS", waveform);
  RunSweep({"companion", "A.TBL", HeaderV2() + RecordV2("VER", 0, StrPT, "5.0"), 64,
            [&dir](const path&) {
              TsFile file;
              const Result<> opened = file.Open(dir / "A.TSS");
              const std::string& why = opened.Message();
              return opened ? std::string("0") : why.substr(why.size() - 4, 3);
            },
            [](const std::string& bytes) {
              return TableRule(bytes).substr(0, TableRule(bytes).find(','));
            }},
           dir);
}

std::string ReadStacks(const path& file) {
  StackReader reader;
  EXPECT_EQ(reader.Open(file).Message(), "");
  StackRecord record;
  std::size_t records = 0;
  while (reader.Next(&record)) {
    ++records;
  }
  for (const StackDomain domain : {StackDomain::kTime, StackDomain::kFrequency}) {
    EXPECT_EQ(Done(StackCsv(domain), file), records > 0);
  }
  return Text(records) + (reader.IsCut() ? ", cut" : "");
}

std::string StackRule(const std::string& bytes) {
  std::size_t at = 0;
  std::size_t records = 0;
  while (at + 70 <= bytes.size()) {
    const std::size_t next = at + 70 + NumberAt(bytes, at + 18, 1) +
                             NumberAt(bytes, at + 19, 1) * NumberAt(bytes, at + 20, 1);
    if (next > bytes.size()) {
      break;
    }
    at = next;
    ++records;
  }
  return Text(records) + (at < bytes.size() ? ", cut" : "");
}

TEST(Sweeps, StackResults) {
  const std::string head = std::string("\0\5\16\36\6\11\1\24", 8) + "????" + Little(7, 2) +
                           "\1\12??" + Little(20, 1) + Little(8, 1) + Little(2, 1) + "?????" +
                           RealBytes(0.125) + Padded("TX", 36);
  const std::string record = head + std::string(20, '?') + std::string(16, '\0');
  RunSweep({"TRS", "a.trs", record + record, 70, ReadStacks, StackRule}, TempDir());
}

std::string ReadCalibration(int kind, const path& file) {
  CalReport report;
  const auto cal = ReadCalFileAt(kind, file, &report);
  const auto curves = LoadCalCurves(file);
  const std::string bytes = ReadAll(file);
  const std::size_t channels = bytes.size() < 132 ? 0 : NumberAt(bytes, 10, 2);
  EXPECT_EQ(Done(ExportCalToText(), file),
            channels >= 1 && channels <= 12 && bytes.size() >= 132 + 8 + 24 * channels);
  return std::to_string(report.status) + ", " + Text(cal == nullptr ? 0 : cal->records.size()) +
         (curves ? ", curves" : "");
}

std::string CalibrationRule(std::size_t kind, const std::string& bytes) {
  if (bytes.size() < 132) {
    return "1240, 0";
  }
  const std::size_t channels = NumberAt(bytes, 10, 2);
  const bool is_possible = channels >= 1 && channels <= 12;
  const char* curves = is_possible ? ", curves" : "";
  if (NumberAt(bytes, 16, 1) != kind) {
    return std::string("1230, 0") + curves;
  }
  const std::size_t records = is_possible ? (bytes.size() - 132) / (8 + 24 * channels) : 0;
  return (!is_possible ? "1240, " : records == 0 ? "1247, " : "0, ") + Text(records) + curves;
}

TEST(Sweeps, Calibrations) {
  for (const int kind : {1, 2, 3}) {
    const std::string file = CalHeaderBytes(kind, kind == 1 ? 2 : 1) +
                             CalRecordBytes(kind, 100, 1, {1, 2, 3, 4, 5, 6}, kind == 1 ? 2 : 1) +
                             CalRecordBytes(kind, 10, 1, {1, 2, 3, 4, 5, 6}, kind == 1 ? 2 : 1) +
                             CalRecordBytes(kind, 1, 1, {1, 2, 3, 4, 5, 6}, kind == 1 ? 2 : 1);
    RunSweep({kind == 1   ? "CLB"
              : kind == 2 ? "CLC, coil"
                          : "CLC, current sensor",
              kind == 1 ? "a.CLB" : "a.CLC", file, 132 + 8,
              [kind](const path& path) { return ReadCalibration(kind, path); },
              [kind](const std::string& bytes) {
                return CalibrationRule(static_cast<std::size_t>(kind), bytes);
              }},
             TempDir());
  }
}

}  // namespace
}  // namespace orvane::testing
