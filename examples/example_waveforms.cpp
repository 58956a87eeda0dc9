// SPDX-License-Identifier: GPL-3.0-or-later
#include "example_waveforms.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "files/file_io.h"
#include "table/param_access.h"
#include "table/param_text.h"
#include "table/param_time.h"
#include "table/tbl_file.h"
#include "timeseries/ts_header.h"

namespace orvane::examples {
namespace {

constexpr double kFullScale = 2.5;  // volts
constexpr double kNominal = 1000;   // sensitivity of the magnetic sensors
constexpr double kCounts = 8388607;

// Of the bands of an MT recording; in 600 scans each but the first holds whole periods of 4 Hz.
constexpr std::array kBandRates = {24000.0, 2400.0, 150.0, 15.0};
constexpr double kBandFrequency = 4;
// Of the recording of an older version, whose headers have no room for it.
constexpr double kOlderFrequency = 8;

using Volts = std::function<double(std::size_t channel, double frequency, double seconds)>;

// A recording: as many records as there are frequencies.
struct Recording {
  std::vector<std::string> channels;
  std::vector<double> frequencies;
  Volts volts;
  double scans_per_period = 128;
  std::size_t scans = 512;
  std::size_t bad_record = 0;  // from 1; 0: none
};

double Phase(double frequency, double seconds) {
  const double periods = frequency * seconds;
  return periods - std::floor(periods);
}

double Sine(double frequency, double seconds) {
  return std::sin(2 * std::numbers::pi * frequency * seconds);
}

// On, off, reversed, off: each a quarter of the period; what is off decays.
double SwitchedOff(double frequency, double seconds, double decay) {
  const double phase = Phase(frequency, seconds);
  const double half = phase < 0.5 ? phase : phase - 0.5;
  const double value = half < 0.25 ? 1 : decay * std::exp(-(half - 0.25) * 14);
  return phase < 0.5 ? value : -value;
}

double Mains(double seconds) { return 2e-5 * Sine(50, seconds); }

Recording RecordingOf(int tech) {
  // The box has six inputs and records all of them.
  const std::vector<std::string> electric = {"Ex1", "Ex2", "Ex3", "Ex4", "Ex5", "Ex6"};
  const std::vector<std::string> mixed = {"Ex1", "Ex2", "Ex3", "Hx", "Hy", "Hz"};
  const auto less = [](std::size_t channel) { return 1.0 / static_cast<double>(channel + 1); };
  switch (tech) {
    case 1:
      return {
          electric, {8, 2, 0.5, 0.125}, [=](std::size_t channel, double frequency, double seconds) {
            const double lag = 0.01 * static_cast<double>(channel) / frequency;
            return 0.04 * less(channel) * Sine(frequency, seconds - lag) + Mains(seconds);
          }};
    case 2:
      return {electric,
              {0.125, 0.125, 0.125, 0.125},
              [=](std::size_t channel, double frequency, double seconds) {
                return 0.02 * less(channel) * SwitchedOff(frequency, seconds, 0.06) +
                       Mains(seconds);
              },
              256,
              1024,
              3};
    case 3:
      return {mixed,
              {25, 25, 25},
              [=](std::size_t channel, double frequency, double seconds) {
                const double size = channel < 3 ? 0.01 : 0.3;
                return size * static_cast<double>(channel % 3 + 1) *
                       SwitchedOff(frequency, seconds, 0.3);
              },
              256,
              1024};
    case 4:
      return {{"Ex1", "Ex2", "Ex3", "Ex4", "Ex5", "Hy"},
              {1, 16, 256, 4096},
              [=](std::size_t channel, double frequency, double seconds) {
                return (channel == 5 ? 0.2 : 0.003 * less(channel)) * Sine(frequency, seconds) +
                       Mains(seconds);
              }};
    case 5:
      return {{"Ex", "Ey", "", "Hx", "Hy", "Hz"},
              {0, 0},
              [](std::size_t channel, double, double seconds) {
                const double slow = Sine(7.8, seconds) + 0.6 * Sine(14.3, seconds + 0.01) +
                                    2 * Sine(0.9, seconds + 0.1 * static_cast<double>(channel));
                const double size = channel < 2 ? 2e-4 : channel < 3 ? 0 : 4e-3;
                return size * slow + Mains(seconds);
              },
              128,
              600};
    default:
      return {mixed,
              {128, 512, 2048, 8192},
              [=](std::size_t channel, double frequency, double seconds) {
                const double size = channel < 3 ? 0.02 : 0.5;
                return size * less(channel % 3) * Sine(frequency, seconds);
              }};
  }
}

// The rate as a box writes it: a 16-bit number with a unit.
void SetRate(double hertz, TsHeader* header) {
  const int unit_code = hertz > 6e5 ? -2 : hertz > 6e4 ? -1 : 0;
  header->rate_unit = static_cast<std::int8_t>(unit_code);
  const double unit = unit_code == -2 ? 100 : unit_code == -1 ? 10 : 1;
  header->rate = static_cast<std::uint16_t>(std::lround(std::max(hertz / unit, 1.0)));
}

class Writer {
 public:
  Writer(Recording recording, const ParamTable& table)
      : recording_(std::move(recording)), start_(TimeParam(table, "STIM")), table_(&table) {}

  std::vector<std::byte> File(TsHeaderSize header_size, double rate = 0) {
    std::vector<std::byte> file;
    for (std::size_t i = 0; i < recording_.frequencies.size(); ++i) {
      const double frequency = recording_.frequencies[i];
      TsHeader header = Header(i);
      SetRate(rate > 0        ? rate
              : frequency > 0 ? frequency * recording_.scans_per_period
                              : 2400,
              &header);
      if (header_size != TsHeaderSize::kFull) {
        header.frequency = 0;
      }
      const auto bytes = BytesOf(header).first(BytesIn(header_size));
      file.insert(file.end(), bytes.begin(), bytes.end());
      AppendSamples(header, frequency, header.IsBad(), &file);
    }
    return file;
  }

 private:
  TsHeader Header(std::size_t record) const {
    TsHeader header;
    header.time =
        SecondsToParamTime(ParamTimeToSeconds(start_) + 60 * static_cast<std::uint32_t>(record));
    header.box = std::uint16_t{2417};
    header.scans = static_cast<std::uint16_t>(recording_.scans);
    header.channels = static_cast<std::uint8_t>(recording_.channels.size());
    header.status = record + 1 == recording_.bad_record ? TsHeader::kBadStatus : std::uint8_t{0};
    header.sample_width = 3;
    header.frequency = recording_.frequencies[record];
    return header;
  }

  // A bad record is one whose amplifier was overdriven for a while.
  void AppendSamples(const TsHeader& header, double frequency, bool is_bad,
                     std::vector<std::byte>* file) {
    for (std::size_t scan = 0; scan < recording_.scans; ++scan) {
      const double seconds = static_cast<double>(scan) / SampleRate(header);
      for (std::size_t channel = 0; channel < recording_.channels.size(); ++channel) {
        const bool is_electric = recording_.channels[channel].starts_with('E');
        const double gain = std::pow(4.0, IntParam(*table_, is_electric ? "EGNC" : "HGNC"));
        const double noise = static_cast<double>(random_() % 2001) / 1000 - 1;
        double volts = recording_.volts(channel, frequency, seconds) + 1e-5 * noise;
        volts += is_bad && scan % 300 < 60 ? 1.5 : 0;
        const double counts = std::clamp(volts * gain / kFullScale * kCounts, -kCounts, kCounts);
        const auto sample = static_cast<std::uint32_t>(std::lround(counts));
        for (const unsigned shift : {0U, 8U, 16U}) {
          file->push_back(static_cast<std::byte>(sample >> shift));
        }
      }
    }
  }

  Recording recording_;
  ParamTime start_;
  const ParamTable* table_;
  std::mt19937 random_{2417};
};

// `frequency`: Hz, for records that name none; 0: each does.
ParamTable CompanionOf(const ParamTable& day, const std::vector<std::string>& names,
                       std::string_view version, double frequency) {
  ParamTable table = day;
  const auto set = [&table](const std::string& key, ValueType type, const ParamValue& value) {
    PutValue(&table, key, type, value);
  };
  const auto set_text = [&set](const std::string& key, std::string_view text) {
    ParamValue value{};
    std::copy(text.begin(), text.end(), value.begin());
    set(key, StrPT, value);
  };
  ParamValue value{};
  for (std::size_t i = 0; i < 8; ++i) {
    const std::string number = FormatInt(static_cast<int>(i) + 1);
    const std::string name = i < names.size() ? names[i] : "";
    set_text("CHDEF" + number, name);
    PutReal(name.starts_with('E') ? 900 + 130.0 * static_cast<double>(i) : 0, &value);
    set("RES" + number, FltPT, value);
  }
  set_text("VER", version);
  PutReal(kFullScale, &value);
  set("FSCV", FltPT, value);
  PutReal(kNominal, &value);
  set("HNOM", FltPT, value);
  if (frequency > 0) {
    PutReal(frequency, &value);
    set("FREQ", FltPT, value);
  }
  if (IntParam(day, "TECH") == 5) {
    for (std::size_t band = 0; band < kBandRates.size(); ++band) {
      PutInt(static_cast<int>(kBandRates[band]), &value);
      set("SRL" + FormatInt(static_cast<int>(band) + 1), IntPT, value);
    }
  }
  return table;
}

bool Told(const std::filesystem::path& path, const std::string& reason) {
  if (!reason.empty()) {
    std::fprintf(stderr, "%s\n", FileMessage(path, reason).c_str());
    return false;
  }
  std::printf("%s\n", path.string().c_str());
  return true;
}

bool WriteTable(const std::filesystem::path& path, ParamTable table) {
  TblReport report;
  static_cast<void>(SaveParamFile(&table, path, {}, &report));  // the report tells
  return Told(path, report.reason);
}

bool WriteBytes(const std::filesystem::path& path, const std::vector<std::byte>& bytes) {
  return Told(path, WriteFile(path, bytes).Message());
}

}  // namespace

bool WriteWaveforms(const std::filesystem::path& folder, const ParamTable& day) {
  const int tech = IntParam(day, "TECH");
  const Recording recording = RecordingOf(tech);
  const ParamTable table =
      CompanionOf(day, recording.channels, "5.0", tech == 5 ? kBandFrequency : 0);
  bool done = WriteTable(folder / "2417.TBL", table) &&
              WriteBytes(folder / "2417.TSS", Writer(recording, table).File(TsHeaderSize::kFull));
  if (tech == 1) {
    Recording older = recording;
    older.frequencies.assign(older.frequencies.size(), kOlderFrequency);
    done = done &&
           WriteTable(folder / "0912.TBL",
                      CompanionOf(day, older.channels, "3.2B", kOlderFrequency)) &&
           WriteBytes(folder / "0912.TSS", Writer(older, table).File(TsHeaderSize::kOld));
  }
  if (tech == 5) {
    for (std::size_t band = 0; band < kBandRates.size(); ++band) {
      const auto path = folder / ("2417.TS" + FormatInt(static_cast<int>(band) + 1));
      done = done &&
             WriteBytes(path, Writer(recording, table).File(TsHeaderSize::kBand, kBandRates[band]));
    }
  }
  return done;
}

}  // namespace orvane::examples
