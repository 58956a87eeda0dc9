// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_MAIN_FRAME_H_
#define ORVANE_APP_MAIN_FRAME_H_

#include <QAction>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QStackedWidget>
#include <array>
#include <functional>
#include <map>

#include "app/change_commands.h"
#include "app/changed_file_bar.h"
#include "app/check_commands.h"
#include "app/command_map.h"
#include "app/editor_commands.h"
#include "app/field_displays.h"
#include "app/notice_label.h"
#include "app/orvane_doc.h"
#include "app/orvane_view.h"
#include "app/qt_prompts.h"
#include "app/recent_files.h"
#include "app/survey_command.h"
#include "app/utility_commands.h"

namespace orvane {

/// The one window: menu bar, tool bar and status bar around the view. Commands without a handler
/// are shown but disabled.
class CMainFrame : public QMainWindow {
  Q_OBJECT

 public:
  CMainFrame(COrvaneDoc* doc, QtPrompts* prompts, StatusNotices* notices);
  ~CMainFrame() override;

  QAction* Command(int id) const { return commands_.at(id); }
  /// Asks to save the present document and opens a file. False where the user stays or it fails.
  bool OpenFile(const QString& path);
  /// The same for a table; shows a field file.
  bool OpenAny(const QString& path);
  void ShowNotice(const QString& text);
  FieldDisplays& Displays() { return *displays_; }
  /// The table instead of a field file; what was said of it stays in the status bar.
  void ShowTable();
  /// The field file on display; null where the table is.
  CDisplay* Display() const { return displays_->Current(); }

 protected:
  void changeEvent(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void CreateCenter();
  void CreateMenus();
  void AddThemes(QMenu* menu);
  void CreateToolBar();
  void CreateStatusBar();
  QAction* CreateCommand(const CommandRow& row);
  void Handle(int id, std::function<void()> handler);
  void ConnectCommands();
  void LookAtFile();
  void TellLacks(QMenu* menu);
  void ConnectSteps();
  void ConnectChanges();
  void ConnectCheck();
  void ConnectStart();
  void UpdateTitle();
  void FollowDisplay();
  void UpdateRecentFiles();
  void RestoreLayout();

  void OnFileNew();
  void OnFileOpen();
  bool OnFileSave();
  bool OnFileSaveAs();
  bool NoteSaved();

  COrvaneDoc* doc_;
  QtPrompts* prompts_;
  EditorCommands editors_;
  UtilityCommands utilities_;
  ChangeCommands* changes_;
  CheckCommands* check_;
  COrvaneView* view_;
  ChangedFileBar* changed_file_;
  QStackedWidget* stack_;
  FieldDisplays* displays_;
  SurveyCommand* survey_ = nullptr;
  NoticeLabel* notice_ = nullptr;
  std::map<int, QAction*> commands_;
  std::array<QAction*, RecentFiles::kMost> recent_actions_{};
  RecentFiles recent_files_;
};

}  // namespace orvane

#endif  // ORVANE_APP_MAIN_FRAME_H_
