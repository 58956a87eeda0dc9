// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_ABOUT_DLG_H_
#define ORVANE_APP_ABOUT_DLG_H_

#include <QDialog>

namespace orvane {

class CAboutDlg : public QDialog {
  Q_OBJECT

 public:
  explicit CAboutDlg(QWidget* parent);
};

}  // namespace orvane

#endif  // ORVANE_APP_ABOUT_DLG_H_
