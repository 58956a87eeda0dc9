// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/box_model.h"

namespace orvane {
namespace {

using ChannelParameters = std::array<double, BoxModel::kParameters>;

// The last but two are replaced by what the calibration measured.
constexpr ChannelParameters kStart = {0,       0,      0,   3.3e-9, 1e-8, 3.3e-8, 1e-7,
                                      3.3e-7,  0.001,  55,  0.01,   137,  424,    0.00022,
                                      3.3e-10, 5.6e-9, 100, 2,      600,  297};

// The passes whose first records hold parameters 17 and 18 as their fourth value.
constexpr std::size_t kPassOf17 = 0;
constexpr std::size_t kPassOf18 = 9;

ChannelParameters StartOf(std::uint32_t flags) {
  ChannelParameters parameters = kStart;
  if ((flags & kSecondVariant) != 0) {
    for (const std::size_t k : {4U, 5U, 6U, 7U}) {
      parameters[k] = 0;
    }
    parameters[10] = 0.001;
    parameters[11] = 55;
    parameters[16] = 1e9;
  }
  if ((flags & kFirstVariant) != 0) {
    parameters[12] = 332;
  }
  return parameters;
}

// A calibration without that many passes leaves the parameter as it is.
void TakeFourthValue(const CalData& cal, std::size_t pass, std::size_t channel, double* parameter) {
  if (pass < cal.PassCount()) {
    *parameter = cal.Pass(pass).front().channels[channel].values[3];
  }
}

}  // namespace

void FitBoxModel(CalData* cal) {
  BoxModel& model = cal->model;
  const std::size_t channels = cal->Channels();
  model.frequencies.assign(BoxModel::kSlotEntries, 0);
  model.responses.assign(channels * BoxModel::kSlotEntries, 0);
  model.parameter_count = BoxModel::kParameters;
  for (std::size_t c = 0; c < channels; ++c) {
    ChannelParameters parameters = StartOf(cal->channel_flags[c]);
    TakeFourthValue(*cal, kPassOf17, c, &parameters[17]);
    TakeFourthValue(*cal, kPassOf18, c, &parameters[18]);
    for (std::size_t k = 0; k < parameters.size(); ++k) {
      model.parameters[k * channels + c] = parameters[k];
    }
  }
}

}  // namespace orvane
