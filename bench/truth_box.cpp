// SPDX-License-Identifier: GPL-3.0-or-later
#include "truth_box.h"

#include <numbers>

namespace orvane::bench {
namespace {

constexpr std::size_t kPasses = 15;
constexpr double kHighest = 20000;

// By how much a shop's parts differ, gains and delay as they are, all else by its logarithm.
constexpr FrontEndParameters kSpread = {0.01, 0.005, 0.005, 0.1, 0.1, 0.1, 0.1, 0.1, 0.15, 0,
                                        0.1,  0.15,  0.1,   0.2, 0.3, 0.1, 0.3, 0.5, 0.01, 0.1};

bool IsGain(std::size_t part) { return part <= kStageB; }

}  // namespace

double TruthShop::Draw(double reach) {
  return std::uniform_real_distribution<double>(-reach, reach)(random_);
}

Complex TruthShop::Noise(double deviation) {
  std::normal_distribution<double> normal;
  const double real = deviation * normal(random_);
  return {real, deviation * normal(random_)};
}

FrontEndParameters TruthShop::DrawParts(const TruthCondition& condition, std::uint32_t flags) {
  FrontEndParameters parts = NominalParameters(flags);
  for (std::size_t part = 0; part < parts.size(); ++part) {
    const double error = Draw(kSpread[part]);
    if (IsGain(part) || part == kDelay) {
      parts[part] += error;
      continue;
    }
    const bool is_far = condition.farthest > 0 && part != kDrive && part != kChokeAWire;
    parts[part] *= std::exp(is_far ? Draw(std::log(condition.farthest)) : error);
  }
  return parts;
}

TruthPass TruthShop::Sweep(const TruthCondition& condition, const TruthBox& box, std::size_t pass,
                           const TruthSetting& setting) {
  TruthPass sweep;
  for (int i = 0; i < condition.records; ++i) {
    const double at = i / (condition.records - 1.0);
    const double frequency = condition.lowest * std::pow(kHighest / condition.lowest, at);
    sweep.frequencies.push_back(static_cast<float>(frequency));
  }
  for (const FrontEndParameters& parts : box.parts) {
    std::vector<Complex>& responses = sweep.responses.emplace_back();
    const double drift = 1 + Noise(condition.drift).real();
    const FrontEndSetting switched =
        !IsModelPass(pass)
            ? FrontEndSetting()
            : (setting ? setting(pass, parts[kDrive]) : PassSetting(pass, parts[kDrive]));
    const FrontEnd front_end(parts, switched);
    for (const double frequency : sweep.frequencies) {
      const Complex h = front_end.Response(frequency) * drift;
      Complex wild = 0;
      if (std::uniform_real_distribution<double>()(random_) < condition.wild) {
        wild = std::polar(0.02 * std::pow(50, 0.5 + Draw(0.5)), Draw(std::numbers::pi));
      }
      responses.push_back(h * (1.0 + Noise(condition.of_value) + wild) +
                          Noise(condition.full_scale));
    }
  }
  return sweep;
}

// Every tenth box is of the second variant, two of ten of the first; every eighth is reversed.
TruthBox TruthShop::Build(const TruthCondition& condition, std::size_t channels,
                          const TruthSetting& setting) {
  TruthBox box;
  const double kind = 5 + Draw(5);
  box.flags = (kind < 3 ? kFirstVariant : 0U) | (kind < 1 ? kSecondVariant : 0U);
  const bool is_reversed = Draw(1) > 0.75;
  for (std::size_t c = 0; c < channels; ++c) {
    box.parts.push_back(DrawParts(condition, box.flags));
    box.parts[c][kDrive] = box.parts[0][kDrive];
    if (is_reversed) {
      box.parts[c][kBaseGain] = -2 - box.parts[c][kBaseGain];
    }
  }
  box.stored_drive = box.parts[0][kDrive] * (1 + (Draw(1) > 0 ? 1 : -1) * condition.drive);
  for (std::size_t pass = 0; pass < kPasses; ++pass) {
    box.passes.push_back(Sweep(condition, box, pass, setting));
  }
  return box;
}

CalData TruthBox::Fitted() const {
  CalData cal;
  cal.header.ctyp = kBoxCal;
  cal.header.nchn = static_cast<std::int16_t>(parts.size());
  cal.channel_flags.fill(flags);
  for (std::size_t pass = 0; pass < passes.size(); ++pass) {
    cal.pass_table.push_back(static_cast<std::uint32_t>(cal.records.size()));
    const TruthPass& sweep = passes[pass];
    for (std::size_t i = 0; i < sweep.frequencies.size(); ++i) {
      CalFileRecord& record = cal.records.emplace_back();
      record.kind = 1;
      record.frequency = static_cast<float>(sweep.frequencies[i]);
      record.step = static_cast<std::int16_t>(i + 1);
      for (std::size_t c = 0; c < parts.size(); ++c) {
        record.channels[c].values[3] = static_cast<float>(pass == 0 ? kUsualDelay : stored_drive);
        record.channels[c].real = static_cast<float>(sweep.responses[c][i].real());
        record.channels[c].imaginary = static_cast<float>(sweep.responses[c][i].imag());
      }
    }
  }
  cal.pass_table.push_back(static_cast<std::uint32_t>(cal.records.size()));
  cal.model = FitBoxModel(cal, cal.channel_flags);
  return cal;
}

}  // namespace orvane::bench
