// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_WIDGETS_SPECTRUM_DOCK_H_
#define ORVANE_SPECTRA_WIDGETS_SPECTRUM_DOCK_H_

#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <functional>

#include "spectra/widgets/spectrum_plot.h"
#include "spectra/widgets/spectrum_tables.h"

namespace orvane {

/// "Spectrum": the spectrum of the waveform on display, beside it.
class SpectrumDock : public QDockWidget {
  Q_OBJECT

 public:
  /// What is on display; null: no waveform. Asked whenever it is looked at.
  using Waveform = std::function<const WaveformView*()>;
  /// The records that the user leaves out of it; null: none.
  using LeftOut = std::function<const RecordNumbers*()>;

  SpectrumDock(Waveform waveform, LeftOut left_out, QWidget* parent);

  /// The waveform, or what is seen of it, may be another. Does nothing while nobody sees the dock.
  void Follow();
  SpectrumView& View() { return view_; }
  SpectrumPlot* Plot() { return plot_; }
  /// Looks for calibrations there, also after the next start; empty: shows without.
  void SetCalibrations(const QString& folder);

 signals:
  /// For the status bar.
  void told(const QString& text);
  /// The record before or after is wanted.
  void pageWanted(int by);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void MakeContent();
  QLayout* MakeChoices();
  QLayout* MakeProgress();
  QLayout* MakeButtons();
  QPushButton* AddButton(const char* text, const char* name, const char* tip, QLayout* layout);
  void ChoosePart(int index);
  void Cancel();
  void Look();
  void ShowView();
  void ShowReadings();
  void ShowHarmonics();
  void AskForCalibrations();
  void Copy();
  void CopyHarmonics();
  void SavePicture();

  Waveform waveform_;
  LeftOut left_out_;
  SpectrumView view_;
  SpectrumPlot* plot_;
  SpectrumChannels* channels_;
  HarmonicsList* harmonics_;
  QLabel* caption_;
  QLabel* reading_;
  QLabel* no_harmonics_;
  QComboBox* part_;
  QComboBox* quantity_;
  QProgressBar* progress_;
  QPushButton* cancel_;
  QPushButton* uncorrected_ = nullptr;
  QTimer timer_;
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_WIDGETS_SPECTRUM_DOCK_H_
