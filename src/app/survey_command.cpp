// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/survey_command.h"

#include <QSettings>
#include <array>

#include "ui/folder_dialog.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

const QString kFolder = QStringLiteral("Folders/Survey");

using Conversion = void (UtilityCommands::*)();

// In the order of `SurveyConversion`.
constexpr std::array<Conversion, 10> kConversions = {
    &UtilityCommands::Restack,
    &UtilityCommands::ConvertWaveforms,
    &UtilityCommands::ConvertToSpectra,
    &UtilityCommands::ConvertToNetcdf,
    &UtilityCommands::ConvertToMseed,
    &UtilityCommands::ConvertTimeDomainStacks,
    &UtilityCommands::ConvertFrequencyDomainStacks,
    &UtilityCommands::ListTables,
    &UtilityCommands::ListSchedules,
    &UtilityCommands::ListCalibrations,
};

}  // namespace

SurveyCommand::SurveyCommand(QAction* command, UtilityCommands* utilities,
                             std::function<void(const QString& path)> open_file,
                             QMainWindow* window)
    : QObject(window), utilities_(utilities), open_file_(std::move(open_file)), window_(window) {
  command->setEnabled(true);
  connect(command, &QAction::triggered, this, &SurveyCommand::Ask);
}

void SurveyCommand::Ask() {
  const QString folder = CFolderDialog::AskForFolder(window_, QStringLiteral("Open Survey Folder"),
                                                     QSettings().value(kFolder).toString());
  if (!folder.isEmpty()) {
    Open(folder);
  }
}

void SurveyCommand::Open(const QString& folder) {
  QSettings().setValue(kFolder, folder);
  if (survey_ == nullptr) {
    survey_ = new CSurveyWindow(window_);
    survey_->setAttribute(Qt::WA_DeleteOnClose);
    connect(survey_, &CSurveyWindow::fileWanted, this, [this](const QString& path) {
      open_file_(path);
      window_->activateWindow();
    });
    connect(survey_, &CSurveyWindow::conversionWanted, this, &SurveyCommand::Convert);
  }
  survey_->show();
  survey_->activateWindow();
  survey_->Open(PathFromText(folder));
}

void SurveyCommand::Convert(SurveyConversion conversion, const QStringList& paths) {
  std::vector<std::filesystem::path> files;
  for (const QString& path : paths) {
    files.push_back(PathFromText(path));
  }
  utilities_->Take(std::move(files), kConversions[static_cast<std::size_t>(conversion)]);
}

}  // namespace orvane
