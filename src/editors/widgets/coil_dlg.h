// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_COIL_DLG_H_
#define ORVANE_EDITORS_WIDGETS_COIL_DLG_H_

#include "editors/sensor_forms.h"
#include "ui/form_dialog.h"

namespace orvane {

/// Dialog 135: the coils.
class CCoilDlg : public CFormDialog {
  Q_OBJECT

 public:
  CCoilDlg(CoilForm* form, Prompts* prompts, QWidget* parent);

 private:
  void OnEdited(int control) override { form_->OnEdited(control); }
  void Commit() override { form_->Commit(); }

  CoilForm* form_;
};

/// The names of the coil models, from the user's settings.
CoilForm::Names CoilModels();

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_COIL_DLG_H_
