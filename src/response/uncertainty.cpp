// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/uncertainty.h"

#include <cmath>
#include <numbers>

#include "response/channel_fit.h"

namespace orvane {
namespace {

// The slots in which each pass of the fit is once.
constexpr std::size_t kFirstSlot = 4;
constexpr std::size_t kSlots = 11;

constexpr double kDriveError = 0.01;
constexpr double kGainDrift = 2e-4;
constexpr double kAnyFrequency = 1e300;

std::vector<std::size_t> AllParts(std::uint32_t flags) {
  std::vector<std::size_t> parts = VisibleParts(flags);
  parts.push_back(kStageA);
  parts.push_back(kStageB);
  return parts;
}

// A^-1 b, zero where A is not positive.
Variables Solved(NormalEquations eq, std::size_t count, const Variables& b) {
  for (std::size_t i = 0; i < count; ++i) {
    eq.gradient[i] = -b[i];
  }
  Variables x{};
  return SolveNormalEquations(eq, count, 0, &x) ? x : Variables{};
}

void AddOuterProduct(const Variables& x, std::vector<Variables>* matrix) {
  for (std::size_t i = 0; i < matrix->size(); ++i) {
    for (std::size_t k = 0; k < matrix->size(); ++k) {
      (*matrix)[i][k] += x[i] * x[k];
    }
  }
}

}  // namespace

ModelUncertainty::ModelUncertainty(const CalData& cal, std::size_t channel)
    : parameters_(ParametersOf(cal, channel)),
      parts_(AllParts(cal.channel_flags[channel])),
      covariance_(parts_.size()) {
  const BoxModel::FitReport& fit = cal.model.fits[channel];
  FitPoints points(cal.model, channel, parameters_[kDrive], fit.offset);
  const FrontEndParameters paper = PaperValues(cal.channel_flags[channel], parameters_[kDelay]);
  const double polarity = parameters_[kBaseGain] < -1 ? -1 : 1;
  const FitStep step(std::span(points.fit_slots).subspan(kFirstSlot, kSlots), parts_,
                     {paper, parameters_, polarity, fit.prior_weight, kAnyFrequency,
                      WidthFor(fit.weighted_noise)});
  if (fit.is_kept) {
    TakeFit(fit, points, step);
  } else {
    TakePaper();
  }
}

void ModelUncertainty::TakePaper() {
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    covariance_[i][i] = PartTolerance(parts_[i]) * PartTolerance(parts_[i]);
  }
  wider_ = covariance_;
}

void ModelUncertainty::TakeFit(const BoxModel::FitReport& fit, const FitPoints& points,
                               const FitStep& step) {
  const std::size_t count = parts_.size();
  const Variables at = step.Start();
  const NormalEquations eq = step.Linearize(at);
  std::vector<Variables> inverse(count);
  for (std::size_t i = 0; i < count; ++i) {
    Variables one{};
    one[i] = 1;
    inverse[i] = Solved(eq, count, one);
  }
  // noise^2 H^-1 A H^-1 with A = H - prior^2, and what paper itself is off by.
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t k = 0; k < count; ++k) {
      covariance_[i][k] = fit.weighted_noise * fit.weighted_noise * inverse[i][k];
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    const double prior = step.PriorOf(i);
    const double paper = prior * prior * PartTolerance(parts_[i]);
    const double excess = paper * paper - fit.weighted_noise * fit.weighted_noise * prior * prior;
    for (std::size_t j = 0; j < count; ++j) {
      for (std::size_t k = 0; k < count; ++k) {
        covariance_[j][k] += excess * inverse[i][j] * inverse[i][k];
      }
    }
  }
  wider_ = covariance_;
  Variables drive{};
  for (const FitSlot& slot : std::span(points.fit_slots).subspan(kFirstSlot, kSlots)) {
    const double gain = 1 + parameters_[kBaseGain];
    AddOuterProduct(Solved(eq, count, step.Pull(slot, at, kBaseGain, kGainDrift * gain)), &wider_);
    const double source = kDriveError * slot.setting.source.real();
    const Variables pull = step.Pull(slot, at, kSeries, source);
    for (std::size_t i = 0; i < count; ++i) {
      drive[i] += pull[i];
    }
  }
  AddOuterProduct(Solved(eq, count, drive), &wider_);
}

double ModelUncertainty::Deviation(const Matrix& covariance, const Variables& slopes) const {
  double variance = 0;
  for (std::size_t i = 0; i < covariance.size(); ++i) {
    for (std::size_t k = 0; k < covariance.size(); ++k) {
      variance += slopes[i] * covariance[i][k] * slopes[k];
    }
  }
  return std::sqrt(std::max(variance, 0.0));
}

ResponseBands ModelUncertainty::At(const FrontEndSetting& setting, double frequency) const {
  const FrontEnd front_end(parameters_, setting);
  FrontEnd::Gradient gradient{};
  const Complex response = front_end.Response(frequency, &gradient);
  if (response == 0.0 || !IsFinite(response)) {
    return {};
  }
  Variables amplitude{};
  Variables phase{};
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    if (front_end.DependsOn(parts_[i])) {
      const Complex slope = Times(gradient[parts_[i]], Inverse(response)) *
                            PartSlope(parts_[i], parameters_[parts_[i]]);
      amplitude[i] = slope.real();
      phase[i] = slope.imag();
    }
  }
  constexpr double kDegrees = 180 / std::numbers::pi;
  const auto band = [&](const Matrix& covariance) {
    return ResponseBand{kFactor * Deviation(covariance, amplitude),
                        kFactor * kDegrees * Deviation(covariance, phase)};
  };
  return {band(covariance_), band(wider_)};
}

}  // namespace orvane
