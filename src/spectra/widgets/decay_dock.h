// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_WIDGETS_DECAY_DOCK_H_
#define ORVANE_SPECTRA_WIDGETS_DECAY_DOCK_H_

#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "spectra/widgets/decay_plot.h"

namespace orvane {

/// "Decay": the decays of the recording on display, or its amplitudes and phases, beside it.
class DecayDock : public QDockWidget {
  Q_OBJECT

 public:
  /// What is on display, without the records that are left out; no waveform: null.
  struct Shown {
    const WaveformView* waveform = nullptr;
    const RecordNumbers* left_out = nullptr;
  };
  /// Asked whenever it is looked at.
  using Ask = std::function<Shown()>;

  DecayDock(Ask shown, QWidget* parent);

  /// The waveform, or what is left out, may be another. Does nothing while nobody sees the dock.
  void Follow();
  DecayView& View() { return view_; }
  DecayPlot* Plot() { return plot_; }

 signals:
  /// For the status bar.
  void told(const QString& text);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  QLayout* MakeChoices();
  QLayout* MakeButtons();
  void Look();
  void TakeChannels();
  void TakeWindows();
  void ShowView();
  StackPicture Picture() const;
  std::size_t Channel() const;
  void Copy();
  void SavePicture();

  Ask shown_;
  DecayView view_;
  DecayPlot* plot_;
  QLabel* caption_;
  QComboBox* channel_;
  QComboBox* quantity_;
  QComboBox* reference_;
  QLineEdit* windows_;
  QCheckBox* log_x_;
  QCheckBox* log_y_;
  QProgressBar* progress_;
  QPushButton* copy_ = nullptr;
  QPushButton* save_ = nullptr;
  QString fault_;  // of the windows that were typed last
  QTimer timer_;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_WIDGETS_DECAY_DOCK_H_
