// SPDX-License-Identifier: GPL-3.0-or-later
// Writes an example survey: for each method a folder with the start-up table of the main box, for
// TDIP and CSAMT also stack results; in a folder of their own the calibrations of box and sensors.
//
//   orvane-example-survey FOLDER
//   orvane-example-survey --evening FOLDER
//
// The second is of three days with five boxes, in which much went wrong.
//
// The values are invented but plausible: a crew on a copper prospect, one method a day.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "editors/line_layout.h"
#include "evening_survey.h"
#include "example_calibrations.h"
#include "example_waveforms.h"
#include "stepping/fdem_schedule.h"
#include "stepping/step_presets.h"
#include "stepping/tfs_file.h"
#include "table/param_access.h"
#include "table/param_table.h"
#include "table/param_text.h"
#include "table/tbl_file.h"
#include "table/tech.h"
#include "timeseries/stack_result.h"

namespace {

using orvane::ParamTable;

struct Setting {
  std::string_view key;
  std::string_view value;
};

// Who surveys what and where, and the receiver: the same for every method.
constexpr auto kSurvey = std::to_array<Setting>({
    {"SRVY1", "Copper Ridge ge"},
    {"SRVY2", "ophysics 2026"},
    {"CMPY1", "Northlight Expl"},
    {"CMPY2", "oration"},
    {"CLIENT1", "Copper Ridge Mi"},
    {"CLIENT2", "nes"},
    {"AREA1", "Block C, east s"},
    {"AREA2", "lope"},
    {"LOUT1", "A. Lindqvist"},
    {"CMMNT1", "Dry ground, con"},
    {"CMMNT2", "tacts watered"},
    {"LINE", "L1200N"},
    {"SITE", "S0450E"},
    {"SNUM", "2417"},
    {"HW", "main6"},
    {"VER", "5.0"},
    {"SNTX", "3105"},
    {"SNTXCOM", "1"},
    {"CHDEF1", "Ex1"},
    {"CHDEF2", "Ex2"},
    {"CHDEF3", "Ex3"},
    {"FLAG4", "1"},
    {"FLAG5", "1"},
    {"FLAG6", "1"},
    {"DEF1R1", "Ex7"},
    {"DEF1R2", "Ex8"},
    {"DEF1R3", "Ex9"},
    {"FLAG1R1", "1"},
    {"FLAG1R2", "1"},
    {"FLAG1R3", "1"},
    {"DEF2R1", "Ex10"},
    {"DEF2R2", "Ex11"},
    {"DEF2R3", "Ex12"},
    {"FLAG2R1", "1"},
    {"FLAG2R2", "1"},  // nobody has switched the third on: for the check to find
    {"LFRQ", "50"},
    {"DECL", "4.25"},
    {"NREF", "2"},
    {"TMZONE", "1"},
    {"TMDIFF", "1"},
    {"NCHN", "6"},
    {"SN01", "1203"},
    {"SN02", "1207"},
    {"SN03", "1211"},  // in reserve, without channels: for the check to find
    {"CSSN", "CS1043"},
    {"CNOM", "100"},
    {"HNOM", "1000"},
    {"HXSN", "TARK2041"},
    {"HYSN", "TARK2042"},
    {"HZSN", "TARK2057"},
    {"GFC1", "1"},
    {"GFC2", "1"},
    {"GFC3", "1"},
    {"GFC4", "1"},
    {"GFC5", "1"},
    {"GFC6", "1"},
    {"GFC7", "1"},
    {"GFC8", "1"},
    {"LATG", "4807.038,N"},
    {"LNGG", "01131.000,E"},
    {"ELEV", "1245"},
    {"FTPCPRT", "21"},
});

// The main box's last channels: dipoles along the line, or coils.
constexpr auto kLine = std::to_array<Setting>({
    {"CHDEF4", "Ex4"},
    {"CHDEF5", "Ex5"},
    {"CHDEF6", "Ex6"},
});
constexpr auto kCoils = std::to_array<Setting>({
    {"CHDEF4", "Hx"},
    {"CHDEF5", "Hy"},
    {"CHDEF6", "Hz"},
});

constexpr auto kSip = std::to_array<Setting>({
    {"TECH", "1"},
    {"RQST", "13"},
    {"ACDC", "0"},
    {"ACDH", "0"},
    {"EGNC", "1"},
    {"HGNC", "1"},
    {"LPFR", "18"},
    {"WFRM", "4"},
    {"NUMITEM", "1"},
    {"ARRYTYP", "1"},
    {"RXLEN", "50"},
    {"TXLEN", "100"},
    {"ERXPOS", "450"},
    {"NRXPOS", "1200"},
    {"ETXCSRX", "350"},
    {"NTXCSRX", "1200"},
    {"SITEINC", "50"},
    {"STIM", "2026/11/21 07:00:00"},
    {"ETIM", "2026/11/21 10:30:00"},
});

constexpr auto kTdip = std::to_array<Setting>({
    {"TECH", "2"},
    {"RQST", "13"},
    {"ACDC", "0"},
    {"ACDH", "0"},
    {"EGNC", "2"},
    {"HGNC", "1"},
    {"LPFR", "0"},
    {"WFRM", "1"},
    {"NUMITEM", "16"},
    {"ARRYTYP", "2"},
    {"RXLEN", "25"},
    {"TXLEN", "50"},
    {"ERXPOS", "450"},
    {"NRXPOS", "1200"},
    {"ETXCSRX", "400"},
    {"NTXCSRX", "1200"},
    {"FREQ", "0.125"},
    {"SITEINC", "25"},
    {"FDRIFT", "0.01"},
    {"STIM", "2026/11/22 07:00:00"},
    {"ETIM", "2026/11/22 11:00:00"},
});

constexpr auto kTdem = std::to_array<Setting>({
    {"TECH", "3"},
    {"RQST", "13"},
    {"ACDC", "0"},
    {"ACDH", "0"},
    {"EGNC", "0"},
    {"HGNC", "1"},
    {"LPFR", "0"},
    {"WFRM", "1"},
    {"NUMITEM", "21"},
    {"ARRYTYP", "12"},
    {"TXTURN", "1"},
    {"LLENGTH", "200"},
    {"LWIDTH", "200"},
    {"RAMPLEN", "110"},
    {"RXLEN", "50"},
    {"TXAZIM", "45"},
    {"PAZM", "90"},
    {"TXTYPE", "1"},
    {"FREQ", "25"},
    {"SITEINC", "50"},
    {"STIM", "2026/11/23 07:30:00"},
    {"ETIM", "2026/11/23 12:00:00"},
});

constexpr auto kCsamt = std::to_array<Setting>({
    {"TECH", "4"},
    {"RQST", "13"},
    {"ACDC", "1"},
    {"ACDH", "1"},
    {"EGNC", "1"},
    {"HGNC", "1"},
    {"LPFR", "17"},
    {"WFRM", "4"},
    {"NUMITEM", "1"},
    {"ARRYTYP", "9"},
    {"ERXPOS", "450"},
    {"NRXPOS", "1200"},
    {"EAZM", "90"},
    {"RXLEN", "50"},
    {"SITEINC", "50"},
    {"STIM", "2026/11/24 07:00:00"},
    {"ETIM", "2026/11/24 15:00:00"},
});

constexpr auto kMt = std::to_array<Setting>({
    {"TECH", "5"},
    {"RQST", "2"},
    {"ACDC", "0"},
    {"ACDH", "0"},
    {"EGNC", "2"},
    {"HGNC", "1"},
    {"LPFR", "160"},
    {"WFRM", "4"},
    {"MTSR", "1"},
    {"L2NS", "2"},
    {"L3NS", "1"},
    {"L4NS", "16"},
    {"HSMP", "300"},
    {"FLEN", "12"},
    {"EAZM", "0"},
    {"EXLN", "100"},
    {"EYLN", "100"},
    {"CHEX", "1"},
    {"CHEY", "2"},
    {"CHHX", "4"},
    {"CHHY", "5"},
    {"CHHZ", "6"},
    {"HAZM", "0"},
    {"EXR", "1850"},
    {"EYR", "2100"},
    {"DXDC", "0.0125"},
    {"DXAC", "0.0007"},
    {"DYDC", "-0.0092"},
    {"DYAC", "0.0008"},
    {"ATYP", "0"},
    {"STIM", "2026/11/24 17:00:00"},
    {"ETIM", "2026/11/25 06:00:00"},
    {"HTIM", "2026/11/24 22:00:00"},
    {"ETMH", "2026/11/25 02:00:00"},
});

constexpr auto kFdem = std::to_array<Setting>({
    {"TECH", "6"},
    {"RQST", "13"},
    {"ACDC", "0"},
    {"ACDH", "0"},
    {"EGNC", "0"},
    {"HGNC", "2"},
    {"LPFR", "16"},
    {"WFRM", "4"},
    {"NUMITEM", "1"},
    {"AUTO", "2"},
    {"ARRYTYP", "15"},
    {"TXTURN", "2"},
    {"LLENGTH", "100"},
    {"LWIDTH", "100"},
    {"RXLEN", "25"},
    {"SITEINC", "25"},
    {"CHHX", "4"},
    {"CHHY", "5"},
    {"CHHZ", "6"},
    {"STIM", "2026/11/25 08:00:00"},
    {"ETIM", "2026/11/25 13:00:00"},
});

struct Day {
  std::string_view folder;
  std::span<const Setting> settings;
  std::span<const Setting> channels;
};

constexpr std::array<Day, 6> kDays = {{{"SIP", kSip, kLine},
                                       {"TDIP", kTdip, kLine},
                                       {"TDEM", kTdem, kCoils},
                                       {"CSAMT", kCsamt, kLine},
                                       {"MT", kMt, kCoils},
                                       {"FDEM", kFdem, kCoils}}};

bool Apply(std::span<const Setting> settings, ParamTable* table) {
  for (const auto& [key, text] : settings) {
    const orvane::ParamEntry* entry = table->FindParam(key);
    std::string reason = "no such parameter";
    if (entry != nullptr) {
      const auto type = static_cast<orvane::ValueType>(entry->type);
      const auto value = orvane::ParseParamValueStrictly(text, type);
      if (value && table->SetParam(key, type, value->data()) == orvane::kOk) {
        continue;
      }
      reason = value.Message();
    }
    std::fprintf(stderr, "%s=%s: %s\n", std::string(key).c_str(), std::string(text).c_str(),
                 reason.c_str());
    return false;
  }
  return true;
}

// The methods that step through frequencies begin with their usual cycle.
void SetStepping(ParamTable* table) {
  const orvane::Tech tech = orvane::TechOf(*table);
  if (tech == orvane::kSip || tech == orvane::kCsamt) {
    orvane::ApplyTransmitter(table, tech, orvane::WithDefaults({}, tech),
                             orvane::CycleCurrent(tech, 0));
    orvane::ApplyDefaultStepping(table, tech, 0);
  }
}

// As the crew does it: "Calc. Coord." in the site's dialog.
void PlaceElectrodes(ParamTable* table) {
  constexpr auto& kNames = orvane::kTransmitterModels;
  orvane::SiteForm form(table, orvane::TechOf(*table),
                        {std::string(kNames[0]), std::string(kNames[1]), std::string(kNames[2]),
                         std::string(kNames[3])});
  if (form.HasLine()) {
    static_cast<void>(form.Open());
    orvane::Spread spread(table);
    orvane::CalculateCoordinates(form, &spread);
    spread.Save();
  }
}

// The schedule that the FDEM day's "AUTO" names, beside its table.
bool WriteSchedule(const std::filesystem::path& path) {
  std::vector<orvane::ScheduleRow> rows;
  constexpr orvane::FdemRequest kRequest{60, 60, 5, true};
  if (!orvane::BuildFdemSchedule(kRequest, &rows)) {
    return false;
  }
  if (const orvane::Result<> written = orvane::WriteScheduleFile(path, rows); !written) {
    std::fprintf(stderr, "%s: %s\n", path.string().c_str(), written.Message().c_str());
    return false;
  }
  std::printf("%s\n", path.string().c_str());
  return true;
}

bool WriteDay(const Day& day, const std::filesystem::path& root) {
  ParamTable table;
  if (table.BuildParamIndex() != orvane::kOk || !Apply(kSurvey, &table) ||
      !Apply(day.channels, &table) || !Apply(day.settings, &table)) {
    return false;
  }
  SetStepping(&table);
  PlaceElectrodes(&table);
  std::error_code error;
  std::filesystem::create_directories(root / day.folder, error);
  const auto path = root / day.folder / "Startup.tbl";
  orvane::TblReport report;
  if (orvane::SaveParamFile(&table, path, {}, &report) != orvane::kOk) {
    std::fprintf(stderr, "%s\n", report.message.c_str());
    return false;
  }
  std::printf("%s\n", path.string().c_str());
  if (orvane::IntParam(table, "AUTO") == 2 && !WriteSchedule(root / day.folder / "2.TFS")) {
    return false;
  }
  return orvane::examples::WriteWaveforms(root / day.folder, table);
}

// One stack of a channel: its head, an extension with the current in amperes, the items.
struct Stack {
  orvane::ParamTime time;
  int number = 0;
  int channel = 0;
  double frequency = 0;  // Hz
  float current = 0;     // A
  std::size_t item_size = 0;
  std::vector<float> values;
};

template <typename Record>
void AppendBytes(const Record& record, std::vector<std::byte>* bytes) {
  const auto more = orvane::BytesOf(record);
  bytes->insert(bytes->end(), more.begin(), more.end());
}

void AppendStack(const Stack& stack, std::vector<std::byte>* file) {
  orvane::StackHeader header;
  header.time = stack.time;
  header.first = static_cast<std::int16_t>(stack.number);
  header.second = static_cast<std::uint8_t>(stack.channel);
  header.extension_size = 20;
  header.item_size = static_cast<std::uint8_t>(stack.item_size);
  header.item_count =
      static_cast<std::uint8_t>(stack.values.size() * sizeof(float) / stack.item_size);
  header.value = stack.frequency;
  const std::string label = "Ex" + std::to_string(stack.channel);
  std::copy(label.begin(), label.end(), header.label.begin());
  AppendBytes(header, file);
  file->resize(file->size() + 16);
  AppendBytes(orvane::Le<float>(stack.current), file);
  for (const float value : stack.values) {
    AppendBytes(orvane::Le<float>(value), file);
  }
}

// Decays of 16 windows, each with its voltage and its error in volts, every five minutes.
std::vector<std::byte> TimeDomainStacks() {
  std::vector<std::byte> file;
  for (int number = 0; number < 12; ++number) {
    for (int channel = 1; channel <= 3; ++channel) {
      Stack stack{{0, static_cast<std::uint8_t>(5 * number), 8, 22, 11, 26, 7, 20},
                  number,
                  channel,
                  0.125,
                  4.2F,
                  2 * sizeof(float),
                  {}};
      for (int window = 0; window < 16; ++window) {
        const double volts = 0.018 / channel * std::exp(-0.21 * window) * (1 + 0.004 * number);
        stack.values.push_back(static_cast<float>(volts));
        stack.values.push_back(static_cast<float>(0.002 * volts + 3e-7));
      }
      AppendStack(stack, &file);
    }
  }
  return file;
}

// Amplitude in volts and phase in milliradians of the fundamental and seven odd harmonics.
std::vector<std::byte> FrequencyDomainStacks() {
  std::vector<std::byte> file;
  int number = 0;
  for (const double frequency : {1.0, 16.0, 256.0, 4096.0}) {
    for (int channel = 1; channel <= 3; ++channel) {
      Stack stack{{0, static_cast<std::uint8_t>(10 * number), 7, 24, 11, 26, 2, 20},
                  number,
                  channel,
                  frequency,
                  8.5F,
                  sizeof(float),
                  {}};
      for (int harmonic = 1; harmonic <= 15; harmonic += 2) {
        const double hertz = harmonic * frequency;
        stack.values.push_back(
            static_cast<float>(0.004 / channel / harmonic * std::pow(hertz, -0.2)));
        stack.values.push_back(static_cast<float>(-785 + 60 * std::log10(hertz)));
      }
      AppendStack(stack, &file);
    }
    ++number;
  }
  return file;
}

bool WriteStacks(const std::filesystem::path& path, const std::vector<std::byte>& bytes) {
  if (const orvane::Result<> written = orvane::WriteFile(path, bytes); !written) {
    std::fprintf(stderr, "%s\n", orvane::FileMessage(path, written.Message()).c_str());
    return false;
  }
  std::printf("%s\n", path.string().c_str());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string_view(argv[1]) == "--evening") {
    return orvane::examples::WriteEveningSurvey(argv[2]) ? 0 : 1;
  }
  if (argc != 2 || argv[1][0] == '-') {
    std::fprintf(stderr, "usage: orvane-example-survey [--evening] FOLDER\n");
    return 2;
  }
  for (const Day& day : kDays) {
    if (!WriteDay(day, argv[1])) {
      return 1;
    }
  }
  const std::filesystem::path root(argv[1]);
  return WriteStacks(root / "TDIP" / "2417.trs", TimeDomainStacks()) &&
                 WriteStacks(root / "CSAMT" / "2417.trs", FrequencyDomainStacks()) &&
                 orvane::examples::WriteCalibrations(root / "Calibration")
             ? 0
             : 1;
}
