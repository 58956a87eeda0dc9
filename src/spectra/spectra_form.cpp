// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/spectra_form.h"

#include <array>

#include "base/number_text.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr double kHighestFrequency = 1e6;
constexpr int kMostHarmonics = 65535;

constexpr auto kFields = std::to_array<Field>({
    {SpectraForm::kFolder, Widget::kPath, "Calibration folder", {}, StrPT, Unbound()},
    {SpectraForm::kBaseFrequency,
     Widget::kReal,
     "Base frequency (Hz)",
     {},
     FltPT,
     Unbound(),
     {0, kHighestFrequency}},
    {SpectraForm::kHarmonics,
     Widget::kInteger,
     "Harmonics",
     {},
     IntPT,
     Unbound(),
     {1, kMostHarmonics}},
    {SpectraForm::kReversed, Widget::kText, "Reversed channels", {}, StrPT, Unbound()},
});

}  // namespace

SpectraForm::SpectraForm(const std::string& folder) : model_(&none_, kFields) {
  const SpectraOptions usual;
  model_.SetText(kFolder, folder);
  model_.SetText(kBaseFrequency, "0");
  model_.SetText(kHarmonics, FormatInt(usual.most_harmonics));
}

std::optional<FormModel::Fault> SpectraForm::Fault() const {
  if (auto fault = model_.Validate()) {
    return fault;
  }
  if (!ChannelsIn(model_.Text(kReversed))) {
    return FormModel::Fault{kReversed, "Enter numbers from 1 to 12 with commas between them."};
  }
  return std::nullopt;
}

SpectraOptions SpectraForm::Options() const {
  SpectraOptions options;
  options.calibration_folder = PathOf(model_.Text(kFolder));
  options.base_frequency = ParseReal(model_.Text(kBaseFrequency)).value_or(0);
  options.most_harmonics = ParseInt(model_.Text(kHarmonics)).value_or(options.most_harmonics);
  options.reversed = ChannelsIn(model_.Text(kReversed)).value_or(options.reversed);
  return options;
}

}  // namespace orvane
