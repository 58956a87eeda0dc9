// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_STEPPING_WIDGETS_FREQ_STEPPING_DLG_H_
#define ORVANE_STEPPING_WIDGETS_FREQ_STEPPING_DLG_H_

#include <QLabel>
#include <QPushButton>
#include <map>
#include <string>
#include <tuple>

#include "stepping/stepping_form.h"
#include "stepping/widgets/schedule_plot.h"
#include "ui/form_dialog.h"
#include "ui/grid_ctrl.h"

namespace orvane {

/// "Frequency Stepping Parameters": what a receiver steps through, as numbers, as a schedule and as
/// a picture of it. "Close" writes, Escape does not.
class CFreqSteppingDlg : public CFormDialog {
  Q_OBJECT

 public:
  /// `form` is open already; it reports what changed even after Escape. `folder` is where the
  /// file dialogs begin.
  CFreqSteppingDlg(SteppingForm* form, Prompts* prompts, QString folder, QWidget* parent = nullptr);

  void accept() override;
  void reject() override;
  /// Brings the focus to the cell of a requested frequency. False where the key is of none.
  bool GoTo(ParamKey key);

 private:
  void OnEdited(int control) override;
  void Commit() override { form_->Commit(); }

  QPushButton* NewButton(const char* name, const char* text, void (CFreqSteppingDlg::*handler)());
  QWidget* NewContent();
  QWidget* NewParameterColumn();
  QWidget* NewListBox();
  QWidget* NewScheduleBox();
  QWidget* NewWindowBox();
  QWidget* NewPictureBox();
  QLayout* NewBottomRow();

  // The grids: made here, filled from the form, edits handed to it.
  CGridCtrl* NewGrid(const char* name, const char* label);
  void MakeGrids();
  void ShowFrequencies();
  void ShowSchedule();
  void ShowWindows();
  void OnFrequencyEdited(int row, int column);
  void OnStepEdited(int row, int column);
  void AfterEdit(CGridCtrl* grid, int row, int column, const std::string& reason);
  void ShowRefused();

  /// What the rules say now: all of the grids, buttons and note.
  void ShowAll();
  void ShowState();
  /// Takes over open editors; false where one of them was refused.
  bool CommitGrids();
  /// The step that has the focus, from 0; -1: none.
  int FocusStep() const;

  void OnCalculate();
  void OnOpenFile();
  void OnExportFile() { static_cast<void>(Export()); }
  /// Asks for the file; true once it is written.
  bool Export();
  /// Rows changed by hand are in no table: asks whether a file shall keep them. False where the
  /// dialog is to stay.
  bool MayDropSteps();
  void OnInsertRow();
  void OnDeleteRow();
  void OnDefault();

  SteppingForm* form_;
  Prompts* prompts_;
  QString folder_;
  CGridCtrl* frequencies_ = nullptr;
  CGridCtrl* schedule_ = nullptr;
  CGridCtrl* windows_ = nullptr;
  SchedulePlot* picture_ = nullptr;
  QGroupBox* picture_box_ = nullptr;
  QPushButton* calculate_ = nullptr;
  QPushButton* open_file_ = nullptr;
  QPushButton* default_ = nullptr;
  QLabel* note_ = nullptr;
  std::map<std::tuple<CGridCtrl*, int, int>, QString> refused_;  // cells, and why
  bool is_committing_ = false;                                   // for a button
  bool stops_button_ = false;  // the one whose press made a cell refuse
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_WIDGETS_FREQ_STEPPING_DLG_H_
