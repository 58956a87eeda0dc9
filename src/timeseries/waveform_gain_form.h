// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WAVEFORM_GAIN_FORM_H_
#define ORVANE_TIMESERIES_WAVEFORM_GAIN_FORM_H_

#include <string>

#include "forms/form_model.h"
#include "timeseries/waveform_view.h"

namespace orvane {

/// The dialog of the gains that a record, or all of a file, are shown by where the companion table
/// has others than they were recorded with. Its fields belong to no parameter.
class WaveformGainForm {
 public:
  enum : int { kElectric = 1011, kOther, kForAll };
  static constexpr double kMinGain = 1e-6;
  static constexpr double kMaxGain = 1e6;

  /// The view must have gains.
  explicit WaveformGainForm(const WaveformView& view);

  FormModel& Model() { return model_; }
  /// "Gains of Segment 3".
  std::string Title() const;
  /// What the companion table has: "The parameter table: E x 4, others x 1".
  std::string Hint() const;
  /// Takes what is entered. Gains nobody changed stay as they are.
  void Commit(WaveformView* view) const;

 private:
  double GainIn(int control, double before) const;

  ParamTable none_;
  FormModel model_;
  std::uint64_t number_;
  WaveformGains before_;
  WaveformGains table_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WAVEFORM_GAIN_FORM_H_
