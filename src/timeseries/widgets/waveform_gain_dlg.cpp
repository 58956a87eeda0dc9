// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_gain_dlg.h"

#include <QLabel>
#include <QVBoxLayout>

#include "ui/byte_text.h"

namespace orvane {

CWaveformGainDlg::CWaveformGainDlg(WaveformGainForm* form, WaveformView* view, Prompts* prompts,
                                   QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form), view_(view) {
  setObjectName(QStringLiteral("waveform-gains"));
  setWindowTitle(TextFromBytes(form->Title()));
  auto* gains = Group("Gain", {WaveformGainForm::kElectric, WaveformGainForm::kOther});
  auto* hint = new QLabel(TextFromBytes(form->Hint()), this);
  hint->setTextFormat(Qt::PlainText);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(gains);
  layout->addWidget(hint);
  layout->addWidget(Control(WaveformGainForm::kForAll));
  layout->addWidget(OkAndCancel());
}

}  // namespace orvane
