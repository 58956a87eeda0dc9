// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/widgets/stepping_cycle_dlg.h"

#include <QGroupBox>
#include <QVBoxLayout>

#include "ui/byte_text.h"

namespace orvane {

CSteppingCycleDlg::CSteppingCycleDlg(CycleForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("stepping-cycle"));
  setWindowTitle(TextFromBytes(form->Title()));
  auto* cycles = new QGroupBox(QStringLiteral("Stepping cycle"), this);
  auto* cycle_layout = new QVBoxLayout(cycles);
  cycle_layout->addWidget(Buttons(CycleForm::kCycle, 2));
  auto* limits = new QGroupBox(QStringLiteral("Transmitter"), this);
  auto* rows = new QFormLayout;
  limits->setLayout(rows);
  for (const int control :
       {CycleForm::kVoltage, CycleForm::kResistance, CycleForm::kWireLength, CycleForm::kCurrent}) {
    AddRow(rows, control);
  }
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(cycles);
  layout->addWidget(limits);
  layout->addStretch();
  layout->addWidget(OkAndCancel());
  const int title = fontMetrics().horizontalAdvance(windowTitle());
  constexpr int kTitleButtons = 120;
  resize(sizeHint().expandedTo(QSize(title + kTitleButtons, 0)));
}

}  // namespace orvane
