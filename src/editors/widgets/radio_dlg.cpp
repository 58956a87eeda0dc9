// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/radio_dlg.h"

#include <QHBoxLayout>

#include "editors/widgets/scrolled_groups.h"
#include "ui/byte_text.h"

namespace orvane {

CRadioDlg::CRadioDlg(RadioForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("131"));
  setWindowTitle(TextFromBytes(RadioForm::kTitle));
  Buttons(RadioForm::kType, 2);
  Buttons(RadioForm::kFrequency, 2);
  auto* modem = Group("Radio", {RadioForm::kType, RadioForm::kFrequency, RadioForm::kPower});
  auto* hardware = new QLabel(this);
  hardware->setObjectName(QStringLiteral("hardware"));
  hardware->setTextFormat(Qt::PlainText);
  hardware->setWordWrap(true);
  hardware->setText(TextFromBytes(form->HardwareText()));
  qobject_cast<QFormLayout*>(modem->layout())->addRow(QString(), hardware);
  auto* network = Group("Network", {RadioForm::kNetworkAddress, RadioForm::kEncryptionKey});
  AlignLabels({modem, network});
  auto* serials =
      Group("Boxes", {RadioForm::kLocalSerial, RadioForm::kRefSerial, RadioForm::kAux1Serial,
                      RadioForm::kAux2Serial, RadioForm::kAux3Serial, RadioForm::kAux4Serial,
                      RadioForm::kAux5Serial, RadioForm::kTxSerial});
  serials->setToolTip(QStringLiteral("0: no such box"));
  auto* content = new QWidget(this);
  auto* columns = new QHBoxLayout(content);
  columns->setContentsMargins(0, 0, 0, 0);
  columns->addWidget(Column({modem, network}));
  columns->addWidget(Column({serials}));
  LayOutScrolled(this, content, OkAndCancel(), 0);
}

}  // namespace orvane
