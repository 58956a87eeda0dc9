// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_STEPPING_WIDGETS_STEPPING_CYCLE_DLG_H_
#define ORVANE_STEPPING_WIDGETS_STEPPING_CYCLE_DLG_H_

#include "stepping/cycle_form.h"
#include "ui/form_dialog.h"

namespace orvane {

/// "Select Default Stepping Cycle ": one of four cycles and the limits of the transmitter.
class CSteppingCycleDlg : public CFormDialog {
  Q_OBJECT

 public:
  /// `form` is open already.
  CSteppingCycleDlg(CycleForm* form, Prompts* prompts, QWidget* parent = nullptr);

 private:
  void Commit() override { form_->Commit(); }

  CycleForm* form_;
};

}  // namespace orvane

#endif  // ORVANE_STEPPING_WIDGETS_STEPPING_CYCLE_DLG_H_
