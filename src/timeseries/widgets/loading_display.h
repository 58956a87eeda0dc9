// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_LOADING_DISPLAY_H_
#define ORVANE_TIMESERIES_WIDGETS_LOADING_DISPLAY_H_

#include "timeseries/widgets/loading_strip.h"
#include "ui/display.h"

namespace orvane {

/// Stands in a waveform's place while its records are read. Leaving it cancels the reading.
class CLoadingDisplay : public CDisplay {
  Q_OBJECT

 public:
  explicit CLoadingDisplay(std::unique_ptr<TsLoading> loading, QWidget* parent = nullptr);

  LoadingStrip& Strip() { return *strip_; }
  QString Title() const override { return title_; }
  void ScrollBack() override {}
  void ScrollForward() override {}
  void Reload() override {}

 private:
  LoadingStrip* strip_;
  QString title_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_LOADING_DISPLAY_H_
