// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectra/widgets/spectra_dlg.h"

#include <QVBoxLayout>

#include "ui/folder_dialog.h"
#include "ui/window_size.h"

namespace orvane {

CSpectraDlg::CSpectraDlg(SpectraForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("spectra"));
  setWindowTitle(QStringLiteral("Calibrated Spectra"));
  auto* browse = new QPushButton(QStringLiteral("..."), this);
  browse->setObjectName(QStringLiteral("browse"));
  browse->setAccessibleName(QStringLiteral("Browse for the calibration folder"));
  browse->setAutoDefault(false);
  browse->setMaximumWidth(40);
  connect(browse, &QPushButton::clicked, this, &CSpectraDlg::OnBrowse);
  auto* rows = new QGridLayout;
  AddRow(rows, SpectraForm::kFolder, browse);
  AddRow(rows, SpectraForm::kBaseFrequency);
  AddRow(rows, SpectraForm::kHarmonics);
  AddRow(rows, SpectraForm::kReversed);
  rows->setColumnStretch(1, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(rows);
  layout->addStretch();
  layout->addWidget(OkAndCancel());
  ResizeWithinScreen(this, sizeHint().expandedTo(QSize(880, 0)));
}

// Label, field, button, hint; what is wrong below.
void CSpectraDlg::AddRow(QGridLayout* rows, int control, QPushButton* behind) {
  const std::string_view text = SpectraForm::HintOf(control);
  const QString told = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  QWidget* field = Control(control);
  field->setAccessibleDescription(told);
  const int row = rows->rowCount();
  rows->addWidget(LabelOf(control), row, 0);
  rows->addWidget(field, row, 1);
  if (behind != nullptr) {
    rows->addWidget(behind, row, 2);
  }
  rows->addWidget(new QLabel(told, this), row, 3);
  rows->addWidget(CautionOf(control), row + 1, 1, 1, 3);
}

void CSpectraDlg::OnBrowse() {
  const QString chosen =
      CFolderDialog::AskForFolder(this, QStringLiteral("Folder of the calibration files"),
                                  QString::fromStdString(Model().Text(SpectraForm::kFolder)));
  if (!chosen.isEmpty()) {
    Model().SetText(SpectraForm::kFolder, chosen.toStdString());
  }
}

}  // namespace orvane
