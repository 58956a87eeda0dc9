// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/widgets/spectra_dlg.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/folder_dialog.h"
#include "ui/window_size.h"

namespace orvane {

CSpectraDlg::CSpectraDlg(SpectraForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent) {
  setObjectName(QStringLiteral("spectra"));
  setWindowTitle(QStringLiteral("Calibrated Spectra"));
  auto* browse = new QPushButton(QStringLiteral("..."), this);
  browse->setObjectName(QStringLiteral("browse"));
  browse->setAccessibleName(QStringLiteral("Browse for the calibration folder"));
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, &CSpectraDlg::OnBrowse);
  auto* folder = new QHBoxLayout;
  folder->addWidget(Control(SpectraForm::kFolder), 1);
  folder->addWidget(browse);
  Control(SpectraForm::kFolder)
      ->setToolTip(QStringLiteral("Empty: the folder of each recording"));
  Control(SpectraForm::kBaseFrequency)
      ->setToolTip(QStringLiteral("For records that name none; 0: \"FREQ\" of their table"));
  auto* rows = new QFormLayout;
  rows->addRow(LabelOf(SpectraForm::kFolder), folder);
  AddRow(rows, SpectraForm::kBaseFrequency);
  AddRow(rows, SpectraForm::kHarmonics);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(rows);
  layout->addStretch();
  layout->addWidget(OkAndCancel());
  ResizeWithinScreen(this, sizeHint().expandedTo(QSize(560, 0)));
}

void CSpectraDlg::OnBrowse() {
  const QString chosen = CFolderDialog::AskForFolder(
      this, QStringLiteral("Folder of the calibration files"),
      QString::fromStdString(Model().Text(SpectraForm::kFolder)));
  if (!chosen.isEmpty()) {
    Model().SetText(SpectraForm::kFolder, chosen.toStdString());
  }
}

}  // namespace orvane
