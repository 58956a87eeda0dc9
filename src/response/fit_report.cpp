// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/fit_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <string_view>

#include "base/number_text.h"
#include "response/verdict.h"

namespace orvane {
namespace {

constexpr auto kPartNames = std::to_array<std::string_view>({"Error of every gain",
                                                             "Error of stage x4",
                                                             "Error of stage x16",
                                                             "Low-pass capacitor 1 (F)",
                                                             "Low-pass capacitor 2 (F)",
                                                             "Low-pass capacitor 3 (F)",
                                                             "Low-pass capacitor 4 (F)",
                                                             "Low-pass capacitor 5 (F)",
                                                             "Choke A (H)",
                                                             "Choke A, wire (ohm)",
                                                             "Choke B (H)",
                                                             "Choke B, wire (ohm)",
                                                             "Series resistor (ohm)",
                                                             "Coupling capacitor (F)",
                                                             "Input capacitance (F)",
                                                             "Trap capacitor (F)",
                                                             "Trap switch (ohm)",
                                                             "Delay (us)",
                                                             "Drive resistors (ohm)",
                                                             "Bias resistor (kohm)"});
static_assert(kPartNames.size() == kFrontEndParts);

std::string Number(double value) {
  constexpr int kDigits = 6;
  return FormatReal(value, kDigits);
}

// The frequencies of a pass and a logarithmic grid between them, falling.
std::vector<double> FrequenciesFor(std::span<const CalFileRecord> records) {
  std::vector<double> frequencies;
  for (const CalFileRecord& record : records) {
    const double frequency = record.frequency;
    if (frequency > 0 && std::isfinite(frequency)) {
      frequencies.push_back(frequency);
    }
  }
  if (frequencies.empty()) {
    return frequencies;
  }
  constexpr int kSteps = 120;
  const auto [low, high] = std::minmax_element(frequencies.begin(), frequencies.end());
  const double first = *low;
  const double step = std::log(*high / first) / kSteps;
  for (int i = 1; i < kSteps; ++i) {
    frequencies.push_back(first * std::exp(step * i));
  }
  std::sort(frequencies.begin(), frequencies.end(), std::greater<>());
  frequencies.erase(std::unique(frequencies.begin(), frequencies.end()), frequencies.end());
  return frequencies;
}

std::string SettingText(int gain, int low_pass) {
  return std::string(gain == 0 ? "x 1, " : "x 16, ") + FilterText(low_pass);
}

// The widest band of the amplitude from 0.1 Hz to 12 kHz.
double KnownTo(const ModelUncertainty& uncertainty, const FrontEndSetting& setting) {
  double widest = 0;
  for (const double frequency : {0.1, 1.0, 10.0, 100.0, 1e3, 3e3, 6e3, 9e3, 12e3}) {
    widest = std::max(widest, uncertainty.At(setting, frequency).wider.amplitude);
  }
  return widest;
}

}  // namespace

std::vector<std::vector<std::string>> FitTable(const CalData& cal) {
  std::vector<std::vector<std::string>> rows;
  const auto add = [&](std::string_view name, const auto& text) {
    std::vector<std::string> row = {std::string(name)};
    for (std::size_t c = 0; c < cal.Channels(); ++c) {
      row.push_back(text(c));
    }
    rows.push_back(std::move(row));
  };
  const auto fit = [&cal](std::size_t c) -> const BoxModel::FitReport& {
    return cal.model.fits[c];
  };
  add("Model", [&](std::size_t c) { return fit(c).is_kept ? "fitted" : "nominal"; });
  add("Error, rms", [&](std::size_t c) { return Number(fit(c).rms); });
  add("Error, largest", [&](std::size_t c) { return Number(fit(c).max); });
  add("Points", [&](std::size_t c) { return FormatInt(fit(c).points); });
  add("Points left out", [&](std::size_t c) { return FormatInt(fit(c).rejected); });
  add("Iterations", [&](std::size_t c) { return FormatInt(fit(c).iterations); });
  for (std::size_t k = 0; k < kPartNames.size(); ++k) {
    add(kPartNames[k], [&](std::size_t c) { return Number(ParametersOf(cal, c)[k]); });
  }
  if (cal.model.parameter_count > 0) {
    std::vector<ModelUncertainty> channels;
    for (std::size_t c = 0; c < cal.Channels(); ++c) {
      channels.emplace_back(cal, c);
    }
    add("Verdict", [&](std::size_t c) { return JudgeChannel(cal, c).Summary(); });
    for (const int gain : {0, 2}) {
      for (const int low_pass : {0, 16, 17, 18, 19, 20, 80, 81, 82, 83, 84}) {
        add("Known to (%), " + SettingText(gain, low_pass), [&](std::size_t c) {
          return FormatReal(100 * KnownTo(channels[c], {gain, low_pass, 0, {}}), 2);
        });
      }
    }
  }
  return rows;
}

std::string PartName(std::size_t part) {
  const std::string_view name = kPartNames[part];
  return std::string(name.substr(0, name.find(" (")));
}

namespace {

// Channels that are as good as each other, and what speaks against all of them.
struct AlikeChannels {
  std::string summary;
  std::vector<std::size_t> channels;
  std::vector<std::string> shared;
};

void AddTo(std::vector<AlikeChannels>* groups, std::size_t channel, const ChannelVerdict& verdict) {
  const std::string summary = verdict.Summary();
  std::vector<std::string> reasons;
  for (const VerdictReason& reason : verdict.reasons) {
    reasons.push_back(reason.text);
  }
  const auto group = std::find_if(groups->begin(), groups->end(), [&](const AlikeChannels& alike) {
    return alike.summary == summary;
  });
  if (group == groups->end()) {
    groups->push_back({summary, {channel}, std::move(reasons)});
    return;
  }
  group->channels.push_back(channel);
  std::erase_if(group->shared, [&reasons](const std::string& text) {
    return std::find(reasons.begin(), reasons.end(), text) == reasons.end();
  });
}

template <typename Visit>
void VisitDoubtful(const CalData& cal, const Visit& visit) {
  for (std::size_t c = 0; c < cal.Channels() && cal.model.parameter_count > 0; ++c) {
    const ChannelVerdict verdict = JudgeChannel(cal, c);
    if (verdict.usability != Usability::kWell) {
      visit(c, verdict);
    }
  }
}

}  // namespace

std::string FitWarning(const CalData& cal) {
  std::vector<AlikeChannels> groups;
  VisitDoubtful(
      cal, [&groups](std::size_t c, const ChannelVerdict& verdict) { AddTo(&groups, c, verdict); });
  std::string warning;
  for (const AlikeChannels& group : groups) {
    warning.append(warning.empty() ? "Channel" : "; channel");
    warning.append(group.channels.size() > 1 ? "s" : "");
    for (const std::size_t channel : group.channels) {
      warning.append(channel == group.channels.front() ? " " : ", ").append(FormatInt(channel + 1));
    }
    warning.append(": ").append(group.summary);
    for (const std::string& reason : group.shared) {
      warning.append(reason == group.shared.front() ? ": " : "; ").append(reason);
    }
  }
  return warning;
}

std::vector<std::string> FitReasons(const CalData& cal) {
  std::vector<std::string> lines;
  VisitDoubtful(cal, [&lines](std::size_t c, const ChannelVerdict& verdict) {
    lines.push_back("Channel " + FormatInt(c + 1));
    lines.back().append(": ").append(verdict.Text());
  });
  return lines;
}

CalCurve ModelCurve(const CalData& cal, std::size_t channel, double turn) {
  constexpr double kDegrees = 180 / std::numbers::pi;
  const FrontEndParameters parameters = ParametersOf(cal, channel);
  CalCurve curve;
  curve.turn = turn;
  for (std::size_t pass = 0; pass < cal.PassCount(); ++pass) {
    if (!IsModelPass(pass)) {
      continue;
    }
    const FrontEnd front_end(parameters, PassSetting(pass, parameters[kDrive]));
    for (const double frequency : FrequenciesFor(cal.Pass(pass))) {
      const Complex response = front_end.Response(frequency);
      curve.frequency.push_back(frequency);
      curve.amplitude.push_back(std::abs(response));
      curve.phase.push_back(std::arg(response) * kDegrees + turn);
      curve.sweep.push_back(static_cast<int>(pass));
    }
  }
  return curve;
}

std::array<CalCurve, 2> BandAround(const CalCurve& model, const CalData& cal, std::size_t channel,
                                   const ModelUncertainty& known) {
  std::array<CalCurve, 2> sides = {model, model};
  const double drive = ParametersOf(cal, channel)[kDrive];
  for (std::size_t i = 0; i < model.frequency.size(); ++i) {
    const auto pass = static_cast<std::size_t>(model.sweep[i]);
    const ResponseBand band = known.At(PassSetting(pass, drive), model.frequency[i]).wider;
    sides[0].amplitude[i] *= 1 - band.amplitude;
    sides[1].amplitude[i] *= 1 + band.amplitude;
    sides[0].phase[i] -= band.phase;
    sides[1].phase[i] += band.phase;
  }
  return sides;
}

}  // namespace orvane
