// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/other_record.h"

namespace orvane {

void OtherRecord::Choose(Which which, std::uint64_t number) {
  which_ = which;
  number_ = number;
}

std::uint64_t OtherRecord::NumberBeside(std::uint64_t shown) const {
  switch (which_) {
    case Which::kNext:
      return shown + 1;
    case Which::kPrevious:
      return shown - 1;
    case Which::kChosen:
      return number_;
    case Which::kNone:
      break;
  }
  return 0;
}

WaveformView* OtherRecord::Follow(const WaveformView& view) {
  const std::uint64_t number = NumberBeside(view.Number());
  if (which_ == Which::kNone || number == 0 || number > view.Count()) {
    return nullptr;
  }
  if (other_ == nullptr) {
    other_ = std::make_unique<WaveformView>();
    if (!other_->Open(view.File().Path(), view.Options())) {
      Forget();
      return nullptr;
    }
  }
  other_->SetSmallUnit(view.HasSmallUnit());
  other_->SetSettings(view.Settings());
  if (!(other_->Shape() == view.Shape())) {
    other_->SetShape(view.Shape());
  }
  return other_->Number() == number || other_->GoTo(number) ? other_.get() : nullptr;
}

}  // namespace orvane
