// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_WIDGETS_CALIBRATION_DLG_H_
#define ORVANE_RESPONSE_WIDGETS_CALIBRATION_DLG_H_

#include "response/display_form.h"
#include "ui/form_dialog.h"

namespace orvane {

/// The ranges of the calibration plot.
class CCalibrationDlg : public CFormDialog {
  Q_OBJECT

 public:
  /// All must outlive the dialog; with OK `display` gets what is entered.
  CCalibrationDlg(CalDisplayForm* form, CalDisplay* display, Prompts* prompts, QWidget* parent);

 private:
  void Commit() override { *display_ = form_->Display(); }

  CalDisplayForm* form_;
  CalDisplay* display_;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_WIDGETS_CALIBRATION_DLG_H_
