// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_SURVEY_COMMAND_H_
#define ORVANE_APP_SURVEY_COMMAND_H_

#include <QAction>
#include <QMainWindow>
#include <QPointer>
#include <functional>

#include "app/utility_commands.h"
#include "survey/widgets/survey_window.h"

namespace orvane {

/// File > Open Survey Folder...: asks for a folder and shows it in the survey's window, of which
/// there is one. Its files open in the main window, its selection goes to the conversions.
class SurveyCommand : public QObject {
  Q_OBJECT

 public:
  /// All must outlive the command.
  SurveyCommand(QAction* command, UtilityCommands* utilities,
                std::function<void(const QString& path)> open_file, QMainWindow* window);

  void Open(const QString& folder);
  /// Null while there is none.
  CSurveyWindow* Window() const { return survey_; }

 private:
  void Ask();
  void Convert(SurveyConversion conversion, const QStringList& paths);

  UtilityCommands* utilities_;
  std::function<void(const QString&)> open_file_;
  QMainWindow* window_;
  QPointer<CSurveyWindow> survey_;
};

}  // namespace orvane

#endif  // ORVANE_APP_SURVEY_COMMAND_H_
