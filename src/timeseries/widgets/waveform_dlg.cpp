// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/waveform_dlg.h"

#include <QVBoxLayout>

#include "ui/byte_text.h"

namespace orvane {

CWaveformDlg::CWaveformDlg(WaveformForm* form, WaveformView* view, Prompts* prompts,
                           QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form), view_(view) {
  setObjectName(QStringLiteral("waveform-parameters"));
  setWindowTitle(TextFromBytes(WaveformForm::kTitle));
  auto* scale = Group("Traces", {WaveformForm::kZoom});
  qobject_cast<QFormLayout*>(scale->layout())->addRow(Control(WaveformForm::kAutoScale));
  auto* play = Group("Segments", {WaveformForm::kSegment, WaveformForm::kTimer});
  qobject_cast<QFormLayout*>(play->layout())->addRow(Control(WaveformForm::kAutoPlay));
  AlignLabels({scale, play});
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(scale);
  layout->addWidget(play);
  layout->addWidget(OkAndCancel());
}

}  // namespace orvane
