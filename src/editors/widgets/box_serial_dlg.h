// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_BOX_SERIAL_DLG_H_
#define ORVANE_EDITORS_WIDGETS_BOX_SERIAL_DLG_H_

#include "editors/site_forms.h"
#include "ui/form_dialog.h"

namespace orvane {

/// Dialog 169: the serial numbers of the boxes.
class CBoxSerialDlg : public CFormDialog {
  Q_OBJECT

 public:
  CBoxSerialDlg(BoxSerialForm* form, Prompts* prompts, QWidget* parent);

 private:
  void Commit() override { form_->Commit(); }

  BoxSerialForm* form_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_BOX_SERIAL_DLG_H_
