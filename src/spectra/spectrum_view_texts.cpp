// SPDX-License-Identifier: GPL-3.0-or-later
// What a spectrum on display says in words and numbers.
#include <algorithm>

#include "base/number_text.h"
#include "spectra/spectrum_calibration.h"
#include "spectra/spectrum_text.h"
#include "spectra/spectrum_view.h"

namespace orvane {
namespace {

constexpr int kDigits = 5;

void Add(const std::string& part, const char* between, std::string* text) {
  if (!part.empty()) {
    text->append(text->empty() ? "" : between).append(part);
  }
}

std::string UnitOf(const SpectrumChannel& channel, bool is_density) {
  return (channel.unit.empty() ? "counts" : channel.unit) + (is_density ? "/√Hz" : "");
}

std::string NumberOr(const std::optional<double>& number) {
  return number ? FormatReal(*number, kDigits) : "";
}

}  // namespace

std::string SpectrumView::Caption() const {
  if (spectrum_.channels.empty()) {
    return empty_;
  }
  std::string text = what_ + ", bins of " + FormatReal(spectrum_.BinWidth(), kDigits) + " Hz";
  Add(note_, "; ", &text);
  Add(uncorrected_.empty() ? "corrected by its calibrations" : uncorrected_, "; ", &text);
  Add(uncorrected_.empty() && calibration_ ? calibration_->Note() : "", "; ", &text);
  return text;
}

std::string SpectrumView::ValueLabel() const {
  std::vector<std::string> units;
  for (std::size_t c = 0; c < spectrum_.channels.size(); ++c) {
    std::string unit = UnitOf(spectrum_.channels[c], is_density_);
    if (IsDrawn(c) && std::find(units.begin(), units.end(), unit) == units.end()) {
      units.push_back(std::move(unit));
    }
  }
  std::string all;
  for (const std::string& unit : units) {
    Add(unit, ", ", &all);
  }
  const std::string name = is_density_ ? "Root of power density" : "Amplitude";
  return all.empty() ? name : name + " (" + all + ")";
}

std::string SpectrumView::Summary() const {
  std::string text = Caption() + ".";
  if (fundamental_ > 0 && !spectrum_.channels.empty()) {
    text += " Fundamental " + FormatReal(fundamental_, kDigits) + " Hz.";
  }
  for (std::size_t c = 0; c < spectrum_.channels.size(); ++c) {
    const SpectrumChannel& channel = spectrum_.channels[c];
    if (!IsDrawn(c) || channel.powers.size() < 2) {
      continue;
    }
    const auto peak = std::max_element(channel.powers.begin() + 1, channel.powers.end());
    const auto bin = static_cast<std::size_t>(peak - channel.powers.begin());
    text += " " + channel.name;
    text += *peak > 0 ? ": greatest " + FormatReal(Value(c, bin), kDigits) + " " +
                            UnitOf(channel, is_density_) + " at " +
                            FormatReal(spectrum_.Frequency(bin), kDigits) + " Hz."
                      : ": nothing but zero.";
  }
  return text;
}

std::string SpectrumView::Text() const {
  Spectrum drawn = spectrum_;
  drawn.channels.clear();
  for (std::size_t c = 0; c < spectrum_.channels.size(); ++c) {
    if (IsDrawn(c)) {
      drawn.channels.push_back(spectrum_.channels[c]);
    }
  }
  std::string text;
  PutSpectrum(drawn, is_density_, [&text](std::string_view piece) { text += piece; });
  return text;
}

std::string SpectrumView::HarmonicsText(std::size_t channel) const {
  const std::vector<HarmonicRow> rows = Harmonics(channel);
  if (rows.empty()) {
    return {};
  }
  const SpectrumChannel& of = spectrum_.channels[channel];
  std::string text = "harmonic\tfrequency (Hz)\t" + SpectrumLabel(of, false) + "\tnoise floor (" +
                     UnitOf(of, true) + ")\tsignal to noise (dB)\n";
  for (const HarmonicRow& row : rows) {
    text += FormatInt(row.number) + "\t" + FormatReal(row.frequency, kDigits) + "\t" +
            FormatReal(row.amplitude, kDigits) + "\t" + NumberOr(row.floor) + "\t" +
            NumberOr(row.signal_to_noise) + "\n";
  }
  return text;
}

}  // namespace orvane
