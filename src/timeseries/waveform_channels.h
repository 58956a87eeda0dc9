// SPDX-License-Identifier: GPL-3.0-or-later
// What the display says of a record: names, units, scales, texts. No pixels.
#ifndef ORVANE_TIMESERIES_WAVEFORM_CHANNELS_H_
#define ORVANE_TIMESERIES_WAVEFORM_CHANNELS_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "timeseries/ts_companion.h"
#include "timeseries/ts_header.h"

namespace orvane {

inline constexpr double kFullScale = 2147483392.0;  ///< held value of the largest sample

/// How a channel is shown.
struct WaveformChannel {
  std::string name;  ///< from "CHDEF1" .. "CHDEF8", else "Ch %d"
  std::string unit;  ///< " (mV)", " (Micro V)", " (nT)", " (counts)" or empty
  double scale = 1;  ///< shown value = held value x scale

  std::string Label() const { return name + unit; }
};

/// What the volts at the input were multiplied by, for channels named E... and for all others.
struct WaveformGains {
  double electric = 1;
  double other = 1;

  bool operator==(const WaveformGains&) const = default;
};

/// 4 to the power of "EGNC", of "HGNC".
WaveformGains GainsOf(const ParamTable& table);

struct WaveformUnits {
  bool has_small_unit = false;         ///< electric channels in microvolts instead of millivolts
  bool has_counts = false;             ///< counts of the box in place of any unit
  std::optional<WaveformGains> gains;  ///< of the record, in place of the companion table's

  bool operator==(const WaveformUnits&) const = default;
};

/// The channels of a record by the companion table; null: "Ch %d" and raw counts. Volts are held
/// value x "FSCV" / 2147483392 / gain, the gain that of `units`, else of `GainsOf()`; magnetic
/// channels, H..., also go through "HNOM" x 1e6. Raw counts without a unit are shown where "FSCV"
/// is 0, where "HNOM" of a magnetic channel is not above 0, and where the scale would not be a
/// finite number.
std::vector<WaveformChannel> WaveformChannels(const TsHeader& header, const TsCompanion* companion,
                                              const WaveformUnits& units = {});

/// "Freq(Hz):%10.4f, Sample Rate:%8.1f,  Scans: %d,  Time: %s,  (%d / %d )"; the scans are the
/// header's.
std::string WaveformTitle(const TsHeader& header, std::uint64_t number, std::uint64_t count);

/// The title in as few lines as let each of them fit, broken after commas.
std::string BrokenTitle(std::string_view title, const std::function<bool(std::string_view)>& fits);

/// The line under a channel's label: "\n (Sta: %d )" for a bad record, else "\n ( %-8.2f  )" with
/// the peak-to-peak value.
std::string WaveformStatus(const TsHeader& header, bool has_status, double peak_to_peak);

/// Round values between `low` and `high`, a step of 1, 2 or 5 times a power of ten apart.
struct AxisTicks {
  double step = 1;
  int precision = 0;  ///< decimals by which neighbours differ
  std::vector<double> values;
};
/// About `most` ticks, never more; none for a range that is empty or not finite.
AxisTicks TicksBetween(double low, double high, int most);
/// The ticks of a value axis of so many pixels whose numbers are lines of text so high: none of
/// them touches another, or reaches beyond the axis to that of the next strip.
AxisTicks StripTicks(double low, double high, double pixels, double line);
/// "%-6.*lf"
std::string TickText(double value, int precision);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WAVEFORM_CHANNELS_H_
