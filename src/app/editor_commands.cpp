// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/editor_commands.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "app/field_folders.h"
#include "app/notice_texts.h"
#include "editors/acq_form.h"
#include "editors/site_forms.h"
#include "editors/startup_run.h"
#include "editors/widgets/acq_param_dlg.h"
#include "editors/widgets/box_serial_dlg.h"
#include "editors/widgets/box_status_dlg.h"
#include "editors/widgets/coil_dlg.h"
#include "editors/widgets/current_sensor_dlg.h"
#include "editors/widgets/ftp_dlg.h"
#include "editors/widgets/gsm_dlg.h"
#include "editors/widgets/param_table_dlg.h"
#include "editors/widgets/radio_dlg.h"
#include "editors/widgets/site_dlg.h"
#include "editors/widgets/startup_dlg.h"
#include "editors/widgets/startup_result_dlg.h"
#include "files/path_text.h"
#include "forms/early_writes.h"
#include "meaning/meanings.h"
#include "stepping/widgets/fdem_schedule_dlg.h"
#include "stepping/widgets/freq_stepping_dlg.h"
#include "table/box_keys.h"
#include "table/param_access.h"
#include "table/param_text.h"
#include "table/tech.h"
#include "ui/qt_path.h"

namespace orvane {

namespace {

// Where a document without a file of its own has its files.
QString UsersFolder() {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

}  // namespace

void EditorCommands::TellEarlyChanges(const std::vector<std::string>& keys) {
  if (const std::string text = EarlyChangesText(keys); !text.empty()) {
    early_line_ = text;
    notices_->ShowNotice(text);
  }
}

void EditorCommands::EndEarlyLine() {
  if (!early_line_.empty()) {
    notices_->EndNotice(early_line_);
    early_line_.clear();
  }
}

void EditorCommands::TellRefusedPastes(const QDialog& dialog) {
  for (const CGridCtrl* grid : dialog.findChildren<CGridCtrl*>()) {
    QObject::connect(grid, &CGridCtrl::pasted, doc_, [this](int set, int refused) {
      if (const std::string text = RefusedCellsText(set, refused); !text.empty()) {
        notices_->ShowNotice(text);
      }
    });
  }
}

void EditorCommands::EditRaw() {
  const Meanings meanings(TransmitterModels());
  CParamTableDlg dialog(&doc_->Table(), parent_, doc_->NotInFile(),
                        [&meanings](const ParamEntry& entry) { return meanings.Line(entry); });
  TellRefusedPastes(dialog);
  QObject::connect(&dialog, &CParamTableDlg::edited, doc_, &COrvaneDoc::UpdateAllViews);
  dialog.exec();
  doc_->NoteChanges();
}

bool EditorCommands::AskForSerials(QWidget* parent, std::vector<std::string>* early) {
  EarlyWrites writes(&doc_->Table());
  writes.Remember("SNTX");
  writes.Remember("SNUM");
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    writes.Remember(keys.serial);
  }
  BoxSerialForm form(&doc_->Table());
  form.Open();
  CBoxSerialDlg dialog(&form, prompts_, parent);
  if (dialog.exec() != QDialog::Accepted) {
    return false;
  }
  for (std::string& key : writes.Changes()) {
    early->push_back(std::move(key));
  }
  doc_->NoteChanges();
  return true;
}

bool EditorCommands::SetUpSite(Tech tech, QWidget* parent, std::vector<std::string>* early) {
  if (tech != kMtAmt && !AskForSerials(parent, early)) {
    return false;
  }
  ParamTable& table = doc_->Table();
  SiteForm form(&table, tech, TransmitterModels());
  for (std::string& key : form.Open()) {
    early->push_back(std::move(key));
  }
  CSiteDlg dialog(&form, &table, prompts_, parent);
  QObject::connect(&dialog, &CSiteDlg::told, doc_,
                   [this](const QString& text) { notices_->ShowNotice(text.toStdString()); });
  TellRefusedPastes(dialog);
  if (dialog.exec() != QDialog::Accepted) {
    return false;
  }
  doc_->NoteChanges();
  EndEarlyLine();
  return true;
}

void EditorCommands::EditAcquisition() {
  ParamTable& table = doc_->Table();
  const UtcClock now;
  AcqForm form(&table, &now);
  form.Open();
  CAcqParamDlg dialog(&form, prompts_, parent_);
  std::vector<std::string> early;
  dialog.SetSiteSetup([&] {
    const Tech tech = form.BeginSiteSetup();
    // The coils of an MT/AMT site are those of the acquisition: its own OK writes the same.
    if (tech != kNoTech && SetUpSite(tech, &dialog, &early) && tech == kMtAmt) {
      const auto text = [&table](ParamKey key) { return ParamAsText(table, key); };
      form.SetCoilSerials(text("HXSN"), text("HYSN"), text("HZSN"));
    }
    doc_->UpdateAllViews();
  });
  if (!Run(&dialog)) {
    for (std::string& key : form.EarlyChanges()) {
      early.push_back(std::move(key));
    }
    TellEarlyChanges(early);
  }
}

QString EditorCommands::ScheduleFolder(Tech method) const {
  const QString folder = FieldFolders(doc_).Data(method);
  return folder.isEmpty() ? QDir::homePath() : folder;
}

void EditorCommands::EditStepping() {
  SteppingForm form(&doc_->Table(), prompts_, notices_);
  form.Open();
  const QString folder = ScheduleFolder(TechOf(doc_->Table()));
  CFreqSteppingDlg dialog(&form, prompts_, folder, parent_);
  TellRefusedPastes(dialog);
  if (!Run(&dialog)) {
    TellEarlyChanges(form.EarlyChanges());
  }
}

void EditorCommands::CreateFdemSchedule() {
  const QString folder = FieldFolders(doc_).Document();
  FdemForm form(prompts_, PathFromText(folder.isEmpty() ? UsersFolder() : folder));
  form.Open();
  CFdemScheduleDlg dialog(&form, prompts_, ScheduleFolder(kFdem), parent_);
  if (dialog.exec() == QDialog::Accepted) {
    notices_->ShowNotice(form.Note());
  }
}

bool EditorCommands::Run(QDialog* dialog) {
  const bool is_accepted = dialog->exec() == QDialog::Accepted;
  doc_->NoteChanges();  // Cancel does not undo everything
  if (is_accepted) {
    EndEarlyLine();
  }
  return is_accepted;
}

void EditorCommands::EditRadio() {
  RadioForm form(&doc_->Table());
  form.Open();
  CRadioDlg dialog(&form, prompts_, parent_);
  if (!Run(&dialog)) {
    TellEarlyChanges(form.EarlyChanges());
  }
}

void EditorCommands::EditGsm() {
  PlainForm form(&doc_->Table(), GsmFields());
  form.Open();
  CGsmDlg dialog(&form, prompts_, parent_);
  Run(&dialog);
}

void EditorCommands::EditFtp() {
  FtpForm form(&doc_->Table());
  form.Open();
  CFtpDlg dialog(&form, prompts_, parent_);
  Run(&dialog);
}

void EditorCommands::EditCurrentSensor() {
  CurrentSensorForm form(&doc_->Table());
  form.Open();
  CCurrentSensorDlg dialog(&form, prompts_, parent_);
  Run(&dialog);
}

void EditorCommands::EditCoil() {
  CoilForm form(&doc_->Table(), CoilModels());
  form.Open();
  CCoilDlg dialog(&form, prompts_, parent_);
  Run(&dialog);
}

void EditorCommands::ViewBoxStatus() {
  BoxStatusForm form(&doc_->Table());
  form.Open();
  CBoxStatusDlg(&form, prompts_, parent_).exec();
}

void EditorCommands::SaveAllBoxes() {
  ParamTable& table = doc_->Table();
  StartupRun run(&table, PathFromText(doc_->Path()), prompts_, PathFromText(UsersFolder()));
  run.SetMayReplaceDocument([this] { return doc_->MayReplaceFile(); });
  run.ForEachBox([this, &run](StartupForm* form) {
    CStartupDlg dialog(form, &run, prompts_, parent_);
    TellRefusedPastes(dialog);
    return dialog.exec() != CStartupDlg::kStop;  // Cancel skips this box only
  });
  if (run.Document() == StartupRun::OwnFile::kWritten) {
    doc_->OnOwnFileWritten(run.DocumentMemory());
  } else if (run.Document() == StartupRun::OwnFile::kTouched) {
    doc_->OnOwnFileTouched(run.DocumentMemory());
  } else {
    doc_->NoteChanges();
  }
  if (const std::string text = run.StatusText(); !text.empty()) {
    notices_->ShowNotice(text);
    CStartupResultDlg(run, parent_).exec();
  } else {
    TellEarlyChanges(run.EarlyChanges());
  }
}

}  // namespace orvane
