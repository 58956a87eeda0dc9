// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/fit_step.h"

#include <algorithm>

namespace orvane {
namespace {

constexpr double kDelayUnit = 10;  // microseconds

constexpr FrontEndParameters kTolerances = {0.3,  0.05, 0.05, 0.1, 0.1, 0.1, 0.1, 0.1, 0.15, 1,
                                            0.15, 0.15, 0.1,  0.2, 0.3, 0.1, 0.3, 0.2, 1,    0.1};

bool IsGain(std::size_t part) { return part <= kStageB; }

double VariableOf(std::size_t part, double value, double nominal) {
  return IsGain(part) ? value : part == kDelay ? value / kDelayUnit : std::log(value / nominal);
}

}  // namespace

const double kMostPartLog = std::log(3.0);

double PartTolerance(std::size_t part) { return kTolerances[part]; }

double PartSlope(std::size_t part, double value) {
  return IsGain(part) ? 1 : part == kDelay ? kDelayUnit : value;
}

FitStep::FitStep(std::span<const FitSlot> slots, std::span<const std::size_t> parts,
                 const FitStart& start)
    : slots_(slots),
      fixed_(start.parameters),
      highest_frequency_(start.highest_frequency),
      width_(start.width) {
  count = parts.size();
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t part = parts[i];
    const double nominal = start.nominal[part];
    const double centre = IsGain(part) ? fixed_[part] : VariableOf(part, nominal, nominal);
    unknowns_.push_back({part, nominal, centre, start.prior_weight / kTolerances[part]});
    const double middle = part == kBaseGain ? start.polarity - 1 : 0;
    const double reach = part == kBaseGain ? 0.5
                         : IsGain(part)    ? 0.3
                         : part == kDelay  ? kLongestDelay / kDelayUnit
                                           : kMostPartLog;
    low[i] = middle - reach;
    high[i] = middle + reach;
  }
}

bool FitStep::HasPoints() const {
  return std::any_of(slots_.begin(), slots_.end(), [this](const FitSlot& slot) {
    return std::any_of(slot.points.begin(), slot.points.end(),
                       [this](const FitPoint& point) { return TakesPart(point); });
  });
}

Variables FitStep::Start() const {
  Variables at{};
  for (std::size_t i = 0; i < count; ++i) {
    const Unknown& unknown = unknowns_[i];
    at[i] = VariableOf(unknown.part, fixed_[unknown.part], unknown.nominal);
  }
  return at;
}

int FitStep::Run(int most_iterations, double least_fall, FrontEndParameters* parameters) {
  Variables at = Start();
  const int iterations = Minimize(this, most_iterations, least_fall, &at);
  Variables slopes{};
  *parameters = ParametersAt(at, &slopes);
  return iterations;
}

FrontEndParameters FitStep::ParametersAt(const Variables& at, Variables* slopes) const {
  FrontEndParameters parameters = fixed_;
  for (std::size_t i = 0; i < count; ++i) {
    const Unknown& unknown = unknowns_[i];
    double& value = parameters[unknown.part];
    value = IsGain(unknown.part)     ? at[i]
            : unknown.part == kDelay ? at[i] * kDelayUnit
                                     : unknown.nominal * std::exp(at[i]);
    (*slopes)[i] = PartSlope(unknown.part, value);
  }
  return parameters;
}

double FitStep::Cost(const Variables& at) const {
  double cost = 0;
  const double square = width_ * width_;
  Variables slopes{};
  const FrontEndParameters parameters = ParametersAt(at, &slopes);
  for (const FitSlot& slot : slots_) {
    const FrontEnd front_end(parameters, slot.setting);
    for (const FitPoint& point : slot.points) {
      if (TakesPart(point)) {
        const Complex h = front_end.Response(point.frequency) - point.measured;
        cost += square * std::log1p(std::norm(h) * (point.weight * point.weight) / square);
      }
    }
  }
  for (std::size_t i = 0; i < count; ++i) {
    const double residual = (at[i] - unknowns_[i].centre) * unknowns_[i].prior;
    cost += residual * residual;
  }
  return cost;
}

NormalEquations FitStep::Linearize(const Variables& at) const {
  NormalEquations eq;
  Variables slopes{};
  const FrontEndParameters parameters = ParametersAt(at, &slopes);
  for (const FitSlot& slot : slots_) {
    AddSlot(slot, parameters, slopes, &eq);
  }
  for (std::size_t i = 0; i < count; ++i) {
    const double prior = unknowns_[i].prior;
    const double residual = (at[i] - unknowns_[i].centre) * prior;
    eq.matrix[i][i] += prior * prior;
    eq.gradient[i] += residual * prior;
    eq.cost += residual * residual;
  }
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      eq.matrix[k][i] = eq.matrix[i][k];
    }
  }
  return eq;
}

void FitStep::AddSlot(const FitSlot& slot, const FrontEndParameters& parameters,
                      const Variables& slopes, NormalEquations* eq) const {
  const FrontEnd front_end(parameters, slot.setting);
  std::array<std::size_t, kMaxVariables> active{};
  std::size_t actives = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (front_end.DependsOn(unknowns_[i].part)) {
      active[actives++] = i;
    }
  }
  FrontEnd::Gradient gradient{};
  Variables real{};
  Variables imaginary{};
  for (const FitPoint& point : slot.points) {
    if (!TakesPart(point)) {
      continue;
    }
    const Complex error =
        (front_end.Response(point.frequency, &gradient) - point.measured) * point.weight;
    const double squared = std::norm(error);
    eq->cost += width_ * width_ * std::log1p(squared / (width_ * width_));
    const double trust = std::sqrt(CauchyWeight(squared, width_));
    const Complex residual = error * trust;
    for (std::size_t a = 0; a < actives; ++a) {
      const std::size_t i = active[a];
      const Complex slope = gradient[unknowns_[i].part] * (slopes[i] * point.weight * trust);
      real[a] = slope.real();
      imaginary[a] = slope.imag();
      eq->gradient[i] += real[a] * residual.real() + imaginary[a] * residual.imag();
      for (std::size_t b = 0; b <= a; ++b) {
        eq->matrix[i][active[b]] += real[a] * real[b] + imaginary[a] * imaginary[b];
      }
    }
  }
}

Variables FitStep::Pull(const FitSlot& slot, const Variables& at, std::size_t part,
                        double scale) const {
  Variables slopes{};
  const FrontEndParameters parameters = ParametersAt(at, &slopes);
  const FrontEnd front_end(parameters, slot.setting);
  FrontEnd::Gradient gradient{};
  Variables pull{};
  for (const FitPoint& point : slot.points) {
    if (!TakesPart(point)) {
      continue;
    }
    const Complex error =
        (front_end.Response(point.frequency, &gradient) - point.measured) * point.weight;
    const double weight =
        point.weight * point.weight * CauchyWeight(std::norm(error), width_) * scale;
    for (std::size_t i = 0; i < count; ++i) {
      if (front_end.DependsOn(unknowns_[i].part)) {
        const Complex& slope = gradient[unknowns_[i].part];
        pull[i] += weight * slopes[i] *
                   (slope.real() * gradient[part].real() + slope.imag() * gradient[part].imag());
      }
    }
  }
  return pull;
}

}  // namespace orvane
