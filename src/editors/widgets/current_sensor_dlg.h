// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_CURRENT_SENSOR_DLG_H_
#define ORVANE_EDITORS_WIDGETS_CURRENT_SENSOR_DLG_H_

#include "editors/sensor_forms.h"
#include "ui/form_dialog.h"

namespace orvane {

/// Dialog 132: the sensor of the transmitted current.
class CCurrentSensorDlg : public CFormDialog {
  Q_OBJECT

 public:
  CCurrentSensorDlg(CurrentSensorForm* form, Prompts* prompts, QWidget* parent);

  /// Without a type or a serial number it does nothing; a line of the dialog says what is missing.
  void accept() override;

 private:
  void OnEdited(int control) override;
  void Commit() override { form_->Commit(); }
  void ShowMissing();

  CurrentSensorForm* form_;
  QLabel* missing_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_CURRENT_SENSOR_DLG_H_
