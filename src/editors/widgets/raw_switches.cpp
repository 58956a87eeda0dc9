// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/raw_switches.h"

#include "ui/flow_layout.h"

namespace orvane {

RawSwitches::RawSwitches(bool has_file, bool has_meanings, QWidget* parent) : QWidget(parent) {
  const auto add = [this](RawSwitch what, const char* text, const char* tip, bool is_enabled) {
    Add(what, QString::fromLatin1(text), QString::fromLatin1(tip))->setEnabled(is_enabled);
  };
  add(kChangedSinceFile, "&Changed since the file", "Differs from the file as last read or saved",
      has_file);
  add(kNotDefault, "Not de&fault", "Differs from the built-in value", true);
  add(kOwnChanges, "&This dialog's changes", "Changed since this dialog was opened", true);
  add(kInNoDialog, "In n&o dialog", "Can only be changed here", has_meanings);
  add(kFavourites, "Fa&vourites", "Ctrl+D in the grid, or a click on the star", has_meanings);
  count_ = new QLabel(this);
  count_->setObjectName(QStringLiteral("rowCount"));
  LayOut();
}

void RawSwitches::LayOut() {
  auto* layout = new FlowLayout(this);
  layout->addWidget(new QLabel(QStringLiteral("Show only:"), this));
  for (const auto& [what, box] : boxes_) {
    layout->addWidget(box);
  }
  count_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  count_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  layout->addWidget(count_);
}

QCheckBox* RawSwitches::Add(RawSwitch what, const QString& text, const QString& tip) {
  auto* box = new QCheckBox(text, this);
  box->setObjectName(QStringLiteral("switch%1").arg(what));
  QString name = text;
  box->setAccessibleName(QStringLiteral("Show only: ") + name.remove(QLatin1Char('&')));
  box->setToolTip(tip);
  connect(box, &QCheckBox::toggled, this, &RawSwitches::changed);
  boxes_[what] = box;
  return box;
}

unsigned RawSwitches::On() const {
  unsigned on = 0;
  for (const auto& [what, box] : boxes_) {
    on |= box->isChecked() ? static_cast<unsigned>(what) : 0U;
  }
  return on;
}

void RawSwitches::SwitchAllOff() {
  for (const auto& [what, box] : boxes_) {
    box->setChecked(false);
  }
}

void RawSwitches::ShowCount(int shown, int all) {
  count_->setText(QStringLiteral("%1 of %2").arg(shown).arg(all));
  count_->setAccessibleName(QStringLiteral("Parameters shown: ") + count_->text());
}

}  // namespace orvane
