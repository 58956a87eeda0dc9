// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_OTHER_RECORD_H_
#define ORVANE_TIMESERIES_WIDGETS_OTHER_RECORD_H_

#include <memory>

#include "timeseries/waveform_view.h"

namespace orvane {

/// A second record of a file, which is drawn over the one shown: a neighbour, or a chosen one.
class OtherRecord {
 public:
  enum class Which { kNone, kNext, kPrevious, kChosen };

  void Choose(Which which, std::uint64_t number = 0);
  Which Chosen() const { return which_; }
  /// The file is another, or was read again.
  void Forget() { other_.reset(); }
  /// Its view, brought to what `view` shows; null: there is no such record, or none is wanted.
  WaveformView* Follow(const WaveformView& view);

 private:
  std::uint64_t NumberBeside(std::uint64_t shown) const;

  Which which_ = Which::kNone;
  std::uint64_t number_ = 0;
  std::unique_ptr<WaveformView> other_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_OTHER_RECORD_H_
