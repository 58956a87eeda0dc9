// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/utility_commands.h"

#include <QCoreApplication>
#include <QSettings>
#include <set>

#include "base/number_text.h"
#include "calibration/cal_text.h"
#include "export/widgets/export_dlgs.h"
#include "files/file_system.h"
#include "files/path_names.h"
#include "files/path_text.h"
#include "spectra/widgets/spectra_dlg.h"
#include "stepping/schedule_text.h"
#include "table/table_text.h"
#include "table/table_to_v1.h"
#include "timeseries/restack.h"
#include "timeseries/stack_csv.h"
#include "timeseries/time_series_text.h"
#include "ui/batch_progress_dlg.h"
#include "ui/batch_result_dlg.h"
#include "ui/file_dialogs.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

const QString kCalibrations = QStringLiteral("Folders/Calibrations of spectra");

// Where calibrations of spectra were found last.
QString LastCalibrations() {
  const QString folder = QSettings().value(kCalibrations).toString();
  return folder.isEmpty() ? TextFromPath(UsualCalFolder()) : folder;
}

// What the window with the records ticked is what results do without.
const LeaveOutChoice kBeside{.kind = LeaveOutChoice::Kind::kBeside};

constexpr const char* kConverted = "%d files are converted to ASCII file!";
constexpr Utility kTableListing = {"Convert TBL File(s) to ASCII File(s)",
                                   "Tbl Files (*.tbl)|*.tbl|All Files (*.*)|*.*||",
                                   "",
                                   kConverted,
                                   1,
                                   "tbl"};
constexpr Utility kScheduleListing = {"Convert Frequency Stepping File(s) to ASCII File(s)",
                                      "Schedule File (*.TFS)|*.TFS|All Files (*.*)|*.*||", "",
                                      kConverted, 1};
constexpr Utility kCalibrationListing = {"Convert Calibration File(s) to ASCII File(s)",
                                         "Calibration Files (*.cl?)|*.cl?|All Files (*.*)|*.*||",
                                         "", kConverted, 5};
constexpr const char* kStackFilter = "Stack Files (*.trs)|*.trs|All Files (*.*)|*.*||";
constexpr Utility kTimeDomainStacks = {"Convert Time Domain Stack Result File(s) to ASCII File(s)",
                                       kStackFilter, "", kConverted};
constexpr Utility kFrequencyDomainStacks = {
    "Convert Frequency Stack Result File(s) to ASCII File(s)", kStackFilter, "", kConverted};
constexpr Utility kWaveformText = {"Convert Time Series File(s) to ASCII File(s)",
                                   "Time Series Files (*.ts?)|*.ts?|All Files (*.*)|*.*||", "",
                                   kConverted};
constexpr Utility kRestacking = {"Restack Time Series File",
                                 "Tss File (*.tss)|*.tss|All Files (*.*)|*.*||", "",
                                 "%d files have been restacked!"};
constexpr Utility kSpectra = {"Convert Waveform File(s) to Calibrated Spectra",
                              "Time Series Files (*.ts?)|*.ts?|All Files (*.*)|*.*||", "",
                              kConverted};
constexpr const char* kRecordings = "Time Series Files (*.ts?)|*.ts?|All Files (*.*)|*.*||";
constexpr Utility kNetcdf = {"Convert Waveform File(s) to NetCDF",
                             kRecordings,
                             "",
                             "%d files are converted to NetCDF!",
                             0,
                             "",
                             true};
constexpr Utility kMseed = {"Convert Waveform File(s) to MiniSEED",
                            kRecordings,
                            "",
                            "%d files are converted to MiniSEED!",
                            0,
                            "",
                            true};
constexpr Utility kVersion1 = {"Convert Version 2 TBL File(s) to Version 1 TBL File(s)",
                               "TBL File (*.TBL)|*.TBL|All Files (*.*)|*.*||", "*.TBL",
                               "%d .Tbl files are converted to version 1 .tbl files"};

}  // namespace

void UtilityCommands::ListTables() { Run(kTableListing, TableText(), folders_.Document()); }
void UtilityCommands::ListCalibrations() {
  Run(kCalibrationListing, ExportCalToText(), folders_.Calibrations());
}
void UtilityCommands::ListSchedules() { Run(kScheduleListing, ScheduleText(), folders_.Data()); }
void UtilityCommands::ConvertTimeDomainStacks() {
  Run(kTimeDomainStacks, StackCsv(StackDomain::kTime), folders_.Data());
}
void UtilityCommands::ConvertFrequencyDomainStacks() {
  Run(kFrequencyDomainStacks, StackCsv(StackDomain::kFrequency), folders_.Data());
}
void UtilityCommands::ConvertWaveforms() {
  Run(kWaveformText, TimeSeriesText(TsHeaderSize::kFull, kBeside), folders_.Data());
}
void UtilityCommands::Restack() {
  RestackOptions options;
  options.leave_out = kBeside;
  options.ask_about_bad = [this](const std::string& question, const BatchTask& task) {
    const auto ask = [&] { return prompts_->AskYesNo("Orvane", question); };
    return AskForWorker(task, ask) == Answer::kYes;
  };
  Run(kRestacking, orvane::Restack(std::move(options)), folders_.Data());
}
void UtilityCommands::ConvertToVersion1() {
  Run(kVersion1, TableToV1(doc_->Table()), folders_.Document());
}

// A worker asks and waits for this thread, which shows the question over the progress.
Answer UtilityCommands::AskForWorker(const BatchTask& task, const std::function<Answer()>& ask) {
  Answer answer = Answer::kCancel;
  const auto show = [&] { answer = task.Stopped() ? Answer::kCancel : ask(); };
  QMetaObject::invokeMethod(QCoreApplication::instance(), show, Qt::BlockingQueuedConnection);
  return answer;
}

void UtilityCommands::ConvertToSpectra() {
  SpectraForm form(LastCalibrations().toStdString());
  CSpectraDlg dialog(&form, prompts_, parent_);
  if (dialog.exec() != QDialog::Accepted) {
    return;
  }
  SpectraOptions options = form.Options();
  options.leave_out = kBeside;
  QSettings().setValue(kCalibrations, QString::fromStdString(PathText(options.calibration_folder)));
  options.ask = [this](const std::string& question, const BatchTask& task) {
    return AskForWorker(task, [&] { return prompts_->AskYesNoCancel("Orvane", question); });
  };
  Run(kSpectra, CalibratedSpectra(std::move(options)), folders_.Data());
}

// The survey's window offers what this program may lack.
bool UtilityCommands::Lacks(const std::string& why) {
  if (!why.empty()) {
    prompts_->ShowWarning("Orvane", "Such files cannot be written: " + why);
  }
  return !why.empty();
}

void UtilityCommands::ConvertToNetcdf() {
  if (Lacks(CanWriteNetcdf().Message())) {
    return;
  }
  NetcdfForm form;
  CNetcdfDlg dialog(&form, prompts_, parent_);
  if (dialog.exec() == QDialog::Accepted) {
    NetcdfOptions options = form.Options();
    options.leave_out = kBeside;
    Run(kNetcdf, WaveformNetcdf(std::move(options)), folders_.Data());
  }
}

void UtilityCommands::ConvertToMseed() {
  if (Lacks(std::string(WhyNoMseed()))) {
    return;
  }
  const QString network = QStringLiteral("MiniSEED/network");
  MseedForm form(QSettings().value(network).toString().toStdString(),
                 LastCalibrations().toStdString());
  CMseedDlg dialog(&form, prompts_, parent_);
  if (dialog.exec() == QDialog::Accepted) {
    MseedOptions options = form.Options();
    options.leave_out = kBeside;
    QSettings().setValue(network, QString::fromStdString(options.network));
    Run(kMseed, WaveformMseed(std::move(options)), folders_.Data());
  }
}

void UtilityCommands::Take(std::vector<std::filesystem::path> files,
                           void (UtilityCommands::*command)()) {
  taken_ = std::move(files);
  (this->*command)();
  taken_.clear();
}

void UtilityCommands::Run(const Utility& utility, Conversion conversion, const QString& folder) {
  if (!taken_.empty()) {
    Convert(utility, std::move(conversion), taken_);
    return;
  }
  CFECFileDialog dialog(QString::fromLatin1(utility.title), utility.filters, folder, parent_);
  dialog.setDefaultSuffix(QString::fromLatin1(utility.suffix));
  if (*utility.initial_name != '\0') {
    dialog.selectFile(QString::fromLatin1(utility.initial_name));
  }
  if (!dialog.ExecRemembering(QStringLiteral("Folders/") + QString::fromLatin1(utility.title))) {
    return;
  }
  Convert(utility, std::move(conversion), dialog.Paths(), PathFromText(dialog.OutFolder()));
}

void UtilityCommands::Convert(const Utility& utility, Conversion conversion,
                              std::vector<std::filesystem::path> files,
                              std::filesystem::path out_folder) {
  if (utility.asks_to_replace && !MayReplace(conversion, files, out_folder)) {
    return;
  }
  const std::size_t chosen = files.size();
  Batch batch({std::move(conversion), std::move(files), std::move(out_folder), 0});
  CBatchProgressDlg progress(&batch, QString::fromLatin1(utility.title), parent_);
  // The other files go on.
  progress.Run([this](std::size_t /*index*/, const BatchResult& result) {
    if (!result.box.empty()) {
      prompts_->ShowWarning(result.box_caption, result.box);
    }
  });
  const std::size_t count = batch.CountForMessage();
  if (chosen <= utility.most_shown && count == chosen) {
    ShowTexts(batch);
    return;
  }
  QString message = QString::fromLatin1(utility.message);
  message.replace(QStringLiteral("%d"), QString::fromStdString(FormatInt(count)));
  CBatchResultDlg results(batch, message, &editor_, parent_);
  results.exec();
  if (!results.ToShow().isEmpty() && open_file_) {
    open_file_(results.ToShow());
  }
}

// Asks once for all. What cannot be looked at counts as there.
bool UtilityCommands::MayReplace(const Conversion& conversion,
                                 const std::vector<std::filesystem::path>& files,
                                 const std::filesystem::path& out_folder) {
  std::set<std::filesystem::path> there;
  for (const auto& file : files) {
    for (const std::string& output : conversion.outputs_of(PathText(file))) {
      const auto path = InFolder(out_folder, output);
      if (const auto look = Exists(path); !look || *look == Existence::kThere) {
        there.insert(path);
      }
    }
  }
  if (there.empty()) {
    return true;
  }
  const std::string name = PathText(*there.begin());
  const std::string question =
      there.size() == 1
          ? name + " exists already. Replace it?"
          : FormatInt(there.size()) + " files exist already, such as " + name + ". Replace them?";
  return prompts_->AskToLose("Orvane", question) == Answer::kYes;
}

void UtilityCommands::ShowTexts(const Batch& batch) {
  QString missing;
  Result<> shown;
  for (std::size_t i = 0; i < batch.Count(); ++i) {
    const BatchResult& result = *batch.Result(i);
    if (result.outputs.empty()) {
      missing += TextFromPath(batch.Input(i)) + QStringLiteral(": ") + ResultText(result) +
                 QLatin1Char('\n');
      continue;
    }
    if (!result.text.empty()) {
      notices_->ShowNotice(PathText(batch.Input(i)) + ": " + result.text);
    }
    if (shown) {
      shown = editor_.Show(TextFromPath(result.outputs.front()));
    }
  }
  const QString told =
      (missing.isEmpty() ? QString() : QStringLiteral("No text was written for\n") + missing) +
      QString::fromStdString(shown.Message());
  if (!told.isEmpty()) {
    prompts_->ShowWarning("Orvane", told.trimmed().toStdString());
  }
}

}  // namespace orvane
