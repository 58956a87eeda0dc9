// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_BOX_RESPONSE_H_
#define ORVANE_RESPONSE_BOX_RESPONSE_H_

#include <span>
#include <vector>

#include "response/cal_file.h"
#include "response/decimation_filter.h"
#include "response/record_curve.h"
#include "response/recording_header.h"

namespace orvane {

/// Whether a recording's box is of the older family, whose records are taken themselves.
bool IsOfOlderFamily(const RecordingHeader& header);
/// The kind byte of the records that were swept with a low-pass filter, by its "LPFR" code.
int RecordKind(int low_pass);

/// The response of a box's channels in one recording and band: front end times decimation filter.
/// Everything that does not depend on the frequency is worked out once.
class BoxResponse {
 public:
  /// 0, 1222, 1228 or 1246, and nothing can be computed otherwise. The calibration must outlive
  /// this.
  Status Prepare(const CalData* cal, const RecordingHeader* header, int band);

  /// One response and one validity value a channel: 0, or -1 where the response is worthless.
  /// Always fills as many as `Channels()`. 0, 1229 (the older family: no records of a setting in
  /// use), 1232 (a channel is not valid), or what the look-up of the sample rate came to.
  Status At(double frequency, std::span<Complex> responses, std::span<double> validities) const;

  std::size_t Channels() const { return channels_.size(); }
  /// How a channel is switched, from 0.
  const FrontEndSetting& Setting(std::size_t channel) const { return channels_[channel].setting; }
  /// Of the band in Hz, as looked up, and what the look-up came to.
  double SampleRate() const { return filter_.sample_rate; }
  Status RateStatus() const { return rate_status_; }
  /// The digital filters are those of this rate instead.
  void TakeRate(double rate) {
    filter_.sample_rate = rate;
    rate_status_ = kOk;
  }

 private:
  struct Channel {
    FrontEndParameters parameters;
    FrontEndSetting setting;
    // Of the older family, where the channel is recorded: records instead of a model.
    bool has_records = false;
    RecordCurve curve;
    FrontEndSetting curve_setting;

    Complex At(double frequency) const;
  };

  std::vector<Channel> channels_;
  DecimationFilter filter_;
  Status rate_status_ = kOk;
  Status curve_status_ = kOk;
};

/// The same for one frequency.
Status ComputeBoxResponse(const CalData* cal, const RecordingHeader* header, int band,
                          double frequency, std::span<Complex> responses,
                          std::span<double> validities);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_BOX_RESPONSE_H_
