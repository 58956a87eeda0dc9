// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/harmonics.h"

#include <algorithm>
#include <array>
#include <numbers>
#include <numeric>

namespace orvane {
namespace {

constexpr std::size_t kFineRoots = 128;

// exp(-2 pi i n / order), with the angle reduced in integers to at most an eighth of a turn either
// way of a whole quarter.
Complex ExactRoot(std::uint64_t n, std::uint64_t order) {
  const std::uint64_t quarter = (8 * n / order + 1) / 2;
  const auto rest = static_cast<std::int64_t>(4 * n) - static_cast<std::int64_t>(quarter * order);
  const double angle =
      std::numbers::pi / 2 * static_cast<double>(rest) / static_cast<double>(order);
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  switch (quarter % 4) {
    case 0:
      return {c, -s};
    case 1:
      return {-s, -c};
    case 2:
      return {-c, s};
    default:
      return {s, c};
  }
}

using Pointers = HarmonicPointers;
using Vector [[gnu::vector_size(sizeof(Pointers::Lanes))]] = double;

// Adds up one run of points: even ones go against cosines, odd ones against sines.
[[gnu::always_inline]] inline void AddPoints(const double* even, const double* odd,
                                             std::size_t count, const Pointers& seed,
                                             const Pointers& step, Pointers* total) {
  Vector cosine = {seed.cosine[0], seed.cosine[1], seed.cosine[2], seed.cosine[3]};
  Vector sine = {seed.sine[0], seed.sine[1], seed.sine[2], seed.sine[3]};
  const Vector step_cosine = {step.cosine[0], step.cosine[1], step.cosine[2], step.cosine[3]};
  const Vector step_sine = {step.sine[0], step.sine[1], step.sine[2], step.sine[3]};
  Vector cosines{};
  Vector sines{};
  for (std::size_t i = 0; i < count; ++i) {
    cosines += even[i] * cosine;
    sines += odd[i] * sine;
    const Vector turned = cosine * step_cosine - sine * step_sine;
    sine = sine * step_cosine + cosine * step_sine;
    cosine = turned;
  }
  for (std::size_t lane = 0; lane < kHarmonicLanes; ++lane) {
    total->cosine[lane] += cosines[lane];
    total->sine[lane] += sines[lane];
  }
}

void AddPortably(const double* even, const double* odd, std::size_t count, const Pointers& seed,
                 const Pointers& step, Pointers* total) {
  AddPoints(even, odd, count, seed, step, total);
}

#ifdef __x86_64__
// The same operations, so the same result, four lanes at a time.
[[gnu::target("avx2")]] void AddWithAvx2(const double* even, const double* odd, std::size_t count,
                                         const Pointers& seed, const Pointers& step,
                                         Pointers* total) {
  AddPoints(even, odd, count, seed, step, total);
}
#endif

void AddRun(const double* even, const double* odd, std::size_t count, const Pointers& seed,
            const Pointers& step, Pointers* total) {
#ifdef __x86_64__
  static const bool kHasAvx2 = __builtin_cpu_supports("avx2") != 0;
  if (kHasAvx2) {
    AddWithAvx2(even, odd, count, seed, step, total);
    return;
  }
#endif
  AddPortably(even, odd, count, seed, step, total);
}

}  // namespace

std::vector<Harmonic> OddHarmonics(double base_frequency, double sample_rate, std::size_t samples,
                                   int most) {
  constexpr double kHighestShare = 0.4;  // of the sample rate
  std::vector<Harmonic> harmonics;
  for (int k = 0; k < most; ++k) {
    const int number = 2 * k + 1;
    const double frequency = number * base_frequency;
    const double bin = std::floor(frequency * static_cast<double>(samples) / sample_rate + 0.5);
    if (!(frequency <= kHighestShare * sample_rate) || !(2 * bin < static_cast<double>(samples))) {
      break;
    }
    if (bin >= 1) {
      harmonics.push_back({number, static_cast<std::size_t>(bin)});
    }
  }
  return harmonics;
}

BinError BinErrorOf(double frequency, double sample_rate, std::size_t samples, std::size_t bin) {
  const auto count = static_cast<double>(samples);
  const double bins = frequency * count / sample_rate - static_cast<double>(bin);
  const double turn = std::numbers::pi * bins;
  const double sine = count * std::sin(turn / count);
  return {bins, sine == 0 ? 1 : std::sin(turn) / sine, 180 * bins * (count - 1) / count};
}

HarmonicPlan::HarmonicPlan(std::size_t samples, const std::vector<std::size_t>& bins)
    : samples_(samples) {
  std::size_t divisor = samples;
  for (const std::size_t bin : bins) {
    divisor = std::gcd(divisor, bin);
  }
  period_ = samples / divisor;
  for (const std::size_t bin : bins) {
    bins_.push_back(bin / divisor);
  }
  has_half_waves_ = period_ % 2 == 0 &&
                    std::all_of(bins_.begin(), bins_.end(), [](auto m) { return m % 2 != 0; });
  const std::size_t mirrored = has_half_waves_ ? period_ / 2 : period_;
  points_ = (mirrored - 1) / 2;
  for (std::size_t n = 0; n < period_; n += kFineRoots) {
    coarse_roots_.push_back(ExactRoot(n, period_));
  }
  for (std::size_t n = 0; n < std::min(kFineRoots, period_); ++n) {
    fine_roots_.push_back(ExactRoot(n, period_));
  }
  SeedPointers();
}

Complex HarmonicPlan::Root(std::uint64_t n) const {
  n %= period_;
  return Times(coarse_roots_[n / kFineRoots], fine_roots_[n % kFineRoots]);
}

// Unused lanes stay still.
void HarmonicPlan::SeedPointers() {
  const std::size_t groups = (bins_.size() + kHarmonicLanes - 1) / kHarmonicLanes;
  const auto pointers_at = [this](std::size_t group, std::uint64_t point) {
    Pointers pointers{};
    for (std::size_t lane = 0;
         lane < kHarmonicLanes && group * kHarmonicLanes + lane < bins_.size(); ++lane) {
      const Complex root = Root(bins_[group * kHarmonicLanes + lane] * point);
      pointers.cosine[lane] = root.real();
      pointers.sine[lane] = -root.imag();
    }
    return pointers;
  };
  for (std::size_t group = 0; group < groups; ++group) {
    steps_.push_back(pointers_at(group, 1));
    for (std::size_t point = 0; point < points_; point += kRun) {
      seeds_.push_back(pointers_at(group, point + 1));
    }
  }
}

// What a period, or half of one, adds up to.
std::vector<std::int64_t> HarmonicPlan::Fold(std::span<const std::int32_t> samples) const {
  std::vector<std::int64_t> sums(period_);
  for (std::size_t from = 0; from < samples_; from += period_) {
    for (std::size_t i = 0; i < period_; ++i) {
      sums[i] += samples[from + i];
    }
  }
  if (has_half_waves_) {
    const std::size_t half = period_ / 2;
    for (std::size_t i = 0; i < half; ++i) {
      sums[i] -= sums[i + half];
    }
    sums.resize(half);
  }
  return sums;
}

HarmonicPointers HarmonicPlan::SumLanes(std::size_t group, const std::vector<double>& even,
                                        const std::vector<double>& odd) const {
  const std::size_t runs = (points_ + kRun - 1) / kRun;
  Pointers total{};
  for (std::size_t run = 0; run < runs; ++run) {
    const std::size_t begin = run * kRun;
    const std::size_t count = std::min(points_ - begin, kRun);
    AddRun(&even[begin], &odd[begin], count, seeds_[group * runs + run], steps_[group], &total);
  }
  return total;
}

std::vector<Complex> HarmonicPlan::Evaluate(std::span<const std::int32_t> samples) const {
  const std::vector<std::int64_t> folded = Fold(samples);
  // Point i and its mirror have the same cosine and opposite sines, after half a wave the other way
  // round.
  const std::int64_t mirror = has_half_waves_ ? -1 : 1;
  const std::size_t count = folded.size();
  std::vector<double> even(points_);
  std::vector<double> odd(points_);
  for (std::size_t i = 0; i < points_; ++i) {
    const std::int64_t one = folded[i + 1];
    const std::int64_t other = mirror * folded[count - 1 - i];
    even[i] = static_cast<double>(one + other);
    odd[i] = static_cast<double>(one - other);
  }
  const double scale = 1 / static_cast<double>(samples_);
  std::vector<Complex> values;
  HarmonicPointers sums{};
  for (std::size_t k = 0; k < bins_.size(); ++k) {
    if (k % kHarmonicLanes == 0) {
      sums = SumLanes(k / kHarmonicLanes, even, odd);
    }
    Complex value(static_cast<double>(folded[0]) + sums.cosine[k % kHarmonicLanes],
                  -sums.sine[k % kHarmonicLanes]);
    if (count % 2 == 0) {
      value += static_cast<double>(folded[count / 2]) * Root(bins_[k] * (count / 2));
    }
    values.push_back(value * scale);
  }
  return values;
}

}  // namespace orvane
