// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_WIDGETS_FIT_REPORT_DLG_H_
#define ORVANE_RESPONSE_WIDGETS_FIT_REPORT_DLG_H_

#include <QDialog>
#include <QTableWidget>

#include "response/cal_file.h"

namespace orvane {

/// How well the model of a box fits its calibration, and the parts of the model: a row for each, a
/// column for each channel. Can be copied as text.
class CFitReportDlg : public QDialog {
  Q_OBJECT

 public:
  /// The calibration must have a model.
  CFitReportDlg(const CalData& cal, QWidget* parent);

 private:
  void Fill(const CalData& cal);
  void Copy();

  QTableWidget* table_;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_WIDGETS_FIT_REPORT_DLG_H_
