// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_RECORD_DOCK_H_
#define ORVANE_TIMESERIES_WIDGETS_RECORD_DOCK_H_

#include <QAction>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include "timeseries/widgets/record_table_model.h"
#include "timeseries/widgets/waveform_display.h"
#include "ui/list_view.h"

namespace orvane {

/// The records of the waveform on display as a list: a row is gone to, and ticked where results are
/// to do without it.
class RecordDock : public QDockWidget {
  Q_OBJECT

 public:
  explicit RecordDock(QWidget* parent);

  /// Lists the records of a display; null: of none. The display may go at any time.
  void Follow(CWaveformDisplay* display);
  CListView* List() { return list_; }

 private:
  void MakeList();
  QLayout* MakeTop();
  void AddAction(const char* text, const QKeySequence& key, void (RecordDock::*handler)());
  void GoTo(int row);
  void ShowCurrent();
  void Toggle();
  void SortByColumn();
  void LeaveOutBad();
  void Keep();
  void TakeAll();
  void ShowState();

  RecordTableModel* model_;
  QPointer<CWaveformDisplay> display_;
  CListView* list_ = nullptr;
  QLineEdit* filter_ = nullptr;
  QLabel* summary_;
  QPushButton* bad_ = nullptr;
  QPushButton* keep_ = nullptr;
  QPushButton* all_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_RECORD_DOCK_H_
