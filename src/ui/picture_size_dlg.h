// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_PICTURE_SIZE_DLG_H_
#define ORVANE_UI_PICTURE_SIZE_DLG_H_

#include <QDialog>
#include <QSize>
#include <QSpinBox>

namespace orvane {

/// Asks how large a picture shall be that is going to be saved.
class CPictureSizeDlg : public QDialog {
  Q_OBJECT

 public:
  CPictureSizeDlg(const QSize& shown, QWidget* parent);
  QSize Chosen() const { return {width_->value(), height_->value()}; }

 private:
  QSpinBox* MakeSide(const char* name, int shown);

  QSpinBox* width_;
  QSpinBox* height_;
};

}  // namespace orvane

#endif  // ORVANE_UI_PICTURE_SIZE_DLG_H_
