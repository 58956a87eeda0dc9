// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WAVEFORM_FORM_H_
#define ORVANE_TIMESERIES_WAVEFORM_FORM_H_

#include <cstdint>
#include <optional>
#include <string_view>

#include "forms/form_model.h"
#include "timeseries/waveform_view.h"

namespace orvane {

/// The dialog of the display's settings. Its fields belong to no parameter.
class WaveformForm {
 public:
  /// kept: misspelled, as users know it.
  static constexpr std::string_view kTitle = "Wavefrom Display Parameters";
  enum : int { kTimer = 1001, kZoom, kAutoScale, kSegment, kAutoPlay };

  explicit WaveformForm(const WaveformView& view);

  FormModel& Model() { return model_; }
  /// The first field that is not acceptable: the dialog stays open then.
  std::optional<FormModel::Fault> Validate() const;
  /// Takes what is entered, if it is acceptable: the settings and the record to show.
  void Commit(WaveformView* view) const;

 private:
  double NumberIn(int control) const;

  ParamTable none_;
  FormModel model_;
  std::uint64_t count_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WAVEFORM_FORM_H_
