// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_WIDGETS_DECAY_PLOT_H_
#define ORVANE_SPECTRA_WIDGETS_DECAY_PLOT_H_

#include "spectra/decay_view.h"
#include "timeseries/widgets/marks_plot.h"

namespace orvane {

/// Draws what a `DecayView` has of a channel: records thin, their stack thick with spreads,
/// outliers in the colour of warnings.
class DecayPlot : public MarksPlot {
  Q_OBJECT

 public:
  explicit DecayPlot(QWidget* parent);

  /// The title is in saved pictures and for assistive tools; parts of it end with "; ".
  void Show(const QString& title, DecayLines lines, const StackPicture& picture);
  const DecayLines& Shown() const { return lines_; }
  Result<> Save(const QString& path, const QSize& size) const override;

 protected:
  void Draw() override;

 private:
  QString title_;
  bool has_title_ = false;  // drawn
  DecayLines lines_;
  StackPicture picture_;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_WIDGETS_DECAY_PLOT_H_
