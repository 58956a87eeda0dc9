// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_WIDGETS_CALIBRATION_DISPLAY_H_
#define ORVANE_RESPONSE_WIDGETS_CALIBRATION_DISPLAY_H_

#include <QLabel>
#include <QListWidget>
#include <QSplitter>

#include "forms/prompts.h"
#include "response/cal_view.h"
#include "response/widgets/calibration_plot.h"
#include "ui/display.h"

namespace orvane {

/// A calibration file on display: a list of its channels, of which those selected are drawn, a tool
/// bar, a table of what the cursor reads, and keys for everything. Warns where the box's model does
/// not describe it well.
class CCalibrationDisplay : public CDisplay {
  Q_OBJECT

 public:
  /// Both must outlive the display. `ranges` is what it shows of the curves and may change.
  CCalibrationDisplay(CalDisplay* ranges, Prompts* prompts, QWidget* parent = nullptr);

  /// Opens a file. False where that fails; the message is shown.
  bool Open(const QString& path);
  /// Compares with another file.
  bool OpenReference(const QString& path);
  CalView& View() { return view_; }

  QString Title() const override { return QString::fromStdString(view_.Title()); }
  void ScrollBack() override { Step(-1); }
  void ScrollForward() override { Step(1); }
  void Reload() override;
  /// Draws the view again and shows its place in the status bar.
  void ShowView();

  /// For the file dialogs.
  static constexpr std::string_view kFilters =
      "Calibration Files (*.cl?)|*.cl?|All Files (*.*)|*.*||";

 signals:
  /// The user wants to change the ranges.
  void rangesRequested();

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void AddChannels();
  void AddReference();
  void AddModel();
  void AddOthers();
  void ShowFile();
  void FillList();
  void ColorChannels();
  void SelectShown();
  void OnSelected();
  void Step(int by);
  void AskForReference();
  void ShowFitReport();
  void Compare();
  void MoveCursor(int by);
  void ShowReadings();
  void FillReadings(const std::vector<CalReading>& readings);
  bool GrowColumns();
  void DivideWidth();
  void Save();

  Prompts* prompts_;
  CalView view_;
  QLabel* warning_;
  QListWidget* list_;
  CalibrationPlot* plot_;
  QTableWidget* readings_;
  QSplitter* parts_;
  QAction* ratio_ = nullptr;
  QAction* compare_ = nullptr;
  QAction* no_reference_ = nullptr;
  QAction* model_ = nullptr;
  QAction* fit_report_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_WIDGETS_CALIBRATION_DISPLAY_H_
