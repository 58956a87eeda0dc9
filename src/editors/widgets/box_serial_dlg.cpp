// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/box_serial_dlg.h"

#include <QVBoxLayout>

#include "ui/byte_text.h"

namespace orvane {

CBoxSerialDlg::CBoxSerialDlg(BoxSerialForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("169"));
  setWindowTitle(TextFromBytes(BoxSerialForm::kTitle));
  auto* rows = new QFormLayout;
  for (const int control :
       {BoxSerialForm::kMain, BoxSerialForm::kTransmitter, BoxSerialForm::kAux1,
        BoxSerialForm::kAux2, BoxSerialForm::kAux3, BoxSerialForm::kAux4, BoxSerialForm::kAux5}) {
    AddRow(rows, control);
  }
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(rows);
  layout->addWidget(OkAndCancel());
}

}  // namespace orvane
