// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_STARTUP_DLG_H_
#define ORVANE_EDITORS_WIDGETS_STARTUP_DLG_H_

#include "editors/startup_run.h"
#include "ui/form_dialog.h"
#include "ui/grid_ctrl.h"

namespace orvane {

/// Dialogs 167 and 168: the start-up file of one box.
class CStartupDlg : public CFormDialog {
  Q_OBJECT

 public:
  enum : int { kChannelGrid = 1220, kBrowse = 1230 };

  /// All must outlive the dialog.
  CStartupDlg(StartupForm* form, StartupRun* run, Prompts* prompts, QWidget* parent);

  /// What exec() answers where the whole run is to end.
  static constexpr int kStop = 2;

  /// What speaks against the run as a whole, in lines: boxes without a file, faults of the table.
  void TellDoubts(const std::string& lines);

  void accept() override;

 private:
  void OnEdited(int control) override;
  void Commit() override { run_->Accept(*form_); }
  QWidget* HeadingLabel();
  QWidget* WarningLabel();
  QWidget* DoubtsLabel();
  QWidget* ButtonRow();
  QWidget* SettingsGroup();
  QWidget* FileGroup();
  QWidget* ChannelGroup();
  void OnBrowse();
  void OnGainEdited(int row, int column);
  void UpdateWarning();

  StartupForm* form_;
  StartupRun* run_;
  Prompts* prompts_;
  CGridCtrl* channels_ = nullptr;  // receivers only
  bool is_refused_ = false;        // a gain factor
  QLabel* heading_ = nullptr;
  QLabel* path_ = nullptr;
  QLabel* warning_ = nullptr;
  QLabel* doubts_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_STARTUP_DLG_H_
