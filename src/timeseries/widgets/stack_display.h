// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_STACK_DISPLAY_H_
#define ORVANE_TIMESERIES_WIDGETS_STACK_DISPLAY_H_

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QSplitter>
#include <functional>
#include <vector>

#include "timeseries/widgets/stack_plot.h"
#include "ui/display.h"

namespace orvane {

/// A stack result file on display: a list of its labels, of which those selected are drawn, a tool
/// bar, and a table of the current label's items with medians and spreads.
class CStackDisplay : public CDisplay {
  Q_OBJECT

 public:
  explicit CStackDisplay(QWidget* parent = nullptr);

  /// Fails, with a reason that does not name the file, where it cannot be read or has no record.
  Result<> Open(const QString& path);
  StackView& View() { return view_; }
  /// The centres of windows, in ms, that the rule gives for the file's table; empty: none.
  void OfferWindows(std::vector<double> centres);

  QString Title() const override;
  void ScrollBack() override { Step(-1); }
  void ScrollForward() override { Step(1); }
  void Reload() override;
  /// Draws the view again and shows its place in the status bar.
  void ShowView();

 private:
  void AddViewing();
  void AddChoices();
  void AddSaving();
  QAction* AddSwitch(const char* text, const char* name, const char* tip, const QKeySequence& key,
                     bool* value);
  void FillList();
  void Step(int by);
  void FollowDomain();
  void ShowItems();
  void ShowNote();
  void ChooseItem(std::size_t item);
  const StackView::Group* Current() const;
  void Copy();
  void Save();

  QString path_;
  StackView view_;
  StackPicture picture_;
  std::vector<double> centres_;
  bool has_windows_ = false;
  QLabel* note_;
  QListWidget* list_;
  StackPlot* plot_;
  QTableWidget* items_;
  QComboBox* domain_;
  QComboBox* against_;
  QAction* second_ = nullptr;
  QAction* windows_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_STACK_DISPLAY_H_
