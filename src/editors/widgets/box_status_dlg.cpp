// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/box_status_dlg.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/byte_text.h"
#include "ui/content_scroll_area.h"
#include "ui/window_size.h"

namespace orvane {

CBoxStatusDlg::CBoxStatusDlg(BoxStatusForm* form, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QStringLiteral("173"));
  setWindowTitle(TextFromBytes(BoxStatusForm::kTitle));
  auto* content = new QWidget(this);
  auto* columns = new QHBoxLayout(content);
  columns->setContentsMargins(0, 0, 0, 0);
  auto* clock = Group("Position and clock",
                      {BoxStatusForm::kLatitude, BoxStatusForm::kLongitude,
                       BoxStatusForm::kElevation, BoxStatusForm::kSatellites, BoxStatusForm::kClock,
                       BoxStatusForm::kTimeError, BoxStatusForm::kLastFix});
  auto* radio = Group("Radio", {BoxStatusForm::kMasterLatitude, BoxStatusForm::kMasterLongitude,
                                BoxStatusForm::kMasterDistance, BoxStatusForm::kMasterBearing});
  auto* records = Group("Records", {BoxStatusForm::kRecords, BoxStatusForm::kSaturated,
                                    BoxStatusForm::kBad, BoxStatusForm::kBadStacks,
                                    BoxStatusForm::kFirstRecord, BoxStatusForm::kLastRecord});
  auto* power = Group("Power and disk",
                      {BoxStatusForm::kBattery, BoxStatusForm::kTemperature, BoxStatusForm::kDisk,
                       BoxStatusForm::kFrontEnd, BoxStatusForm::kGps, BoxStatusForm::kLoader});
  AlignLabels({clock, radio});
  AlignLabels({records, power});
  auto* left = new QVBoxLayout;
  left->addWidget(clock);
  left->addWidget(radio);
  left->addStretch();
  auto* right = new QVBoxLayout;
  right->addWidget(records);
  right->addWidget(power);
  right->addStretch();
  columns->addLayout(left, 1);
  columns->addLayout(right, 1);
  auto* close = new QPushButton(QStringLiteral("CLOSE"), this);
  close->setObjectName(QStringLiteral("1"));
  close->setDefault(true);
  connect(close, &QPushButton::clicked, this, &QDialog::accept);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(Control(BoxStatusForm::kLocalTime));
  bottom->addStretch();
  bottom->addWidget(close);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new ContentScrollArea(content, this), 1);
  layout->addLayout(bottom);
  // Values look like text, not like fields to fill in; they can be selected and copied.
  for (QLineEdit* line : findChildren<QLineEdit*>()) {
    line->setFrame(false);
    QPalette palette = line->palette();
    palette.setColor(QPalette::Base, Qt::transparent);
    line->setPalette(palette);
  }
  close->setFocus();
  ResizeWithinScreen(this, sizeHint().expandedTo(QSize(760, 0)));
}

}  // namespace orvane
