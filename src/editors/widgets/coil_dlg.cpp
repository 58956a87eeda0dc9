// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/coil_dlg.h"

#include <QVBoxLayout>

#include "ui/byte_text.h"
#include "ui/content_scroll_area.h"
#include "ui/settings_names.h"
#include "ui/window_size.h"

namespace orvane {

CCoilDlg::CCoilDlg(CoilForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("135"));
  setWindowTitle(TextFromBytes(CoilForm::kTitle));
  auto* types = new QGroupBox(QStringLiteral("Coil type"), this);
  auto* buttons = new QVBoxLayout(types);
  buttons->addWidget(Buttons(CoilForm::kType, 5));
  auto* content = new QWidget(this);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(types);
  auto* calibration =
      Group("Calibration", {CoilForm::kNominalGain, CoilForm::kTestAmplitude, CoilForm::kMinCorner,
                            CoilForm::kMaxCorner, CoilForm::kHighPass, CoilForm::kTime});
  auto* sensors = Group("Sensors", {CoilForm::kHxSerial, CoilForm::kHySerial, CoilForm::kHzSerial});
  AlignLabels({calibration, sensors});
  column->addWidget(calibration);
  column->addWidget(sensors);
  column->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new ContentScrollArea(content, this), 1);
  layout->addWidget(OkAndCancel());
  ResizeWithinScreen(this, sizeHint().expandedTo(QSize(560, 0)));
}

CoilForm::Names CoilModels() {
  CoilForm::Names names = {"AMT coil", "MT coil", "Coil model 3", "Coil model 4"};
  ReadNames("Coil Models", names);
  return names;
}

}  // namespace orvane
