// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_BOX_STATUS_DLG_H_
#define ORVANE_EDITORS_WIDGETS_BOX_STATUS_DLG_H_

#include "editors/box_status.h"
#include "ui/form_dialog.h"

namespace orvane {

/// Dialog 173: the state that a box left in its table, to read at a glance.
class CBoxStatusDlg : public CFormDialog {
  Q_OBJECT

 public:
  CBoxStatusDlg(BoxStatusForm* form, Prompts* prompts, QWidget* parent);

 private:
  void OnEdited(int control) override { form_->OnEdited(control); }
  void Commit() override {}

  BoxStatusForm* form_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_BOX_STATUS_DLG_H_
