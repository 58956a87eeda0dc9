// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_GSM_DLG_H_
#define ORVANE_EDITORS_WIDGETS_GSM_DLG_H_

#include "editors/comm_forms.h"
#include "ui/form_dialog.h"

namespace orvane {

/// Dialog 171: the dial-up data connection.
class CGsmDlg : public CFormDialog {
  Q_OBJECT

 public:
  CGsmDlg(PlainForm* form, Prompts* prompts, QWidget* parent);

 private:
  void Commit() override { form_->Commit(); }

  PlainForm* form_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_GSM_DLG_H_
