// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/about_dlg.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>

namespace orvane {

CAboutDlg::CAboutDlg(QWidget* parent) : QDialog(parent) {
  setWindowTitle(QStringLiteral("About Orvane"));

  auto* icon = new QLabel(this);
  icon->setPixmap(QApplication::windowIcon().pixmap(QSize(64, 64), devicePixelRatioF()));
  icon->setAccessibleName(QStringLiteral("Orvane's emblem"));
  auto* name = new QLabel(QStringLiteral("Orvane Version " ORVANE_VERSION), this);
  QFont font = name->font();
  font.setPointSizeF(font.pointSizeF() * 1.4);
  font.setBold(true);
  name->setFont(font);
  auto* what =
      new QLabel(QStringLiteral("Parameter tables and field files of geophysical receivers.\n\n"
                                "Free software under the GNU General Public License,\n"
                                "version 3 or any later version."),
                 this);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

  auto* layout = new QGridLayout(this);
  layout->setHorizontalSpacing(20);
  layout->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);
  layout->addWidget(name, 0, 1);
  layout->addWidget(what, 1, 1);
  layout->addWidget(buttons, 2, 0, 1, 2);
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

}  // namespace orvane
