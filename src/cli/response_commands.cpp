// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>
#include <filesystem>
#include <limits>
#include <memory>

#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/validators.h"
#include "files/path_text.h"
#include "response/box_response.h"
#include "response/fit_report.h"
#include "response/sensor_response.h"
#include "response/uncertainty.h"
#include "response/verdict.h"

namespace orvane {
namespace {

struct ResponseArguments {
  std::filesystem::path file;
  std::filesystem::path table;
  int channels = 0;  // 0: as the calibration has
  std::optional<int> band;
  std::vector<std::string> frequencies;
  bool takes_nominal = false;
  bool shows_uncertainty = false;
};

std::string Line(const std::vector<double>& numbers) {
  constexpr int kDigits = 17;
  std::string line;
  for (const double number : numbers) {
    line.append(line.empty() ? "" : "\t").append(FormatReal(number, kDigits));
  }
  return line + '\n';
}

std::unique_ptr<CalData> ReadOrTell(const std::filesystem::path& file, int kind) {
  CalReport report;
  auto cal = ReadCalFileAt(kind, file, &report);
  if (cal == nullptr) {
    PrintMessage(report.message + " (" + FormatInt(report.status) + ")");
  } else if (report.is_cut) {
    PrintMessage(FileMessage(file, "the last record is cut short and left out"));
  }
  return cal;
}

ExitCode PrintWithStatus(const std::filesystem::path& file, const std::string& text,
                         Status status) {
  const bool is_printed = PrintResult(text);
  if (status != kOk) {
    PrintMessage(FileMessage(file, StatusText(status)) + " (" + FormatInt(status) + ")");
  }
  return is_printed && status == kOk ? kAllDone : kSomeFailed;
}

// Channels whose parts have their nominal values because no model fits.
std::string ChannelsWithoutFit(const CalData& cal) {
  std::string channels;
  for (std::size_t c = 0; c < cal.Channels() && cal.model.parameter_count > 0; ++c) {
    if (!cal.model.fits[c].is_kept) {
      channels.append(" ").append(FormatInt(c + 1));
    }
  }
  return channels;
}

// Whether the response may be taken for the box's own.
bool TellOfRejectedFit(const ResponseArguments& arguments, const CalData& cal) {
  const std::string channels = ChannelsWithoutFit(cal);
  if (!channels.empty()) {
    PrintMessage(FileMessage(arguments.file,
                             "no model fits; the parts have their nominal values "
                             "(--nominal accepts them); channels" +
                                 channels));
  }
  return channels.empty() || arguments.takes_nominal;
}

// The columns of "--uncertainty": none without it, no numbers where records serve instead of a
// model.
class BoxBands {
 public:
  BoxBands(const ResponseArguments& arguments, const CalData& cal, const RecordingHeader& header)
      : is_asked_(arguments.shows_uncertainty) {
    const bool has_model = cal.model.parameter_count > 0 && !IsOfOlderFamily(header);
    for (std::size_t c = 0; is_asked_ && has_model && c < cal.Channels(); ++c) {
      channels_.emplace_back(cal, c);
    }
  }

  void Append(const FrontEndSetting& setting, std::size_t channel, double hertz,
              std::vector<double>* numbers) const {
    constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
    if (is_asked_ && channel < channels_.size()) {
      const ResponseBands bands = channels_[channel].At(setting, hertz);
      numbers->insert(numbers->end(), {bands.noise.amplitude, bands.noise.phase,
                                       bands.wider.amplitude, bands.wider.phase});
    } else if (is_asked_) {
      numbers->insert(numbers->end(), 4, kUnknown);
    }
  }

 private:
  bool is_asked_;
  std::vector<ModelUncertainty> channels_;
};

ExitCode PrintBox(const ResponseArguments& arguments, const CalData& cal,
                  const RecordingHeader& header) {
  BoxResponse box;
  Status status = box.Prepare(&cal, &header, arguments.band.value_or(0));
  std::string text;
  std::vector<Complex> responses(box.Channels());
  std::vector<double> validities(box.Channels());
  const BoxBands bands(arguments, cal, header);
  for (const std::string& frequency : arguments.frequencies) {
    const double hertz = ParseReal(frequency).value_or(0);
    const Status one = box.At(hertz, responses, validities);
    status = status == kOk ? one : status;
    for (std::size_t c = 0; c < box.Channels(); ++c) {
      std::vector<double> numbers = {static_cast<double>(c + 1), hertz, responses[c].real(),
                                     responses[c].imag(), validities[c]};
      bands.Append(box.Setting(c), c, hertz, &numbers);
      text += Line(numbers);
    }
  }
  const ExitCode printed = PrintWithStatus(arguments.file, text, status);
  return status == kChannelsDiffer || TellOfRejectedFit(arguments, cal) ? printed : kSomeFailed;
}

ExitCode PrintSensor(const ResponseArguments& arguments, const CalData& cal,
                     const RecordingHeader& header) {
  SensorResponse sensor;
  const Status status = sensor.Prepare(&cal, &header);
  std::string text;
  for (const std::string& frequency : arguments.frequencies) {
    const double hertz = ParseReal(frequency).value_or(0);
    const Complex response = status == kOk ? sensor.At(hertz) : 0;
    text += status == kOk ? Line({hertz, response.real(), response.imag()}) : "";
  }
  return PrintWithStatus(arguments.file, text, status);
}

ExitCode RunResponse(const ResponseArguments& arguments) {
  const int kind = CalKindOf(arguments.file);
  if (kind == kBoxCal && !arguments.band) {
    PrintMessage("the response of a box needs --band");
    return kWrongUsage;
  }
  if (kind != kBoxCal && arguments.shows_uncertainty) {
    PrintMessage("only the response of a box has an uncertainty");
    return kWrongUsage;
  }
  const auto cal = ReadOrTell(arguments.file, kind);
  if (cal == nullptr) {
    return kSomeFailed;
  }
  RecordingHeader header;
  TblReport report;
  if (header.settings.Load(arguments.table, &report) != kOk) {
    PrintMessage(report.message);
    return kSomeFailed;
  }
  header.channels = arguments.channels > 0 ? arguments.channels : static_cast<int>(cal->Channels());
  return kind == kBoxCal ? PrintBox(arguments, *cal, header) : PrintSensor(arguments, *cal, header);
}

void TellOfVerdict(const std::filesystem::path& file, std::size_t channel,
                   const ChannelVerdict& verdict) {
  std::string text = "channel " + FormatInt(channel + 1);
  text.append(": ").append(verdict.Text());
  for (const std::string& note : verdict.notes) {
    text.append("; note: ").append(note);
  }
  PrintMessage(FileMessage(file, text));
}

ExitCode RunSensorVerdict(const std::filesystem::path& file, int kind) {
  const auto cal = ReadOrTell(file, kind);
  if (cal == nullptr) {
    return kSomeFailed;
  }
  const std::size_t channel = SensorChannelOf(*cal);
  const ChannelVerdict verdict = JudgeRecords(*cal, kind, channel, PathText(file.stem()));
  TellOfVerdict(file, channel, verdict);
  return verdict.usability == Usability::kNotUsable ? kSomeFailed : kAllDone;
}

ExitCode RunFit(const std::filesystem::path& file) {
  if (const int kind = CalKindOf(file); kind != kBoxCal) {
    return RunSensorVerdict(file, kind);
  }
  const auto cal = ReadOrTell(file, kBoxCal);
  if (cal == nullptr) {
    return kSomeFailed;
  }
  if (cal->model.parameter_count == 0) {
    PrintMessage(FileMessage(file, "fewer than 3 passes: no model"));
    return kSomeFailed;
  }
  std::string text;
  bool are_usable = true;
  for (std::size_t c = 0; c < cal->Channels(); ++c) {
    const BoxModel::FitReport& fit = cal->model.fits[c];
    std::vector<double> numbers = {static_cast<double>(c + 1)};
    const FrontEndParameters parameters = ParametersOf(*cal, c);
    numbers.insert(numbers.end(), parameters.begin(), parameters.end());
    numbers.insert(
        numbers.end(),
        {static_cast<double>(fit.points), static_cast<double>(fit.rejected),
         static_cast<double>(fit.iterations), fit.rms, fit.max, fit.is_kept ? 1.0 : 0.0});
    text += Line(numbers);
    const ChannelVerdict verdict = JudgeChannel(*cal, c);
    are_usable = are_usable && verdict.usability != Usability::kNotUsable;
    TellOfVerdict(file, c, verdict);
  }
  return PrintResult(text) && are_usable ? kAllDone : kSomeFailed;
}

}  // namespace

void AddResponseCommands(CLI::App* calibration, ExitCode* exit_code) {
  const auto arguments = std::make_shared<ResponseArguments>();
  CLI::App* response = calibration->add_subcommand(
      "response",
      "Print channel, Hz, real and imaginary part, validity; of a sensor without the "
      "first and last");
  AddPath(response, "FILE", &arguments->file, "a calibration file")->required()->check(NotEmpty());
  AddPath(response, "--table", &arguments->table, "the recording's parameter table (*.TBL)")
      ->required()
      ->check(NotEmpty());
  response
      ->add_option("--channels", arguments->channels,
                   "of the recording (default: as many as the calibration has)")
      ->check(CLI::Range(1, 255));
  response->add_option("--band", arguments->band, "sample-rate band, for a box");
  response->add_option("--frequency", arguments->frequencies, "Hz")->required()->check(Amount());
  response->add_flag(
      "--nominal", arguments->takes_nominal,
      "exit with 0 also where no model fits a box and its parts have their nominal values");
  response->add_flag("--uncertainty", arguments->shows_uncertainty,
                     "append by how much a box's amplitude (relative) and phase (degrees) may be "
                     "off: by noise, then with drive resistors 1 % off and gains drifting");
  response->callback([=] { *exit_code = RunResponse(*arguments); });
  CLI::App* fit = calibration->add_subcommand(
      "fit",
      "Print channel, 20 parameters, points, rejected, iterations, rms, max, kept of a box; "
      "tell on standard error whether a calibration may be trusted, and exit with 1 if not");
  AddPath(fit, "FILE", &arguments->file, "a calibration file")->required()->check(NotEmpty());
  fit->callback([=] { *exit_code = RunFit(arguments->file); });
}

}  // namespace orvane
