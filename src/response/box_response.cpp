// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/box_response.h"

#include <algorithm>

#include "base/ascii.h"

namespace orvane {
namespace {

// Boxes whose records are taken themselves; a model only leads from their settings to others.
bool IsOlderFamily(std::string hardware) {
  constexpr std::string_view kFamily = "ZLA";
  std::transform(hardware.begin(), hardware.end(), hardware.begin(), UpperCased);
  bool has_tag = false;
  for (auto at = hardware.find(kFamily); at != std::string::npos; at = hardware.find(kFamily, at)) {
    hardware.erase(at, kFamily.size());
    has_tag = true;
  }
  return has_tag && hardware.find('A') == std::string::npos &&
         hardware.find("QVN") == std::string::npos;
}

}  // namespace

bool IsOfOlderFamily(const RecordingHeader& header) {
  return IsOlderFamily(SettingText(header, "HW"));
}

int RecordKind(int low_pass) {
  const LowPassFilter filter = LowPassFilterOf(low_pass);
  return filter.strength < 0 ? 0 : 16 + filter.strength;
}

Status BoxResponse::Prepare(const CalData* cal, const RecordingHeader* header, int band) {
  *this = {};
  if (cal == nullptr) {
    return kNoCalibration;
  }
  if (header == nullptr) {
    return kNoRecordingHeader;
  }
  if (static_cast<std::size_t>(header->channels) != cal->Channels()) {
    return kChannelsDiffer;
  }
  const bool is_older = IsOfOlderFamily(*header);
  if (!is_older && cal->model.parameter_count == 0) {
    return kNoRecordOfKind;
  }
  const AllChannelSettings all = FillChannelSettings(*header);
  channels_.resize(cal->Channels());
  for (std::size_t c = 0; c < channels_.size(); ++c) {
    const ChannelSettings& settings = all[c];
    Channel& channel = channels_[c];
    channel.parameters = ParametersOf(*cal, c);
    channel.setting = {settings.gain, settings.low_pass, settings.coupling, settings.Source()};
    if (is_older && settings.is_mapped) {
      const int kind = RecordKind(settings.low_pass);
      channel.has_records = true;
      channel.curve = RecordCurve(CurvePoints(RecordsOfKind(*cal, kind), c));
      channel.curve_setting.low_pass = kind;
      curve_status_ = channel.curve.IsEmpty() ? kNoRecordOfKind : curve_status_;
    }
  }
  rate_status_ = LookupSampleRate(header, band, &filter_.sample_rate);
  filter_.stages = SettingInt(*header, "TALS");
  filter_.sharpness = SettingInt(*header, "TCMB");
  filter_.line_frequency = SettingInt(*header, "LFRQ");
  filter_.older_base_rate = SettingInt(*header, "Q2SR");
  return kOk;
}

Complex BoxResponse::Channel::At(double frequency) const {
  const Complex h = FrontEnd(parameters, setting).Response(frequency);
  if (!has_records) {
    return h;
  }
  const Complex swept = FrontEnd(parameters, curve_setting).Response(frequency);
  const Complex ratio = std::abs(swept) == 0 ? Complex(1) : Times(h, Inverse(swept));
  return Times(curve.At(frequency), ratio);
}

Status BoxResponse::At(double frequency, std::span<Complex> responses,
                       std::span<double> validities) const {
  bool are_valid = true;
  for (std::size_t c = 0; c < channels_.size(); ++c) {
    responses[c] = channels_[c].At(frequency);
    const bool is_valid = IsFinite(responses[c]) && responses[c] != 0.0;
    validities[c] = is_valid ? 0 : -1;
    are_valid = are_valid && is_valid;
  }
  if (rate_status_ != kOk) {
    return curve_status_ != kOk ? curve_status_ : rate_status_;
  }
  const Complex filter = filter_.Response(frequency);
  for (std::size_t c = 0; c < channels_.size(); ++c) {
    if (validities[c] >= 0) {
      responses[c] = Times(responses[c], filter);
    }
  }
  return curve_status_ != kOk ? curve_status_ : are_valid ? kOk : kAmplitudeNegative;
}

Status ComputeBoxResponse(const CalData* cal, const RecordingHeader* header, int band,
                          double frequency, std::span<Complex> responses,
                          std::span<double> validities) {
  BoxResponse box;
  const Status status = box.Prepare(cal, header, band);
  return status == kOk ? box.At(frequency, responses, validities) : status;
}

}  // namespace orvane
