// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/export_forms.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/path_text.h"

namespace orvane {
namespace {

using Mseed = MseedForm;

constexpr auto kNetcdfFields = std::to_array<Field>({
    {NetcdfForm::kDeflate, Widget::kInteger, "Compression", {}, IntPT, Unbound(), {0, 9}},
});

constexpr auto kRecordLengths =
    std::to_array<Choice>({{"256"}, {"512"}, {"1024"}, {"2048"}, {"4096"}, {"8192"}});
constexpr int kUsualLength = 1;
constexpr int kLeastLength = 256;

constexpr auto kMseedFields = std::to_array<Field>({
    {Mseed::kNetwork, Widget::kText, "Network", {}, StrPT, Unbound()},
    {Mseed::kRecordLength,
     Widget::kCombo,
     "Record length (bytes)",
     {},
     IntPT,
     Unbound(),
     {},
     kRecordLengths},
    {Mseed::kKeepsBad, Widget::kCheck, "Keep bad records", {}, IntPT, Unbound()},
    {Mseed::kHasStation, Widget::kCheck, "Describe the station (StationXML)", {}, IntPT, Unbound()},
    {Mseed::kFolder, Widget::kPath, "Calibration folder", {}, StrPT, Unbound()},
    {Mseed::kLatitude, Widget::kText, "Latitude (degrees)", {}, StrPT, Unbound()},
    {Mseed::kLongitude, Widget::kText, "Longitude (degrees)", {}, StrPT, Unbound()},
    {Mseed::kElevation, Widget::kText, "Elevation (m)", {}, StrPT, Unbound()},
});

struct Coordinate {
  int control;
  double most;
};
constexpr auto kCoordinates = std::to_array<Coordinate>(
    {{Mseed::kLatitude, 90}, {Mseed::kLongitude, 180}, {Mseed::kElevation, 12000}});

// As archives name networks.
bool IsNetwork(std::string_view code) {
  return !code.empty() && code.size() <= 2 && std::all_of(code.begin(), code.end(), [](char c) {
    return IsDigit(c) || (UpperCased(c) >= 'A' && UpperCased(c) <= 'Z');
  });
}

}  // namespace

NetcdfForm::NetcdfForm() : model_(&none_, kNetcdfFields) { model_.SetText(kDeflate, "0"); }

NetcdfOptions NetcdfForm::Options() const {
  NetcdfOptions options;
  options.deflate = ParseInt(model_.Text(kDeflate)).value_or(0);
  return options;
}

MseedForm::MseedForm(const std::string& network, const std::string& calibrations)
    : model_(&none_, kMseedFields) {
  model_.SetText(kNetwork, IsNetwork(network) ? network : MseedOptions().network);
  model_.SetIndex(kRecordLength, kUsualLength);
  model_.SetText(kFolder, calibrations);
  Follow();
}

void MseedForm::Follow() {
  for (const int control : {kFolder, kLatitude, kLongitude, kElevation}) {
    model_.Enable(control, model_.Index(kHasStation) == 1);
  }
}

std::optional<double> MseedForm::NumberIn(int control) const {
  const std::string& text = model_.Text(control);
  return text.empty() || !model_.IsEnabled(control) ? std::nullopt : ParseReal(text);
}

std::optional<FormModel::Fault> MseedForm::Fault() const {
  if (!IsNetwork(model_.Text(kNetwork))) {
    return FormModel::Fault{kNetwork, "Enter one or two letters or digits."};
  }
  if (auto fault = model_.Validate()) {
    return fault;
  }
  for (const auto& [control, most] : kCoordinates) {
    const auto number = NumberIn(control);
    const bool is_given = model_.IsEnabled(control) && !model_.Text(control).empty();
    if (is_given && (!number || !(std::abs(*number) <= most))) {
      std::string message = "Enter a number from -";
      message.append(FormatReal(most)).append(" to ").append(FormatReal(most));
      return FormModel::Fault{control, message.append(", or nothing.")};
    }
  }
  return std::nullopt;
}

MseedOptions MseedForm::Options() const {
  MseedOptions options;
  options.network = model_.Text(kNetwork);
  options.record_length = kLeastLength << model_.Index(kRecordLength);
  options.keeps_bad = model_.Index(kKeepsBad) == 1;
  options.has_station = model_.Index(kHasStation) == 1;
  if (options.has_station) {
    options.calibrations = PathOf(model_.Text(kFolder));
    options.place = {NumberIn(kLatitude), NumberIn(kLongitude), NumberIn(kElevation)};
  }
  return options;
}

}  // namespace orvane
