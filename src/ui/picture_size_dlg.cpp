// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/picture_size_dlg.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLocale>
#include <QVBoxLayout>

namespace orvane {

QSpinBox* CPictureSizeDlg::MakeSide(const char* name, int shown) {
  constexpr int kLeast = 200;
  constexpr int kMost = 10000;
  auto* side = new QSpinBox(this);
  side->setObjectName(QString::fromLatin1(name));
  side->setLocale(QLocale::c());
  side->setRange(kLeast, kMost);
  side->setValue(shown);
  return side;
}

CPictureSizeDlg::CPictureSizeDlg(const QSize& shown, QWidget* parent)
    : QDialog(parent),
      width_(MakeSide("width", shown.width())),
      height_(MakeSide("height", shown.height())) {
  setObjectName(QStringLiteral("picture-size"));
  setWindowTitle(QStringLiteral("Picture Size"));
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("&Width (pixels)"), width_);
  form->addRow(QStringLiteral("&Height (pixels)"), height_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(buttons);
}

}  // namespace orvane
