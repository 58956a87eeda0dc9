// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_UTILITY_COMMANDS_H_
#define ORVANE_APP_UTILITY_COMMANDS_H_

#include <QString>
#include <QWidget>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "app/field_folders.h"
#include "app/orvane_doc.h"
#include "files/batch.h"
#include "forms/prompts.h"
#include "ui/text_editor.h"

namespace orvane {

/// How a command asks for its files and ends.
struct Utility {
  const char* title;
  const char* filters;
  const char* initial_name;  ///< in the file dialog; may be empty
  const char* message;       ///< with "%d" for the number of files
  /// So many files or fewer are shown in the text editor instead of the message.
  std::size_t most_shown = 0;
  const char* suffix = "";       ///< for names typed without one
  bool asks_to_replace = false;  ///< what is there may be another program's
};

/// The commands that turn files into others. They never touch the document.
class UtilityCommands {
 public:
  /// All must outlive the commands; `parent` is the window of the dialogs.
  UtilityCommands(const COrvaneDoc* doc, Prompts* prompts, Notices* notices, QWidget* parent)
      : doc_(doc), folders_(doc), prompts_(prompts), notices_(notices), parent_(parent) {}

  void ListTables();
  void ListSchedules();
  void ListCalibrations();
  void ConvertTimeDomainStacks();
  void ConvertFrequencyDomainStacks();
  void ConvertToVersion1();
  void ConvertWaveforms();
  void Restack();
  void ConvertToSpectra();
  void ConvertToNetcdf();
  void ConvertToMseed();

  void SetEditor(TextEditor editor) { editor_ = std::move(editor); }

  /// What shows an output that is not a text.
  void SetOpener(std::function<void(const QString& path)> open_file) {
    open_file_ = std::move(open_file);
  }

  /// Runs one of the commands on files that are chosen already: nobody is asked for them, and what
  /// is made of them goes beside them.
  void Take(std::vector<std::filesystem::path> files, void (UtilityCommands::*command)());

  /// Converts files that are chosen already, into a folder or beside each of them.
  void Convert(const Utility& utility, Conversion conversion,
               std::vector<std::filesystem::path> files, std::filesystem::path out_folder = {});

 private:
  static Answer AskForWorker(const BatchTask& task, const std::function<Answer()>& ask);
  void Run(const Utility& utility, Conversion conversion, const QString& folder);
  bool Lacks(const std::string& why);
  bool MayReplace(const Conversion& conversion, const std::vector<std::filesystem::path>& files,
                  const std::filesystem::path& out_folder);
  void ShowTexts(const Batch& batch);

  const COrvaneDoc* doc_;
  FieldFolders folders_;
  Prompts* prompts_;
  Notices* notices_;
  QWidget* parent_;
  std::vector<std::filesystem::path> taken_;  // by the command that runs
  TextEditor editor_;
  std::function<void(const QString&)> open_file_;
};

}  // namespace orvane

#endif  // ORVANE_APP_UTILITY_COMMANDS_H_
