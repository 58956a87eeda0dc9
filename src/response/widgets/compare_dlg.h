// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_WIDGETS_COMPARE_DLG_H_
#define ORVANE_RESPONSE_WIDGETS_COMPARE_DLG_H_

#include <QDialog>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QTableWidget>

#include "response/cal_compare.h"

namespace orvane {

/// The tolerance that the user chose last.
CalTolerance KeptTolerance();

/// By how much a calibration differs from its reference: the worst of each channel and setting,
/// measured and of the models, and whether it is within what the user allows.
class CCompareDlg : public QDialog {
  Q_OBJECT

 public:
  CCompareDlg(CalComparison comparison, QWidget* parent);

 signals:
  void toleranceChanged();

 private:
  QDoubleSpinBox* AddSpin(const char* label, const char* name, const char* unit, double value,
                          QLayout* layout);
  void Fill();
  void Judge();
  void Copy();

  CalComparison comparison_;
  QDoubleSpinBox* amplitude_ = nullptr;
  QDoubleSpinBox* phase_ = nullptr;
  QLabel* verdict_ = nullptr;
  QTableWidget* table_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_RESPONSE_WIDGETS_COMPARE_DLG_H_
