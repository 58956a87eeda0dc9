// SPDX-License-Identifier: GPL-3.0-or-later
#include "evening_survey.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/number_text.h"
#include "calibration/cal_header.h"
#include "files/file_io.h"
#include "table/param_access.h"
#include "table/param_text.h"
#include "table/param_time.h"
#include "table/tbl_file.h"
#include "timeseries/ts_header.h"

namespace orvane::examples {
namespace {

constexpr int kMainBox = 2417;
constexpr std::array kBoxes = {kMainBox, 1203, 1207, 1211, 1215};
constexpr int kChannels = 3;
constexpr int kScans = 60;  // in a record, one a second
constexpr int kLate = 5;    // minutes

// What a box recorded in a day, and what went wrong with it.
struct Recording {
  int day = 1;
  int box = 0;
  std::string_view ending = {};  // of the name
  int first = 0;                 // minute after 07:00
  int minutes = 10;
  int bad = 0;                // records
  int saturated_channel = 0;  // from 1
  int dead_channel = 0;
  int equal_channel = 0;  // to the first
  int cut = 0;            // bytes
  int planned = 0;        // minute after 07:00 at which the plan of ten minutes begins
  int undated = 0;        // records, the last, by a clock that begins anew
  int foreign = 0;        // records, the last, of another box
  int zeros = 0;          // bytes after the records
  std::string_view version = "5.0";
  int clock = 4;
  int disk = 50'000'000;
  int counted = kChannels;
  bool has_table = true;
  bool has_waveform = true;
};

std::vector<Recording> Recordings() {
  return {
      {.day = 1, .box = 2417},
      {.day = 1, .box = 1203, .first = kLate, .minutes = 5},
      {.day = 1, .box = 1207, .bad = 1},
      {.day = 1, .box = 1211, .minutes = 4},
      {.day = 1, .box = 1211, .ending = "-2", .first = 7, .minutes = 3},
      {.day = 1, .box = 1215},
      {.day = 1, .box = 1215, .ending = "-2", .first = 9, .minutes = 2},
      {.day = 2, .box = 2417, .clock = 2},
      {.day = 2, .box = 1203, .saturated_channel = 1},
      {.day = 2, .box = 1207, .dead_channel = 2},
      {.day = 2, .box = 1211, .equal_channel = 3},
      {.day = 3, .box = 2417, .version = "5.1"},
      {.day = 3, .box = 1203, .minutes = 6, .disk = 300'000},
      {.day = 3, .box = 1207, .counted = 4},
      {.day = 3, .box = 1211, .has_table = false},
      {.day = 3, .box = 1215, .cut = 100},
      {.day = 2, .box = 1203, .ending = "-2", .minutes = 0, .planned = 20},
      {.day = 2, .box = 1207, .ending = "-2", .first = 20, .planned = 20, .undated = 1},
      {.day = 2, .box = 1211, .ending = "-2", .first = 20, .planned = 20, .foreign = 1},
      {.day = 3, .box = 1203, .ending = "-2", .first = 20, .planned = 20, .zeros = 1000},
      {.day = 3, .box = 1215, .ending = "-2", .planned = 20, .has_waveform = false},
  };
}

std::uint32_t Morning(int day) {
  return ParamTimeToSeconds(ParseParamTime("2026/11/20 07:00:00")) +
         static_cast<std::uint32_t>(day * kSecondsPerDay);
}

bool Set(ParamTable* table, std::string_view key, std::string_view text) {
  const ParamEntry* const entry = table->FindParam(key);
  const auto type = static_cast<ValueType>(entry == nullptr ? 0 : entry->type);
  const auto value = ParseParamValueStrictly(text, type);
  return entry != nullptr && value && table->SetParam(key, type, value->data()) == kOk;
}

// The main box's table names the others with their channels.
bool SetSpread(ParamTable* table) {
  bool done = true;
  for (int n = 1; n <= 4; ++n) {
    const std::string number = FormatInt(n);
    done = done && Set(table, "SN0" + number, FormatInt(kBoxes[static_cast<std::size_t>(n)])) &&
           Set(table, "NCHN" + number + "R", FormatInt(kChannels));
    for (int channel = 1; channel <= kChannels; ++channel) {
      done = done && Set(table, "FLAG" + number + "R" + FormatInt(channel), "1");
    }
  }
  return done;
}

// A column of dipoles to the north, 50 m further east each day.
bool SetPlaces(const Recording& recording, ParamTable* table) {
  constexpr int kDipole = 20;  // metres
  const auto box = std::find(kBoxes.begin(), kBoxes.end(), recording.box) - kBoxes.begin();
  const std::string east = FormatInt(400 + 50 * recording.day);
  bool done = true;
  for (int channel = 1; channel <= kChannels; ++channel) {
    const int south = 1200 + kDipole * (kChannels * static_cast<int>(box) + channel - 1);
    const std::string number = FormatInt(channel);
    done = done && Set(table, "EPOS" + number, east) && Set(table, "ENEG" + number, east) &&
           Set(table, "NPOS" + number, FormatInt(south)) &&
           Set(table, "NNEG" + number, FormatInt(south + kDipole));
  }
  return done;
}

bool FillTable(const Recording& recording, ParamTable* table) {
  const std::uint32_t start =
      Morning(recording.day) + static_cast<std::uint32_t>(60 * recording.planned);
  const auto time = [](std::uint32_t seconds) {
    return FormatParamTime(SecondsToParamTime(seconds));
  };
  bool done = table->BuildParamIndex() == kOk && Set(table, "SNUM", FormatInt(recording.box)) &&
              Set(table, "TECH", "2") && Set(table, "HW", "main6") &&
              Set(table, "LINE", "L1200N") &&
              Set(table, "SITE", "S0" + FormatInt(400 + 50 * recording.day) + "E") &&
              Set(table, "VER", recording.version) && Set(table, "STIM", time(start)) &&
              Set(table, "ETIM", time(start + 600)) && Set(table, "FSCV", "2.5") &&
              Set(table, "FREQ", "0.125") &&
              Set(table, "TOTL", FormatInt(std::max(recording.minutes, 1))) &&
              Set(table, "LFIX", time(start)) && Set(table, "CLST", FormatInt(recording.clock)) &&
              Set(table, "DISK", FormatInt(recording.disk)) &&
              Set(table, "TCHN", FormatInt(recording.counted)) &&
              // For the eyes of the crew alone.
              Set(table, "PPPPSWD", "wintergreen") && Set(table, "PHNE", "5550100");
  for (int channel = 1; channel <= kChannels; ++channel) {
    done = done && Set(table, "CHDEF" + FormatInt(channel), "Ex" + FormatInt(channel));
  }
  return done && SetPlaces(recording, table) && (recording.box != kMainBox || SetSpread(table));
}

std::int32_t SampleOf(const Recording& recording, int channel, int scan, std::uint32_t* random) {
  *random = *random * 1664525 + 1013904223;
  const int asked = channel == recording.equal_channel ? 1 : channel;
  const auto noise = static_cast<std::int32_t>((*random >> 16) % 2000);
  if (channel == recording.dead_channel) {
    return 0;
  }
  if (channel == recording.saturated_channel && scan == 30) {
    return 8388607;
  }
  // Its own for each channel; two wires in one have the same to the last bit.
  return recording.equal_channel > 0 ? asked * 1000 + scan * (asked + 6) : asked * 5000 + noise;
}

std::vector<std::byte> Waveform(const Recording& recording) {
  std::vector<std::byte> file;
  auto random = static_cast<std::uint32_t>(recording.box + recording.day);
  for (int minute = 0; minute < recording.minutes; ++minute) {
    TsHeader header;
    const int left = recording.minutes - minute;
    header.time =
        left <= recording.undated
            ? ParseParamTime("2000/01/01 00:00:00")
            : SecondsToParamTime(Morning(recording.day) +
                                 static_cast<std::uint32_t>(60 * (recording.first + minute)));
    header.box = static_cast<std::uint16_t>(left <= recording.foreign ? 1300 : recording.box);
    header.scans = std::uint16_t{kScans};
    header.channels = kChannels;
    header.status = minute < recording.bad ? TsHeader::kBadStatus : std::uint8_t{0};
    header.sample_width = 3;
    header.rate = std::uint16_t{1};
    header.frequency = 0.125;
    const auto bytes = BytesOf(header);
    file.insert(file.end(), bytes.begin(), bytes.end());
    for (int scan = 0; scan < kScans; ++scan) {
      for (int channel = 1; channel <= kChannels; ++channel) {
        const auto sample = static_cast<std::uint32_t>(SampleOf(recording, channel, scan, &random));
        for (const unsigned shift : {0U, 8U, 16U}) {
          file.push_back(static_cast<std::byte>(sample >> shift));
        }
      }
    }
  }
  file.resize(file.size() - static_cast<std::size_t>(recording.cut));
  file.resize(file.size() + static_cast<std::size_t>(recording.zeros));
  return file;
}

bool Told(const std::filesystem::path& path, const std::string& reason) {
  const std::string text = reason.empty() ? path.string() : FileMessage(path, reason);
  std::fprintf(reason.empty() ? stdout : stderr, "%s\n", text.c_str());
  return reason.empty();
}

bool Write(const std::filesystem::path& path, std::span<const std::byte> bytes) {
  return Told(path, WriteFile(path, bytes).Message());
}

bool WriteTable(const std::filesystem::path& path, const Recording& recording) {
  ParamTable table;
  TblReport report;
  if (!FillTable(recording, &table)) {
    return Told(path, "a setting of the table is refused");
  }
  static_cast<void>(SaveParamFile(&table, path, {}, &report));  // the report tells
  return Told(path, report.reason);
}

bool WriteRecording(const std::filesystem::path& root, const Recording& recording) {
  const auto folder = root / ("2026-11-2" + FormatInt(recording.day));
  const std::string name = FormatInt(recording.box).append(recording.ending);
  return MakeFolders(folder) &&
         (!recording.has_waveform || Write(folder / (name + ".TSS"), Waveform(recording))) &&
         (!recording.has_table || WriteTable(folder / (name + ".TBL"), recording));
}

// That of one box is missing, one is old, one says that it is another's.
bool WriteCalibrations(const std::filesystem::path& folder) {
  bool done = static_cast<bool>(MakeFolders(folder));
  for (const int box : kBoxes) {
    if (box == 1215) {
      continue;
    }
    CalHeader header;
    header.utc = ParseParamTime(box == 1203 ? "2025/03/02 10:00:00" : "2026/10/02 10:00:00");
    header.snum = static_cast<std::int16_t>(box == 1207 ? 1209 : box);
    header.nchn = std::int16_t{kChannels};
    header.ctyp = kBoxCal;
    const auto bytes = BytesOf(header);
    std::vector<std::byte> file(bytes.begin(), bytes.end());
    CalFileRecord record;
    record.frequency = 100.0F;
    const auto more = BytesOf(record).first(CalFileRecord::BytesFor(kChannels));
    file.insert(file.end(), more.begin(), more.end());
    done = done && Write(folder / (FormatInt(box) + ".CLB"), file);
  }
  return done;
}

bool Age(const std::filesystem::path& path, std::chrono::hours age) {
  std::error_code error;
  std::filesystem::last_write_time(path, std::filesystem::file_time_type::clock::now() - age,
                                   error);
  return Told(path, error ? error.message() : std::string());
}

bool WriteOddFiles(const std::filesystem::path& root) {
  constexpr std::string_view kText = "not a table\n";
  constexpr std::string_view kOld = "of an earlier waveform\n";
  const auto first = root / "2026-11-21";
  const Recording main{.day = 1, .box = kMainBox};
  return Write(root / "2026-11-23" / "Notes.tbl", std::as_bytes(std::span(kText))) &&
         Write(first / "1207.txt", std::as_bytes(std::span(kOld))) &&
         Age(first / "1207.txt", std::chrono::hours(1)) &&
         // Two names that one computer takes for the same.
         WriteTable(first / "Startup.tbl", main) && WriteTable(first / "STARTUP.TBL", main) &&
         // The table was changed an hour after the recording.
         Age(first / "2417.TSS", std::chrono::hours(1));
}

}  // namespace

bool WriteEveningSurvey(const std::filesystem::path& root) {
  bool done = WriteCalibrations(root / "Calibration");
  for (const Recording& recording : Recordings()) {
    done = done && WriteRecording(root, recording);
  }
  return done && WriteOddFiles(root);
}

}  // namespace orvane::examples
