// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/editor_commands.h"

#include <QFile>

#include "core/param_text.h"
#include "editors/acq_form.h"
#include "editors/site_forms.h"
#include "editors/startup_run.h"
#include "editors/widgets/acq_param_dlg.h"
#include "editors/widgets/param_table_dlg.h"
#include "editors/widgets/site_dlg.h"
#include "editors/widgets/startup_dlg.h"

namespace orvane {

void EditorCommands::MarkModified() { doc_->SetModified(true); }

void EditorCommands::TellEarlyChanges(const std::vector<std::string>& keys) {
  if (keys.empty()) {
    return;
  }
  std::string line = "Cancelled; these were changed before and stay:";
  for (const std::string& key : keys) {
    line += ' ';
    line += key;
  }
  notices_->ShowNotice(line);
}

void EditorCommands::EditRaw() {
  CParamTableDlg dialog(&doc_->Table(), parent_);
  QObject::connect(&dialog, &CParamTableDlg::Edited, doc_, &COrvaneDoc::UpdateAllViews);
  dialog.exec();
  if (dialog.IsModified()) {
    MarkModified();
  }
}

bool EditorCommands::AskForSerials(QWidget* parent) {
  BoxSerialForm form(&doc_->Table());
  form.Open();
  CBoxSerialDlg dialog(&form, prompts_, parent);
  if (dialog.exec() != QDialog::Accepted) {
    return false;
  }
  MarkModified();
  return true;
}

bool EditorCommands::SetUpSite(int tech, QWidget* parent) {
  ParamTable& table = doc_->Table();
  std::vector<std::string> early;
  std::int32_t before = 0;
  const std::int32_t chosen = tech;
  const bool has_method = table.GetParam("TECH", IntPT, &before) == kOk;
  if (has_method && before != chosen && table.SetParam("TECH", IntPT, &chosen) == kOk) {
    early.emplace_back("TECH");
  }
  if (tech != kMtAmt && !AskForSerials(parent)) {
    TellEarlyChanges(early);
    doc_->UpdateAllViews();
    return false;
  }
  SiteForm form(&table, tech, TransmitterModels());
  for (std::string& key : form.Open()) {
    early.push_back(std::move(key));
  }
  CSiteDlg dialog(&form, &table, prompts_, parent);
  const bool is_accepted = dialog.exec() == QDialog::Accepted;
  if (is_accepted) {
    MarkModified();
  } else {
    TellEarlyChanges(early);
  }
  doc_->UpdateAllViews();
  return is_accepted;
}

void EditorCommands::SaveAllBoxes() {
  ParamTable& table = doc_->Table();
  StartupRun run(&table, QFile::encodeName(doc_->Path()).toStdString(), prompts_);
  for (const StartupBox& box : run.Boxes()) {
    StartupForm form(&table, box, run.Choices());
    CStartupDlg dialog(&form, &run, prompts_, parent_);
    dialog.exec();  // Cancel skips this box only
  }
  doc_->SetModified(run.IsModifiedAfter(doc_->IsModified()));
  if (const std::string line = run.StatusLine(); !line.empty()) {
    notices_->ShowNotice(line);
  }
}

}  // namespace orvane
