// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/recording_responses.h"

#include <vector>

namespace orvane {
namespace {

// The smallest band of this rate, else 0.
int BandOfRate(const RecordingHeader& header, double rate) {
  for (int band = 1; band <= kLastBand; ++band) {
    double looked_up = 0;
    if (LookupSampleRate(&header, band, &looked_up) == kOk && looked_up == rate) {
      return band;
    }
  }
  return 0;
}

}  // namespace

Status RecordingResponses::Prepare(double sample_rate) {
  const int band = source_.band > 0 ? source_.band : BandOfRate(source_.header, sample_rate);
  const Status status = box_.Prepare(source_.box.get(), &source_.header, band);
  if (status != kOk) {
    return status;
  }
  const bool is_known = box_.RateStatus() == kOk;
  has_own_rate_ = sample_rate > 0 && box_.SampleRate() != sample_rate &&
                  (is_known || !HasRateTable(source_.header));
  if (has_own_rate_) {
    box_.TakeRate(sample_rate);
  }
  return kOk;
}

Status RecordingResponses::At(double frequency, std::span<Complex> box,
                              std::span<Complex> sensor) const {
  std::vector<double> validities(box.size());
  const Status status = box_.At(frequency, box, validities);
  for (std::size_t c = 0; c < box.size() && status == kOk; ++c) {
    const CalibratedChannel& channel = source_.channels[c];
    box[c] = channel.is_reversed ? -box[c] : box[c];
    sensor[c] = channel.sensor_cal == nullptr ? 1 : channel.sensor.At(frequency);
  }
  return status;
}

}  // namespace orvane
