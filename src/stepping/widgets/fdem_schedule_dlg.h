// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_STEPPING_WIDGETS_FDEM_SCHEDULE_DLG_H_
#define ORVANE_STEPPING_WIDGETS_FDEM_SCHEDULE_DLG_H_

#include <QString>

#include "stepping/fdem_form.h"
#include "ui/form_dialog.h"

namespace orvane {

/// "Creat TFS File for Dr. Halvo FDEM": a schedule file of a fixed set of frequencies.
class CFdemScheduleDlg : public CFormDialog {
  Q_OBJECT

 public:
  /// `form` is open already. `folder` is where the file dialog begins.
  CFdemScheduleDlg(FdemForm* form, Prompts* prompts, QString folder, QWidget* parent = nullptr);

  void accept() override;

 private:
  void Commit() override {}  // the file is written before the dialog closes
  void OnEdited(int control) override;
  void OnBrowse();
  void ShowPath();

  FdemForm* form_;
  QString folder_;
  QLabel* path_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_WIDGETS_FDEM_SCHEDULE_DLG_H_
