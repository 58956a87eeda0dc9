// SPDX-License-Identifier: GPL-3.0-or-later
#include "changes/widgets/save_values_dlg.h"

#include <QApplication>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <algorithm>

#include "files/file_io.h"
#include "ui/file_dialogs.h"
#include "ui/qt_path.h"

namespace orvane {

SaveValuesDlg::SaveValuesDlg(const ParamTable* table, const Meanings* meanings,
                             std::vector<Choice> choices, QWidget* parent)
    : QDialog(parent),
      table_(table),
      meanings_(meanings),
      choices_(std::move(choices)),
      chosen_(new QButtonGroup(this)) {
  setObjectName(QStringLiteral("save-values"));
  setWindowTitle(QStringLiteral("Save Changes As Text"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(MakeChoices());
  with_secrets_ =
      new QCheckBox(QStringLiteral("With &passwords, keys, user names and phone numbers"), this);
  with_meanings_ = new QCheckBox(QStringLiteral("With &meanings as comments"), this);
  note_ = new QLabel(this);
  with_secrets_->setObjectName(QStringLiteral("with-secrets"));
  with_meanings_->setObjectName(QStringLiteral("with-meanings"));
  with_meanings_->setChecked(true);
  note_->setObjectName(QStringLiteral("note"));
  note_->setTextFormat(Qt::PlainText);
  note_->setWordWrap(true);
  layout->addWidget(with_secrets_);
  layout->addWidget(with_meanings_);
  layout->addWidget(note_);
  layout->addStretch(1);
  layout->addWidget(MakeButtons());
  connect(with_secrets_, &QCheckBox::toggled, this, &SaveValuesDlg::ShowLeftOut);
  connect(chosen_, &QButtonGroup::idToggled, this, &SaveValuesDlg::ShowLeftOut);
  ShowLeftOut();
}

QWidget* SaveValuesDlg::MakeChoices() {
  auto* box = new QGroupBox(QStringLiteral("Values"), this);
  auto* layout = new QVBoxLayout(box);
  for (std::size_t i = 0; i < choices_.size(); ++i) {
    const Choice& choice = choices_[i];
    auto* button =
        new QRadioButton(QStringLiteral("%1 (%2)").arg(choice.text).arg(choice.keys.size()), box);
    button->setObjectName(QStringLiteral("choice-%1").arg(i));
    button->setEnabled(!choice.keys.empty());
    chosen_->addButton(button, static_cast<int>(i));
    layout->addWidget(button);
    if (button->isEnabled() && chosen_->checkedButton() == nullptr) {
      button->setChecked(true);
    }
  }
  return box;
}

QWidget* SaveValuesDlg::MakeButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  auto* save = buttons->addButton(QStringLiteral("&Save..."), QDialogButtonBox::ActionRole);
  auto* copy = buttons->addButton(QStringLiteral("Cop&y"), QDialogButtonBox::ActionRole);
  save->setObjectName(QStringLiteral("save"));
  save->setDefault(true);
  copy->setObjectName(QStringLiteral("copy"));
  copy->setToolTip(QStringLiteral("Copy the lines to the clipboard"));
  for (QPushButton* button : {save, copy}) {
    button->setEnabled(chosen_->checkedId() >= 0);
  }
  connect(save, &QPushButton::clicked, this, &SaveValuesDlg::Save);
  connect(copy, &QPushButton::clicked, this, &SaveValuesDlg::Copy);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  return buttons;
}

ValuesText SaveValuesDlg::Write() const {
  if (chosen_->checkedId() < 0) {
    return {};
  }
  ValuesOptions options{with_secrets_->isChecked(), {}};
  if (with_meanings_->isChecked()) {
    options.meaning = [this](const ParamEntry& entry) { return meanings_->Line(entry); };
  }
  return WriteValues(*table_, choices_[static_cast<std::size_t>(chosen_->checkedId())].keys,
                     options);
}

void SaveValuesDlg::ShowLeftOut() {
  QStringList keys;
  for (const ParamKey key : Write().left_out) {
    keys << QString::fromStdString(key.Text());
  }
  note_->setText(keys.isEmpty() ? QString()
                                : QStringLiteral("Left out: ") + keys.join(QStringLiteral(", ")));
}

void SaveValuesDlg::Done(const ValuesText& written, const QString& where) {
  const std::vector<ParamKey>& keys = choices_[static_cast<std::size_t>(chosen_->checkedId())].keys;
  const auto unwritten = std::count_if(keys.begin(), keys.end(), IsReadOnlyKey);
  const std::size_t count =
      keys.size() - written.left_out.size() - static_cast<std::size_t>(unwritten);
  told_ = QStringLiteral("%1 %2 %3")
              .arg(count)
              .arg(count == 1 ? QStringLiteral("value") : QStringLiteral("values"), where);
  if (!written.left_out.empty()) {
    told_ += QStringLiteral("; left out, because they are secret: %1").arg(written.left_out.size());
  }
  accept();
}

bool SaveValuesDlg::SaveTo(const QString& path) {
  if (QFileInfo(path).suffix().compare(QLatin1String("tbl"), Qt::CaseInsensitive) == 0) {
    QMessageBox::warning(this, QStringLiteral("Orvane"),
                         QStringLiteral("%1 is the name of a parameter table, which lines of text "
                                        "would replace. Choose another name.")
                             .arg(QDir::toNativeSeparators(path)));
    return false;
  }
  const ValuesText written = Write();
  const Result<> saved = WriteFile(PathFromText(path), std::as_bytes(std::span(written.text)));
  if (!saved) {
    QMessageBox::warning(this, QStringLiteral("Orvane"),
                         QDir::toNativeSeparators(path) + QStringLiteral(": ") +
                             QString::fromStdString(saved.Message()));
    return false;
  }
  Done(written, QStringLiteral("saved to ") + QFileInfo(path).fileName());
  return true;
}

void SaveValuesDlg::Save() {
  CFileDialog dialog(windowTitle(), "Values (*.txt)|*.txt|All Files (*.*)|*.*||", QString(), this);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QStringLiteral("txt"));
  if (dialog.ExecRemembering(QStringLiteral("Folders/Values")) && !dialog.Chosen().isEmpty()) {
    SaveTo(dialog.Chosen());
  }
}

void SaveValuesDlg::Copy() {
  const ValuesText written = Write();
  QApplication::clipboard()->setText(QString::fromStdString(written.text));
  Done(written, QStringLiteral("copied"));
}

}  // namespace orvane
