// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SPECTRA_WIDGETS_SPECTRUM_PLOT_H_
#define ORVANE_SPECTRA_WIDGETS_SPECTRUM_PLOT_H_

#include <QWidget>
#include <vector>

#include "base/result.h"
#include "spectra/spectrum_view.h"

class QCPAxisRect;
class QCPGraph;
class QCPItemStraightLine;
class QCPLayer;
class QCPTextElement;
class QCustomPlot;

namespace orvane {

/// Draws what a `SpectrumView` shows, on logarithmic axes, with marks and the cursor. Keys: Left
/// and Right move the cursor by a bin, with Ctrl to the next odd harmonic, Delete removes it. A
/// click sets it.
class SpectrumPlot : public QWidget {
  Q_OBJECT

 public:
  /// The view must outlive the plot.
  SpectrumPlot(SpectrumView* view, QWidget* parent);

  /// Draws the view again, whatever of it has changed.
  void ShowView();
  /// Only the cursor has moved.
  void ShowCursor();
  QCustomPlot* Plot() { return plot_; }
  /// Saves what the view shows, drawn again for a size. As `SavePlot()`.
  Result<> Save(const QString& path, const QSize& size) const;

 signals:
  /// The user moved the cursor.
  void cursorMoved();
  /// PgUp or PgDn: the record before or after is wanted.
  void pageWanted(int by);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void MakeAxes();
  void ShowCurves();
  void ShowMarks();
  void MoveCursorLine();
  void FollowTheme();
  void ColorMarks();

  SpectrumView* view_;
  QCustomPlot* plot_;
  QCPTextElement* caption_ = nullptr;
  QCPAxisRect* axes_ = nullptr;
  QCPLayer* cursors_ = nullptr;  // a picture of its own over that of the curves
  std::vector<QCPGraph*> graphs_;
  std::vector<QCPItemStraightLine*> marks_;
  QCPItemStraightLine* cursor_ = nullptr;
  bool is_drawn_ = false;
  bool is_picture_ = false;  // to be saved
};

}  // namespace orvane

#endif  // ORVANE_SPECTRA_WIDGETS_SPECTRUM_PLOT_H_
