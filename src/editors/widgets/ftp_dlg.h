// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_FTP_DLG_H_
#define ORVANE_EDITORS_WIDGETS_FTP_DLG_H_

#include "editors/comm_forms.h"
#include "ui/form_dialog.h"

namespace orvane {

/// Dialog 174: the upload of data and calibration files.
class CFtpDlg : public CFormDialog {
  Q_OBJECT

 public:
  CFtpDlg(FtpForm* form, Prompts* prompts, QWidget* parent);

 private:
  void Commit() override { form_->Commit(); }
  QGroupBox* ScheduleGroup();
  QGroupBox* FilesGroup(const char* title, std::initializer_list<int> checks, int folder);

  FtpForm* form_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_FTP_DLG_H_
