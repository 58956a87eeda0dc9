// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/view_filter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>
#include <utility>

#include "base/number_text.h"

namespace orvane {
namespace {

constexpr double kNotchWidth = 2;  // Hz, where a single run is 3 dB down

// y(n) = b0 x(n) + b1 x(n-1) + b2 x(n-2) - a1 y(n-1) - a2 y(n-2)
struct Section {
  double b0;
  double b1;
  double b2;
  double a1;
  double a2;
  double slowest;  // Hz: how long it remembers is a few of its periods
  double gain;     // of a steady input, which its factors give too, but not at very low corners
};

// By the bilinear transform with the corner where it belongs.
Section Butterworth(double corner, double rate, bool is_high) {
  const double k = std::tan(std::numbers::pi * corner / rate);
  const double norm = 1 / (1 + std::numbers::sqrt2 * k + k * k);
  const double b = is_high ? norm : k * k * norm;
  return {b,
          is_high ? -2 * b : 2 * b,
          b,
          2 * (k * k - 1) * norm,
          (1 - std::numbers::sqrt2 * k + k * k) * norm,
          corner,
          is_high ? 0.0 : 1.0};
}

// Zeros on the unit circle at the line.
Section Notch(double line, double rate) {
  const double k = std::tan(std::numbers::pi * std::min(kNotchWidth / rate, 0.25));
  const double norm = 1 / (1 + k);
  const double b1 = -2 * std::cos(2 * std::numbers::pi * line / rate) * norm;
  return {norm, b1, norm, b1, (1 - k) * norm, 1.5 * kNotchWidth, 1};
}

// Four sections one behind the other at a time: each has a lane of a vector and works on what the
// one before made a step earlier, because a section alone waits for its own last result.
constexpr std::size_t kLanes = 4;
using Vector [[gnu::vector_size(kLanes * sizeof(double))]] = double;

// Begins as if the first value had been there for ever. Values are taken and put `stride` apart.
[[gnu::always_inline]] inline void RunLanes(std::span<const Section> sections, double* at,
                                            std::ptrdiff_t stride, std::size_t count) {
  Vector b0 = {1, 1, 1, 1};  // of lanes without a section, which pass on what they get
  Vector b1{};
  Vector b2{};
  Vector a1{};
  Vector a2{};
  Vector in{};
  double steady = *at;
  for (std::size_t lane = 0; lane < kLanes; ++lane) {
    in[lane] = steady;
    if (lane < sections.size()) {
      const Section& s = sections[lane];
      b0[lane] = s.b0;
      b1[lane] = s.b1;
      b2[lane] = s.b2;
      a1[lane] = s.a1;
      a2[lane] = s.a2;
      steady *= s.gain;
    }
  }
  Vector out = {in[1], in[2], in[3], steady};
  Vector z2 = b2 * in - a2 * out;
  Vector z1 = b1 * in - a1 * out + z2;
  double* to = at;
  for (std::size_t i = 0; i < count + kLanes - 1; ++i) {
    in = Vector{*at, out[0], out[1], out[2]};
    at += i + 1 < count ? stride : 0;
    out = b0 * in + z1;
    z1 = b1 * in - a1 * out + z2;
    z2 = b2 * in - a2 * out;
    if (i + 1 >= kLanes) {
      *to = out[kLanes - 1];
      to += stride;
    }
  }
}

#ifdef __x86_64__
// The same operations, so the same result, four lanes at a time.
[[gnu::target("avx2")]] void RunWithAvx2(std::span<const Section> sections, double* at,
                                         std::ptrdiff_t stride, std::size_t count) {
  RunLanes(sections, at, stride, count);
}
#endif

void RunFour(std::span<const Section> sections, double* at, std::ptrdiff_t stride,
             std::size_t count) {
#ifdef __x86_64__
  static const bool kHasAvx2 = __builtin_cpu_supports("avx2") != 0;
  if (kHasAvx2) {
    RunWithAvx2(sections, at, stride, count);
    return;
  }
#endif
  RunLanes(sections, at, stride, count);
}

// Forward and backward over the values and what mirrors them at both ends.
void RunBothWays(const std::vector<Section>& sections, double rate, std::vector<double>* values) {
  constexpr double kPeriods = 1.5;  // of a pass six time constants, of a notch three
  double slowest = rate;
  for (const Section& section : sections) {
    slowest = std::min(slowest, section.slowest);
  }
  const std::size_t count = values->size();
  const auto edge =
      static_cast<std::size_t>(std::min(static_cast<double>(count - 1), kPeriods * rate / slowest));
  std::vector<double> longer(count + 2 * edge);
  std::copy(values->begin(), values->end(), longer.begin() + static_cast<std::ptrdiff_t>(edge));
  for (std::size_t i = 1; i <= edge; ++i) {
    longer[edge - i] = 2 * values->front() - (*values)[i];
    longer[edge + count - 1 + i] = 2 * values->back() - (*values)[count - 1 - i];
  }
  for (const auto& [first, stride] :
       {std::pair(longer.data(), 1), std::pair(longer.data() + longer.size() - 1, -1)}) {
    for (std::size_t i = 0; i < sections.size(); i += kLanes) {
      RunFour(std::span(sections).subspan(i, std::min(kLanes, sections.size() - i)), first, stride,
              longer.size());
    }
  }
  std::copy_n(longer.begin() + static_cast<std::ptrdiff_t>(edge), count, values->begin());
}

void RemoveTrend(std::vector<double>* values) {
  const auto count = static_cast<double>(values->size());
  const double middle = (count - 1) / 2;
  double mean = 0;
  for (const double value : *values) {
    mean += value / count;
  }
  double product = 0;
  for (std::size_t i = 0; i < values->size(); ++i) {
    product += (static_cast<double>(i) - middle) * ((*values)[i] - mean);
  }
  const double squares = count * (count * count - 1) / 12;
  const double slope = squares > 0 ? product / squares : 0;
  for (std::size_t i = 0; i < values->size(); ++i) {
    (*values)[i] -= mean + slope * (static_cast<double>(i) - middle);
  }
}

Result<> CheckFrequency(const char* what, const std::optional<double>& frequency, double rate) {
  if (!frequency || (*frequency > 0 && *frequency < rate / 2)) {
    return {};
  }
  if (!(rate > 0)) {
    return Failure(std::string(what) + " needs a sample rate");
  }
  return Failure(std::string(what) + " " + FormatReal(*frequency) + " Hz is not between 0 and " +
                 FormatReal(rate / 2) + " Hz, half the sample rate");
}

}  // namespace

std::string ViewFilter::Text() const {
  std::string text = removes_trend ? "mean and trend removed" : "";
  const auto add = [&text](const char* what, const std::optional<double>& frequency) {
    if (frequency) {
      text.append(text.empty() ? "" : ", ").append(what).append(FormatReal(*frequency) + " Hz");
    }
  };
  add("high pass ", high_pass);
  add("low pass ", low_pass);
  add("notch ", mains);
  return text + (mains ? " and multiples" : "");
}

Result<> ViewFilter::Check(double rate) const {
  for (const Result<>& checked :
       {CheckFrequency("high pass", high_pass, rate), CheckFrequency("low pass", low_pass, rate),
        CheckFrequency("notch", mains, rate)}) {
    if (!checked) {
      return checked;
    }
  }
  return {};
}

void ViewFilter::Apply(double rate, std::vector<double>* values) const {
  if (values->empty()) {
    return;
  }
  if (removes_trend) {
    RemoveTrend(values);
  }
  std::vector<Section> sections;
  if (high_pass) {
    sections.push_back(Butterworth(*high_pass, rate, true));
  }
  if (low_pass) {
    sections.push_back(Butterworth(*low_pass, rate, false));
  }
  for (int n = 1; mains && n <= kMostNotches && n * *mains < rate / 2; ++n) {
    sections.push_back(Notch(n * *mains, rate));
  }
  if (!sections.empty()) {
    RunBothWays(sections, rate, values);
  }
}

}  // namespace orvane
