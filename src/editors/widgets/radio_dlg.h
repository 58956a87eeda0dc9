// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_RADIO_DLG_H_
#define ORVANE_EDITORS_WIDGETS_RADIO_DLG_H_

#include "editors/comm_forms.h"
#include "ui/form_dialog.h"

namespace orvane {

/// Dialog 131: the radio network of the boxes.
class CRadioDlg : public CFormDialog {
  Q_OBJECT

 public:
  CRadioDlg(RadioForm* form, Prompts* prompts, QWidget* parent);

 private:
  void Commit() override { form_->Commit(); }

  RadioForm* form_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_RADIO_DLG_H_
