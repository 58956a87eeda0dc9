// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_EDITOR_COMMANDS_H_
#define ORVANE_APP_EDITOR_COMMANDS_H_

#include <QDialog>
#include <QWidget>
#include <string>
#include <vector>

#include "app/orvane_doc.h"
#include "forms/prompts.h"
#include "table/tech.h"

namespace orvane {

/// What the commands of the setup editors do: run the dialogs and inform the document.
class EditorCommands {
 public:
  /// All must outlive the commands; `parent` is the window of the dialogs.
  EditorCommands(COrvaneDoc* doc, Prompts* prompts, Notices* notices, QWidget* parent)
      : doc_(doc), prompts_(prompts), notices_(notices), parent_(parent) {}

  void EditRaw();
  void EditAcquisition();
  void EditStepping();
  void CreateFdemSchedule();
  void EditRadio();
  void EditGsm();
  void EditFtp();
  void EditCurrentSensor();
  void EditCoil();
  void ViewBoxStatus();
  void SaveAllBoxes();

 private:
  /// The site setup of a method, over `parent`. True when it ended with OK. Adds the keys that were
  /// changed before it.
  bool SetUpSite(Tech tech, QWidget* parent, std::vector<std::string>* early);
  bool AskForSerials(QWidget* parent, std::vector<std::string>* early);
  /// The document's folder.
  QString ScheduleFolder(Tech method) const;
  /// Runs a dialog. True when it ended with OK.
  bool Run(QDialog* dialog);
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
};

}  // namespace orvane

#endif  // ORVANE_APP_EDITOR_COMMANDS_H_
