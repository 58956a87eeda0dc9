// SPDX-License-Identifier: GPL-3.0-or-later
#include "response/widgets/calibration_dlg.h"

#include <QVBoxLayout>

#include "ui/byte_text.h"

namespace orvane {

CCalibrationDlg::CCalibrationDlg(CalDisplayForm* form, CalDisplay* display, Prompts* prompts,
                                 QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form), display_(display) {
  using Form = CalDisplayForm;
  setObjectName(QStringLiteral("calibration-parameters"));
  setWindowTitle(TextFromBytes(Form::kTitle));
  auto* frequency = Group("Frequency", {Form::kMaxFrequency, Form::kMinFrequency});
  auto* amplitude = Group("Amplitude", {Form::kMaxAmplitude, Form::kMinAmplitude});
  auto* phase = Group("Phase", {Form::kMaxPhase, Form::kMinPhase, Form::kPhaseGridLines});
  AlignLabels({frequency, amplitude, phase});
  auto* layout = new QVBoxLayout(this);
  for (QWidget* group : {frequency, amplitude, phase}) {
    layout->addWidget(group);
  }
  layout->addWidget(OkAndCancel());
}

}  // namespace orvane
