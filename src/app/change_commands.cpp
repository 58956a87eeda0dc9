// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/change_commands.h"

#include "base/number_text.h"
#include "changes/widgets/apply_values_dlg.h"
#include "changes/widgets/save_values_dlg.h"
#include "editors/widgets/site_dlg.h"
#include "table/table_diff.h"
#include "table/value_lines.h"
#include "table/values_text.h"

namespace orvane {

ChangeCommands::ChangeCommands(COrvaneDoc* doc, Notices* notices, QMainWindow* window)
    : QObject(window),
      doc_(doc),
      notices_(notices),
      window_(window),
      dock_(new ChangesDock(
          &doc->Table(), &doc->Baseline(), [this]() -> const Meanings& { return UsersMeanings(); },
          window)),
      counter_(new QToolButton(window)) {
  window->addDockWidget(Qt::BottomDockWidgetArea, dock_);
  dock_->hide();
  counter_->setObjectName(QStringLiteral("change-count"));
  counter_->setAutoRaise(true);
  counter_->setFocusPolicy(Qt::NoFocus);  // by keyboard there is F8
  counter_->setToolTip(
      QStringLiteral("Values that differ from when the table was opened or saved; "
                     "shows which (F8)"));
  counter_->setAccessibleDescription(counter_->toolTip());
  connect(counter_, &QToolButton::clicked, dock_->toggleViewAction(), &QAction::trigger);
  connect(doc_, &COrvaneDoc::changed, this, &ChangeCommands::Follow);
  connect(dock_, &ChangesDock::takeWanted, this, &ChangeCommands::Take);
  connect(dock_, &ChangesDock::told, this,
          [this](const QString& text) { notices_->ShowNotice(text.toStdString()); });
  Follow();
}

const Meanings& ChangeCommands::UsersMeanings() {
  if (!meanings_) {
    meanings_.emplace(TransmitterModels());
  }
  return *meanings_;
}

void ChangeCommands::Follow() {
  const std::size_t count = DifferingKeys(doc_->Table(), doc_->Baseline()).size();
  counter_->setText(QString::fromStdString(ChangeCount(count)));
  dock_->SetFile(doc_->Path());
  dock_->Follow();
}

void ChangeCommands::Take(const QString& step, const ChangesDock::Values& values) {
  for (const auto& [key, value] : values) {
    static_cast<void>(doc_->Table().SetStoredValue(key, value));  // the keys are the table's own
  }
  doc_->NoteStep(step);
}

void ChangeCommands::SaveValues() {
  const ParamTable& table = doc_->Table();
  std::vector<ParamKey> listed;
  for (const ChangeRow& row : dock_->isVisible() ? dock_->Rows() : std::vector<ChangeRow>()) {
    if (row.has_both) {
      listed.push_back(row.key);
    }
  }
  SaveValuesDlg dialog(&table, &UsersMeanings(),
                       {{QStringLiteral("&Changed since it was opened or saved"),
                         DifferingKeys(table, doc_->Baseline())},
                        {QStringLiteral("&Different in the window Changes"), std::move(listed)},
                        {QStringLiteral("&Not the built-in values"), KeysNotDefault(table)},
                        {QStringLiteral("&All"), AllKeys(table)}},
                       window_);
  if (dialog.exec() == QDialog::Accepted) {
    notices_->ShowNotice(dialog.Told().toStdString());
  }
}

void ChangeCommands::ApplyValues() {
  ApplyValuesDlg dialog(&doc_->Table(), &UsersMeanings(), window_);
  if (dialog.exec() != QDialog::Accepted) {
    return;
  }
  const std::size_t changed = ApplyValueLines(dialog.Lines(), &doc_->Table());
  doc_->NoteStep(QStringLiteral("Apply Values"));
  notices_->ShowNotice("Values applied: " + FormatInt(changed));
}

}  // namespace orvane
