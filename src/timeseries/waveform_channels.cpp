// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/waveform_channels.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/ascii.h"
#include "base/number_format.h"
#include "base/number_text.h"
#include "table/param_access.h"
#include "table/param_time.h"
#include "timeseries/sample_decoder.h"

namespace orvane {
namespace {

constexpr double kRawScale = 1.0 / 256;
constexpr int kNamedChannels = 8;
constexpr int kMaxTickDecimals = 20;

std::string Fixed(double value, int precision, int width = 0) {
  std::array<char, kMaxNumberText> text{};
  return {text.data(), WriteFixed(text.data(), value, precision, width)};
}

// "%-{width}.{precision}f"
std::string FixedLeft(double value, int precision, std::size_t width) {
  std::string text = Fixed(value, precision);
  text.append(width > text.size() ? width - text.size() : 0, ' ');
  return text;
}

std::string NameOf(const TsCompanion* companion, int number) {
  std::string name;
  if (companion != nullptr && number <= kNamedChannels) {
    name = ParamAsText(companion->Table(), std::string("CHDEF").append(FormatInt(number)));
  }
  return name.empty() ? std::string("Ch ").append(FormatInt(number)) : name;
}

// What volts are multiplied by to be shown, and the unit that is then theirs.
struct Unit {
  double factor = 1;
  const char* text = "";
};

Unit UnitOf(char kind, bool has_small_unit, double nominal) {
  switch (kind) {
    case 'E':
      return has_small_unit ? Unit{1e6, " (Micro V)"} : Unit{1e3, " (mV)"};
    case 'H':
      return {1e9 / (nominal * 1e6), " (nT)"};
    case 'B':
      return {1e6, " (Micro V)"};
    default:
      return {};
  }
}

}  // namespace

WaveformGains GainsOf(const ParamTable& table) {
  return {std::pow(4.0, IntParam(table, "EGNC")), std::pow(4.0, IntParam(table, "HGNC"))};
}

std::vector<WaveformChannel> WaveformChannels(const TsHeader& header, const TsCompanion* companion,
                                              const WaveformUnits& units) {
  std::vector<WaveformChannel> channels(header.channels);
  for (std::size_t i = 0; i < channels.size(); ++i) {
    WaveformChannel& channel = channels[i];
    channel.name = NameOf(companion, static_cast<int>(i) + 1);
    channel.scale = kRawScale;
    channel.unit = units.has_counts ? " (counts)" : "";
    if (companion == nullptr || units.has_counts) {
      continue;
    }
    const ParamTable& table = companion->Table();
    const char kind = UpperCased(channel.name.front());
    const WaveformGains gains = units.gains.value_or(GainsOf(table));
    const double gain = kind == 'E' ? gains.electric : gains.other;
    const double full_scale = RealParam(table, "FSCV");
    const double nominal = RealParam(table, "HNOM");
    const Unit unit = UnitOf(kind, units.has_small_unit, nominal);
    const double scale = full_scale / kFullScale / gain * unit.factor;
    const bool has_sensor = kind != 'H' || nominal > 0;
    if (full_scale != 0 && std::isfinite(gain) && std::isfinite(scale * kFullScale) && has_sensor) {
      channel.scale = scale;
      channel.unit = unit.text;
    }
  }
  return channels;
}

std::string WaveformTitle(const TsHeader& header, std::uint64_t number, std::uint64_t count) {
  return std::string("Freq(Hz):")
      .append(Fixed(header.frequency, 4, 10))
      .append(", Sample Rate:")
      .append(Fixed(SampleRate(header), 1, 8))
      .append(",  Scans: ")
      .append(FormatInt(header.scans))
      .append(",  Time: ")
      .append(FormatParamTime(header.time))
      .append(",  (")
      .append(FormatInt(number))
      .append(" / ")
      .append(FormatInt(count))
      .append(" )");
}

std::string BrokenTitle(std::string_view title, const std::function<bool(std::string_view)>& fits) {
  std::string broken;
  while (!title.empty() && !fits(title)) {
    std::size_t end = 0;  // of what goes into this line
    for (std::size_t at = title.find(", "); at < title.size(); at = title.find(", ", at + 1)) {
      end = end == 0 || fits(title.substr(0, at + 1)) ? at + 1 : end;
    }
    if (end == 0) {
      break;  // one piece: nothing to break
    }
    broken.append(title.substr(0, end)).append("\n");
    title.remove_prefix(title.find_first_not_of(' ', end));
  }
  return broken.append(title);
}

std::string WaveformStatus(const TsHeader& header, bool has_status, double peak_to_peak) {
  if (has_status && header.IsBad()) {
    return std::string("\n (Sta: ").append(FormatInt(header.status)).append(" )");
  }
  return std::string("\n ( ").append(FixedLeft(peak_to_peak, 2, 8)).append("  )");
}

AxisTicks TicksBetween(double low, double high, int most) {
  AxisTicks ticks;
  const double span = high - low;
  if (!(span > 0) || !std::isfinite(span) || most < 1) {
    return ticks;
  }
  const double rough = span / most;
  int decade = static_cast<int>(std::floor(std::log10(rough)));
  const double power = std::pow(10.0, decade);
  const double factor = rough / power;
  double nice = 10;
  for (const double candidate : {5.0, 2.0, 1.0}) {
    nice = factor <= candidate ? candidate : nice;
  }
  ticks.step = nice * power;
  decade += nice == 10 ? 1 : 0;
  ticks.precision = std::clamp(-decade, 0, kMaxTickDecimals);
  const double first = std::ceil(low / ticks.step - 1e-9);
  for (int i = 0; i <= most; ++i) {
    const double value = (first + i) * ticks.step;
    if (value > high + ticks.step * 1e-9) {
      break;
    }
    ticks.values.push_back(value == 0 ? 0.0 : value);  // no "-0"
  }
  return ticks;
}

AxisTicks StripTicks(double low, double high, double pixels, double line) {
  constexpr int kMost = 6;
  constexpr double kApart = 1.15;  // lines of text
  constexpr double kNear = 0.5;    // to the middle, of the axis
  const double span = high - low;
  const double margin = span * line / 2 / pixels;
  AxisTicks chosen;
  for (int most = kMost; most > 0; --most) {
    AxisTicks ticks = TicksBetween(low + margin, high - margin, most);
    const bool is_apart = ticks.step / span * pixels >= kApart * line;
    if (ticks.values.size() >= 2 && is_apart) {
      return ticks;
    }
    if (!ticks.values.empty()) {
      chosen = std::move(ticks);
    }
  }
  // Room for one number only: that in the middle.
  const double middle = low + kNear * span;
  const auto nearest = std::min_element(
      chosen.values.begin(), chosen.values.end(),
      [middle](double a, double b) { return std::abs(a - middle) < std::abs(b - middle); });
  if (nearest != chosen.values.end()) {
    chosen.values = {*nearest};
  }
  return chosen;
}

std::string TickText(double value, int precision) { return FixedLeft(value, precision, 6); }

}  // namespace orvane
