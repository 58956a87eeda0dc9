// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHANGES_WIDGETS_CHANGES_DOCK_H_
#define ORVANE_CHANGES_WIDGETS_CHANGES_DOCK_H_

#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QPushButton>
#include <utility>
#include <vector>

#include "changes/comparison.h"
#include "changes/widgets/changes_model.h"
#include "ui/list_view.h"

namespace orvane {

/// "Changes": the table beside another, a row for each key that differs. Values there can be taken
/// over; the window does what is asked for.
class ChangesDock : public QDockWidget {
  Q_OBJECT

 public:
  using Values = std::vector<std::pair<ParamKey, ParamValue>>;

  /// As for `Comparison`.
  ChangesDock(const ParamTable* table, const ParamTable* start, MeaningsSource meanings,
              QWidget* parent);

  /// Shows what differs from the file, the second table and so on, and takes the focus.
  void ShowAgainst(Against against);
  /// The second table, in place of asking for it.
  void SetSecond(const QString& path);
  /// The file of the table; empty where it has none.
  void SetFile(const QString& path);
  /// The table or a file has changed. Does nothing while nobody sees the dock.
  void Follow();

  const std::vector<ChangeRow>& Rows() const { return model_->Rows(); }

 signals:
  /// Values are to be taken over, as one step of this name.
  void takeWanted(const QString& step, const orvane::ChangesDock::Values& values);
  /// A row was double-clicked, or Return pressed.
  void editWanted(orvane::ParamKey key);
  /// For the status bar.
  void told(const QString& text);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* MakeContent();
  QLayout* MakeTop();
  void MakeList();
  QAction* NewAction(const char* text, const QKeySequence& key, void (ChangesDock::*handler)());

  void OnAgainst();
  void Choose();
  void Take(const std::vector<int>& rows);
  void TakeChosen();
  void TakeAll();
  void Copy();
  void Edit();
  /// Ticked rows, else those selected.
  std::vector<int> Chosen() const;
  void EnableButtons();
  void KeepRow(ParamKey key);

  Comparison comparison_;
  ChangesModel* model_;
  QComboBox* against_ = nullptr;
  QLabel* second_ = nullptr;
  QPushButton* choose_ = nullptr;
  QPushButton* take_ = nullptr;
  QPushButton* take_all_ = nullptr;
  QPushButton* copy_ = nullptr;
  CListView* list_ = nullptr;
  QLabel* summary_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_CHANGES_WIDGETS_CHANGES_DOCK_H_
