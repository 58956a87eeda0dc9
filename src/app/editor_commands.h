// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_EDITOR_COMMANDS_H_
#define ORVANE_APP_EDITOR_COMMANDS_H_

#include <QDialog>
#include <QWidget>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/orvane_doc.h"
#include "editors/startup_run.h"
#include "forms/form_model.h"
#include "forms/prompts.h"
#include "meaning/key_meaning.h"
#include "table/tech.h"

namespace orvane {

/// What the commands of the setup editors do: run the dialogs and inform the document. Each is one
/// step that can be undone.
class EditorCommands {
 public:
  /// All must outlive the commands; `parent` is the window of the dialogs.
  EditorCommands(COrvaneDoc* doc, Prompts* prompts, Notices* notices, QWidget* parent)
      : doc_(doc), prompts_(prompts), notices_(notices), parent_(parent) {}

  /// Begins at the row of `key`, where one is given.
  void EditRaw(ParamKey key = {});
  void EditAcquisition();
  void EditStepping();
  /// The site of the table's method, which must be one that is known.
  void EditSite();
  void CreateFdemSchedule();
  void EditRadio();
  void EditGsm();
  void EditFtp();
  void EditCurrentSensor();
  void EditCoil();
  void ViewBoxStatus();
  void SaveAllBoxes();
  /// The same without the dialogs, with the values as they are; asks before it writes over files of
  /// others.
  void WriteAllBoxes();
  /// Asks for a printer and prints every parameter.
  void PrintRaw();
  /// The dialog that edits a key, at its control: that of the site as the table's method has it.
  /// The raw parameters where no dialog does, or where the method disables the control.
  void EditKey(ParamKey key);

 private:
  /// Edits where a control was asked for that is disabled: nothing is shown then.
  using Editor = void (EditorCommands::*)();
  struct TitledEditor {
    std::string_view title;
    Editor edit;
  };
  static std::span<const TitledEditor> Editors();
  void EditSerials();
  /// True where the dialog was shown.
  bool TryEdit(const EditPlace& place, ParamKey key);
  /// False where a control is asked for that this form disables.
  bool HasWanted(const FormModel& model);
  /// False where a key is asked for that no cell of the dialog's grids has.
  template <typename Dialog>
  bool GoToWantedCell(Dialog* dialog) {
    return wanted_cell_.IsEmpty() || dialog->GoTo(std::exchange(wanted_cell_, {}));
  }
  /// The site setup of a method, over `parent`. True when it ended with OK. Adds the keys that were
  /// changed before it.
  bool SetUpSite(Tech tech, QWidget* parent, std::vector<std::string>* early);
  bool RunSite(Tech tech, QWidget* parent, std::vector<std::string>* early);
  bool AskForSerials(QWidget* parent, std::vector<std::string>* early);
  /// The document's folder.
  QString ScheduleFolder(Tech method) const;
  void SetUpRun(StartupRun* run);
  /// Boxes that get no file and what the check calls an error, a line each; empty where none.
  std::string Doubts(const StartupRun& run) const;
  /// What files there are after a run, and what it made of the document.
  void EndRun(const StartupRun& run);
  /// Runs a dialog, which is a step of its title. True when it ended with OK.
  bool Run(QDialog* dialog);
  /// The same of one that writes before its OK: `early` gets what stays after Cancel.
  bool Run(QDialog* dialog, const std::function<std::vector<std::string>()>& early);
  /// Shows it at the control that was asked for. True when it ended with OK.
  bool Show(QDialog* dialog);
  /// Of the grids of a dialog, in the status bar.
  void TellRefusedPastes(const QDialog& dialog);
  void TellEarlyChanges(const std::vector<std::string>& keys);
  /// The next OK: what the line said is no longer news.
  void EndEarlyLine();

  COrvaneDoc* doc_;
  Prompts* prompts_;
  Notices* notices_;
  QWidget* parent_;
  std::string early_line_;
  int wanted_ = 0;         // the control to begin at; 0: none
  ParamKey wanted_cell_;   // the key whose cell to begin at; empty: none
  bool is_shown_ = false;  // a dialog was, since a control was asked for
};

}  // namespace orvane

#endif  // ORVANE_APP_EDITOR_COMMANDS_H_
