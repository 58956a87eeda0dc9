// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_SHAPE_COMMANDS_H_
#define ORVANE_TIMESERIES_WIDGETS_SHAPE_COMMANDS_H_

#include <QAction>
#include <QObject>

#include "timeseries/waveform_view.h"
#include "timeseries/widgets/other_record.h"
#include "ui/display.h"

namespace orvane {

/// The commands of a waveform display that shape its records: folds, filters, another record drawn
/// over the one shown.
class ShapeCommands : public QObject {
  Q_OBJECT

 public:
  /// The view must outlive the display, which gets the commands.
  ShapeCommands(WaveformView* view, CDisplay* display);

  OtherRecord& Other() { return other_; }
  /// Checks and enables the commands by what the view shows; what cannot be folded says why.
  void Follow();

 signals:
  void changed();

 private:
  void ToggleFold(bool halves);
  void ChooseFilters();
  void ShowOther(OtherRecord::Which which);
  void ChooseOther();

  WaveformView* view_;
  CDisplay* display_;
  OtherRecord other_;
  QAction* fold_;
  QAction* fold_halves_;
  QAction* filters_;
  QAction* next_too_;
  QAction* previous_too_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_SHAPE_COMMANDS_H_
