// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_RECORDING_RESPONSES_H_
#define ORVANE_SPECTRA_RECORDING_RESPONSES_H_

#include <span>

#include "response/box_response.h"
#include "spectra/spectra_source.h"

namespace orvane {

/// What box and sensors did to the channels of a recording.
class RecordingResponses {
 public:
  /// The source, with box and channels, must outlive this.
  explicit RecordingResponses(const SpectraSource* source) : source_(*source) {}

  /// For records of this rate. A box that has a table of rates can store no other: there its
  /// look-up has the last word. 0, or what the box's response came to.
  Status Prepare(double sample_rate);
  /// The digital filters are those of the records' own rate: no band has it.
  bool HasOwnRate() const { return has_own_rate_; }

  /// One response of box and of sensor for each channel; 1 without a sensor's calibration. A
  /// channel that is wired the other way has its box's negative. 0, or as `BoxResponse::At`.
  Status At(double frequency, std::span<Complex> box, std::span<Complex> sensor) const;

 private:
  const SpectraSource& source_;
  BoxResponse box_;
  bool has_own_rate_ = false;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_RECORDING_RESPONSES_H_
