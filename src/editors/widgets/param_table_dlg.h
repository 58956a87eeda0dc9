// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_PARAM_TABLE_DLG_H_
#define ORVANE_EDITORS_WIDGETS_PARAM_TABLE_DLG_H_

#include <QAction>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <string>
#include <vector>

#include "editors/raw_table.h"
#include "editors/widgets/raw_switches.h"
#include "ui/grid_ctrl.h"

namespace orvane {

/// "Parameter Table": every entry of a table in one grid. Edits go straight into the table, so
/// closing undoes nothing.
class CParamTableDlg : public QDialog {
  Q_OBJECT

 public:
  enum Control : int { kGrid = 1079, kLookup = 1083, kLookupButton = 1084, kSortByCode = 1085 };

  /// `not_in_file`, `explain` and `file`: as for `RawTable`; with meanings there is a column for
  /// them, with a star for each row.
  explicit CParamTableDlg(ParamTable* table, QWidget* parent = nullptr,
                          std::vector<ParamKey> not_in_file = {}, Explain explain = {},
                          const ParamTable* file = nullptr);

  /// Whether a value was edited.
  bool IsModified() const { return rows_.IsModified(); }

  /// Shows what others have changed in the table.
  void Refresh();
  /// Whether there is an edit to undo and one to make again.
  void ShowSteps(bool can_undo, bool can_redo);
  /// Brings the focus to the row of a key.
  void GoTo(ParamKey key);

  void done(int result) override;

 signals:
  /// A value of the table changed.
  void edited();
  /// An edit made here is to be undone, or made again: there is one.
  void undoWanted();
  void redoWanted();

 private:
  void CreateControls();
  void CreateGrid();
  void FillGrid();
  /// What a row's cells have beside their texts.
  void DressRows();
  void SetWidths();
  void LayOut();
  int OrdinalAt(int row) const;
  void ShowMeaning(int row);
  /// Value, meaning and mark of these rows.
  void ShowAgain(const std::vector<int>& ordinals);
  void Mark(int row);
  void FocusRow(int row);
  void ShowAllRows();
  void ToggleFavourite();

  void OnEndEdit(int row);
  void OnStarToggled(int row, int column);
  void OnLookup();
  void OnSortByCode(bool by_code);
  void OnFilter();
  void OnFocusMoved(int row);
  void ShowDetail(int row);
  std::string CautionLine(int ordinal) const;
  void ShowLine(const QString& text, bool is_warning);
  void Announce();
  QPushButton* NewStepButton(const char* text, const char* name, const char* keys,
                             void (CParamTableDlg::*wanted)());
  void Step(const QPushButton* button, void (CParamTableDlg::*wanted)());

  RawTable rows_;
  QLineEdit* lookup_ = nullptr;
  QPushButton* lookup_button_ = nullptr;
  QCheckBox* sort_ = nullptr;
  QLineEdit* filter_ = nullptr;
  RawSwitches* switches_ = nullptr;
  CGridCtrl* grid_ = nullptr;
  QLabel* caution_ = nullptr;
  QLabel* detail_ = nullptr;
  QPushButton* undo_ = nullptr;
  QPushButton* redo_ = nullptr;
  QPushButton* close_ = nullptr;
  int edited_ = 0;      // the ordinal whose caution stays to be read; 0: none
  int moves_left_ = 0;  // of the focus until it goes: Return that ends an edit moves it, too
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_PARAM_TABLE_DLG_H_
