// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/editor_commands.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <utility>

#include "app/field_folders.h"
#include "app/key_labels.h"
#include "app/notice_texts.h"
#include "base/number_text.h"
#include "check/check.h"
#include "check/map_marks.h"
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
#include "meaning/explain.h"
#include "meaning/meanings.h"
#include "stepping/widgets/fdem_schedule_dlg.h"
#include "stepping/widgets/freq_stepping_dlg.h"
#include "table/box_keys.h"
#include "table/param_access.h"
#include "table/param_text.h"
#include "table/stored_values.h"
#include "table/tech.h"
#include "ui/byte_text.h"
#include "ui/qt_path.h"

namespace orvane {

namespace {

// Where a document without a file of its own has its files.
QString UsersFolder() {
  const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

const QString kSiteStep = QStringLiteral("Site Setup");

// What a dialog wrote before it was cancelled is a step too.
QString StepOf(const QDialog& dialog, bool is_accepted) {
  const QString title = dialog.windowTitle();
  return is_accepted ? title : title + QStringLiteral(", cancelled");
}

// Of a group the chosen button, else the first that can be chosen.
QWidget* ButtonOf(const QButtonGroup& group) {
  const auto buttons = group.buttons();
  const auto first =
      std::find_if(buttons.begin(), buttons.end(),
                   [](const QAbstractButton* button) { return button->isEnabled(); });
  return group.checkedButton() != nullptr ? group.checkedButton()
         : first == buttons.end()         ? nullptr
                                          : *first;
}

// The controls of a dialog are named by their numbers, a group by its first button's.
void FocusControl(const QDialog& dialog, int control) {
  auto* widget = control == 0 ? nullptr : dialog.findChild<QWidget*>(QString::number(control));
  const auto* button = qobject_cast<QAbstractButton*>(widget);
  if (button != nullptr && button->group() != nullptr) {
    widget = ButtonOf(*button->group());
  }
  if (widget != nullptr) {
    widget->setFocus();
  }
}

// Of a group where one of its buttons is: the group is named by its first, which may not be.
bool CanBeUsed(const FormModel& model, int control) {
  const Field& field = model.FieldOf(control);
  const auto is_enabled = [&model](const Choice& choice) {
    return model.IsEnabled(choice.control);
  };
  return field.widget == Widget::kRadios
             ? std::any_of(field.choices.begin(), field.choices.end(), is_enabled)
             : model.IsEnabled(control);
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

void EditorCommands::EditRaw(ParamKey key) {
  const Meanings meanings(TransmitterModels());
  CParamTableDlg dialog(
      &doc_->Table(), parent_, doc_->NotInFile(),
      [&meanings](const ParamEntry& entry) { return RawMeaningOf(meanings, entry); },
      doc_->FileTable());
  TellRefusedPastes(dialog);
  const QString title = QStringLiteral("Raw Parameters");
  int undoable = 0;  // the steps of before are not this window's to undo
  int redoable = 0;
  const auto show = [&] { dialog.ShowSteps(undoable > 0, redoable > 0); };
  QObject::connect(&dialog, &CParamTableDlg::edited, doc_, [&, title] {
    if (doc_->NoteStep(title)) {
      ++undoable;
      redoable = 0;
    }
    EndEarlyLine();
    show();
  });
  QObject::connect(&dialog, &CParamTableDlg::undoWanted, doc_, [&] {
    doc_->Undo();
    --undoable;
    ++redoable;
    show();
  });
  QObject::connect(&dialog, &CParamTableDlg::redoWanted, doc_, [&] {
    doc_->Redo();
    ++undoable;
    --redoable;
    show();
  });
  QObject::connect(doc_, &COrvaneDoc::changed, &dialog, &CParamTableDlg::Refresh);
  if (!key.IsEmpty()) {
    dialog.GoTo(key);
  }
  dialog.exec();
  doc_->NoteStep(title);
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
  if (!Show(&dialog)) {
    return false;
  }
  for (std::string& key : writes.Changes()) {
    early->push_back(std::move(key));
  }
  doc_->UpdateAllViews();
  return true;
}

bool EditorCommands::SetUpSite(Tech tech, QWidget* parent, std::vector<std::string>* early) {
  return (tech == kMtAmt || AskForSerials(parent, early)) && RunSite(tech, parent, early);
}

bool EditorCommands::RunSite(Tech tech, QWidget* parent, std::vector<std::string>* early) {
  ParamTable& table = doc_->Table();
  SiteForm form(&table, tech, TransmitterModels());
  for (std::string& key : form.Open()) {
    early->push_back(std::move(key));
  }
  if (!HasWanted(form.Model())) {
    return false;
  }
  CSiteDlg dialog(&form, &table, prompts_, parent);
  dialog.SetMarker([](const ParamTable& edited, const Spread& spread) {
    return MarksOf(CheckTable(edited, UtcClock().Now()), spread);
  });
  QObject::connect(&dialog, &CSiteDlg::told, doc_,
                   [this](const QString& text) { notices_->ShowNotice(text.toStdString()); });
  TellRefusedPastes(dialog);
  if (!GoToWantedCell(&dialog) || !Show(&dialog)) {
    return false;
  }
  doc_->UpdateAllViews();
  EndEarlyLine();
  return true;
}

void EditorCommands::EditSite() {
  std::vector<std::string> early;
  const bool is_accepted = RunSite(TechOf(doc_->Table()), parent_, &early);
  if (is_shown_) {
    doc_->NoteStep(kSiteStep);
    if (!is_accepted) {
      TellEarlyChanges(early);
    }
  }
}

void EditorCommands::EditSerials() {
  std::vector<std::string> early;
  AskForSerials(parent_, &early);
  doc_->NoteStep(TextFromBytes(BoxSerialForm::kTitle));
}

void EditorCommands::EditAcquisition() {
  ParamTable& table = doc_->Table();
  const UtcClock now;
  AcqForm form(&table, &now);
  form.Open();
  if (!HasWanted(form.Model())) {
    return;
  }
  CAcqParamDlg dialog(&form, prompts_, parent_);
  if (const int number = ScheduleFileNumber(table); number != 0 && !doc_->Path().isEmpty()) {
    dialog.SetSchedule(FindScheduleFile(PathFromText(doc_->Path()), number));
  }
  std::vector<std::string> early;
  bool has_site = false;
  dialog.SetSiteSetup([&] {
    const Tech tech = form.BeginSiteSetup();
    if (tech != kNoTech && SetUpSite(tech, &dialog, &early)) {
      has_site = true;
      // The coils of an MT/AMT site are those of the acquisition: its own OK writes the same.
      if (tech == kMtAmt) {
        const auto text = [&table](ParamKey key) { return ParamAsText(table, key); };
        form.SetCoilSerials(text("HXSN"), text("HYSN"), text("HZSN"));
      }
    }
    doc_->UpdateAllViews();
  });
  const bool is_accepted = Show(&dialog);
  doc_->NoteStep(!is_accepted && has_site ? kSiteStep : StepOf(dialog, is_accepted));
  if (is_accepted) {
    EndEarlyLine();
    return;
  }
  for (std::string& key : form.EarlyChanges()) {
    early.push_back(std::move(key));
  }
  TellEarlyChanges(early);
}

QString EditorCommands::ScheduleFolder(Tech method) const {
  const QString folder = FieldFolders(doc_).Data(method);
  return folder.isEmpty() ? QDir::homePath() : folder;
}

void EditorCommands::EditStepping() {
  SteppingForm form(&doc_->Table(), prompts_, notices_);
  form.Open();
  if (!HasWanted(form.Model())) {
    return;
  }
  const QString folder = ScheduleFolder(TechOf(doc_->Table()));
  CFreqSteppingDlg dialog(&form, prompts_, folder, parent_);
  TellRefusedPastes(dialog);
  if (GoToWantedCell(&dialog)) {
    Run(&dialog, [&form] { return form.EarlyChanges(); });
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

bool EditorCommands::Show(QDialog* dialog) {
  is_shown_ = true;
  FocusControl(*dialog, std::exchange(wanted_, 0));
  return dialog->exec() == QDialog::Accepted;
}

bool EditorCommands::Run(QDialog* dialog, const std::function<std::vector<std::string>()>& early) {
  const bool is_accepted = Show(dialog);
  doc_->NoteStep(StepOf(*dialog, is_accepted));  // Cancel does not take back everything
  if (is_accepted) {
    EndEarlyLine();
  } else {
    TellEarlyChanges(early());
  }
  return is_accepted;
}

bool EditorCommands::Run(QDialog* dialog) {
  return Run(dialog, [] { return std::vector<std::string>(); });
}

void EditorCommands::EditRadio() {
  RadioForm form(&doc_->Table());
  form.Open();
  if (HasWanted(form.Model())) {
    CRadioDlg dialog(&form, prompts_, parent_);
    Run(&dialog, [&form] { return form.EarlyChanges(); });
  }
}

void EditorCommands::EditGsm() {
  PlainForm form(&doc_->Table(), GsmFields());
  form.Open();
  if (HasWanted(form.Model())) {
    CGsmDlg dialog(&form, prompts_, parent_);
    Run(&dialog);
  }
}

void EditorCommands::EditFtp() {
  FtpForm form(&doc_->Table());
  form.Open();
  if (HasWanted(form.Model())) {
    CFtpDlg dialog(&form, prompts_, parent_);
    Run(&dialog);
  }
}

void EditorCommands::EditCurrentSensor() {
  CurrentSensorForm form(&doc_->Table());
  form.Open();
  if (HasWanted(form.Model())) {
    CCurrentSensorDlg dialog(&form, prompts_, parent_);
    Run(&dialog);
  }
}

void EditorCommands::EditCoil() {
  CoilForm form(&doc_->Table(), CoilModels());
  form.Open();
  if (HasWanted(form.Model())) {
    CCoilDlg dialog(&form, prompts_, parent_);
    Run(&dialog);
  }
}

bool EditorCommands::HasWanted(const FormModel& model) {
  return wanted_ == 0 || CanBeUsed(model, wanted_);
}

std::span<const EditorCommands::TitledEditor> EditorCommands::Editors() {
  static constexpr auto kEditors = std::to_array<TitledEditor>({
      {acq::kTitle, &EditorCommands::EditAcquisition},
      {stepping::kTitle, &EditorCommands::EditStepping},
      {BoxSerialForm::kTitle, &EditorCommands::EditSerials},
      {RadioForm::kTitle, &EditorCommands::EditRadio},
      {gsm::kTitle, &EditorCommands::EditGsm},
      {FtpForm::kTitle, &EditorCommands::EditFtp},
      {CurrentSensorForm::kTitle, &EditorCommands::EditCurrentSensor},
      {CoilForm::kTitle, &EditorCommands::EditCoil},
  });
  return kEditors;
}

bool EditorCommands::TryEdit(const EditPlace& place, ParamKey key) {
  ParamTable& table = doc_->Table();
  const Tech method = TechOf(table);
  const auto editors = Editors();
  const auto* titled =
      std::find_if(editors.data(), editors.data() + editors.size(),
                   [&place](const TitledEditor& one) { return one.title == place.dialog; });
  Editor edit = titled == editors.data() + editors.size() ? nullptr : titled->edit;
  if (IsKnown(method) && SiteForm(&table, method, TransmitterModels()).Title() == place.dialog) {
    edit = &EditorCommands::EditSite;
  }
  const bool is_unused = method == kMtAmt && edit == &EditorCommands::EditSerials;
  if (edit == nullptr || place.is_only_shown || is_unused) {
    return false;
  }
  const std::vector<ParamValue> before = StoredValues(table);
  wanted_ = place.control;
  wanted_cell_ = place.control == 0 ? key : ParamKey();
  is_shown_ = false;
  (this->*edit)();
  wanted_ = 0;
  wanted_cell_ = {};
  if (!is_shown_) {
    RestoreValues(before, &table);  // opening a form may write
  }
  return is_shown_;
}

void EditorCommands::EditKey(ParamKey key) {
  const Meanings meanings;
  const KeyMeaning* meaning = meanings.Find(key);
  if (meaning == nullptr ||
      std::none_of(meaning->places.begin(), meaning->places.end(),
                   [this, key](const EditPlace& place) { return TryEdit(place, key); })) {
    EditRaw(key);
  }
}

void EditorCommands::ViewBoxStatus() {
  BoxStatusForm form(&doc_->Table());
  form.Open();
  CBoxStatusDlg(&form, prompts_, parent_).exec();
}

void EditorCommands::SetUpRun(StartupRun* run) {
  run->SetVerifies(true);
  run->SetMayReplaceDocument([this] { return doc_->MayReplaceFile(); });
}

std::string EditorCommands::Doubts(const StartupRun& run) const {
  std::string doubts;
  for (const StartupOutcome& outcome : run.Outcomes()) {
    if (outcome.state == StartupOutcome::kNoFile) {
      doubts.append("\n").append(outcome.Name()).append(": ").append(outcome.Text());
    }
  }
  for (const Finding& finding : CheckTable(doc_->Table(), UtcClock().Now())) {
    if (finding.severity == Severity::kError) {
      doubts.append("\n").append(finding.sentence);
    }
  }
  return doubts;
}

void EditorCommands::SaveAllBoxes() {
  StartupRun run(&doc_->Table(), PathFromText(doc_->Path()), prompts_, PathFromText(UsersFolder()));
  SetUpRun(&run);
  const std::string doubts = Doubts(run);
  run.ForEachBox([&](StartupForm* form) {
    CStartupDlg dialog(form, &run, prompts_, parent_);
    dialog.TellDoubts(doubts);
    TellRefusedPastes(dialog);
    return dialog.exec() != CStartupDlg::kStop;  // Cancel skips this box only
  });
  EndRun(run);
}

void EditorCommands::WriteAllBoxes() {
  StartupRun run(&doc_->Table(), PathFromText(doc_->Path()), prompts_, PathFromText(UsersFolder()));
  SetUpRun(&run);
  std::string warnings;
  run.ForEachBox([&](StartupForm* form) {
    if (const std::string warning = run.WarningFor(*form); !warning.empty()) {
      warnings.append("\n").append(run.Heading(*form)).append(": ").append(warning);
    }
    return true;
  });
  warnings += Doubts(run);
  const std::string question = "Write the start-up files of " + FormatInt(run.Boxes().size()) +
                               " boxes to " + PathText(run.DefaultFolder()) + "?" +
                               (warnings.empty() ? "" : "\n" + warnings);
  if (prompts_->AskToLose("Orvane", question) == Answer::kYes) {
    run.ForEachBox([&](StartupForm* form) {
      run.Accept(*form);
      return true;
    });
  }
  EndRun(run);
}

void EditorCommands::PrintRaw() {
  ParamTable copy = doc_->Table();
  const Meanings meanings(TransmitterModels());
  CParamTableDlg dialog(&copy, parent_, doc_->NotInFile(), [&meanings](const ParamEntry& entry) {
    return RawMeaningOf(meanings, entry);
  });
  auto* grid = dialog.findChild<CGridCtrl*>();
  grid->SetPrintTitle(QStringLiteral("Parameters of ") + doc_->Title());
  grid->AskAndPrint();
}

void EditorCommands::EndRun(const StartupRun& run) {
  doc_->NoteStep(QStringLiteral("Save All Boxes"));  // what start-up files change for good
  if (run.Document() == StartupRun::OwnFile::kWritten) {
    doc_->OnOwnFileWritten(run.DocumentMemory());
  } else if (run.Document() == StartupRun::OwnFile::kTouched) {
    doc_->OnOwnFileTouched(run.DocumentMemory());
  }
  if (const std::string text = run.StatusText(); !text.empty()) {
    notices_->ShowNotice(text);
    CStartupResultDlg(run, LabelledKeys, parent_).exec();
  } else {
    TellEarlyChanges(run.EarlyChanges());
  }
}

}  // namespace orvane
