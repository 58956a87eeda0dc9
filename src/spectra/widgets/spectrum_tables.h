// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_WIDGETS_SPECTRUM_TABLES_H_
#define ORVANE_SPECTRA_WIDGETS_SPECTRUM_TABLES_H_

#include <QTableWidget>

#include "spectra/spectrum_view.h"

namespace orvane {

/// The channels of a spectrum: a tick draws one, and what the cursor reads of it stands beside it.
class SpectrumChannels : public QTableWidget {
  Q_OBJECT

 public:
  /// The view must outlive the table.
  SpectrumChannels(SpectrumView* view, QWidget* parent);

  void ShowView();
  /// The row in which the user is, from 0.
  std::size_t Current() const;

 signals:
  /// Another channel is drawn, or one no longer.
  void ticked();
  /// The user went to another channel.
  void moved();

 private:
  void Tick(const QTableWidgetItem* item);

  SpectrumView* view_;
};

/// The odd harmonics of a channel: amplitude, noise floor, signal to noise.
class HarmonicsList : public QTableWidget {
  Q_OBJECT

 public:
  explicit HarmonicsList(QWidget* parent);

  void ShowChannel(const SpectrumView& view, std::size_t channel);
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_WIDGETS_SPECTRUM_TABLES_H_
