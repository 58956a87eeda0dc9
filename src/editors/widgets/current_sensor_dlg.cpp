// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/current_sensor_dlg.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "ui/byte_text.h"
#include "ui/content_scroll_area.h"
#include "ui/window_size.h"

namespace orvane {

CCurrentSensorDlg::CCurrentSensorDlg(CurrentSensorForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form), missing_(new QLabel(this)) {
  setObjectName(QStringLiteral("132"));
  setWindowTitle(TextFromBytes(CurrentSensorForm::kTitle));
  missing_->setObjectName(QStringLiteral("missing"));
  auto* choices = new QHBoxLayout;
  for (const auto& [control, title] : {std::pair(CurrentSensorForm::kType, "Sensor Type"),
                                       std::pair(CurrentSensorForm::kGain, "Gain")}) {
    auto* box = new QGroupBox(QString::fromLatin1(title), this);
    auto* column = new QVBoxLayout(box);
    column->addWidget(Buttons(control, 1));
    column->addStretch();
    choices->addWidget(box, 1);
  }
  auto* content = new QWidget(this);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(choices);
  column->addWidget(Group("Sensor", {CurrentSensorForm::kSerial, CurrentSensorForm::kNominalGain,
                                     CurrentSensorForm::kTestAmplitude, CurrentSensorForm::kTime}));
  column->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new ContentScrollArea(content, this), 1);
  layout->addWidget(missing_);
  layout->addWidget(OkAndCancel());
  ShowMissing();
  ResizeWithinScreen(this, sizeHint().expandedTo(QSize(480, 0)));
}

void CCurrentSensorDlg::ShowMissing() { missing_->setText(TextFromBytes(form_->Missing())); }

void CCurrentSensorDlg::OnEdited(int control) {
  form_->OnEdited(control);
  ShowMissing();
}

void CCurrentSensorDlg::accept() {
  if (form_->Missing().empty()) {
    CFormDialog::accept();
  }
}

}  // namespace orvane
