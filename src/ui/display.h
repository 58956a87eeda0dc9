// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_DISPLAY_H_
#define ORVANE_UI_DISPLAY_H_

#include <QAction>
#include <QKeySequence>
#include <QString>
#include <QTableWidget>
#include <QToolBar>
#include <QWidget>
#include <functional>

namespace orvane {

/// What is in the main window in place of the table at a glance while a field file is looked
/// at: a tool bar above, the file below. It never changes the open document.
class CDisplay : public QWidget {
  Q_OBJECT

 public:
  /// `name` is what assistive tools say, such as "Waveform".
  CDisplay(const QString& name, QWidget* parent);

  /// For the window's title.
  virtual QString Title() const = 0;
  /// The scroll buttons of the tool bar.
  virtual void ScrollBack() = 0;
  virtual void ScrollForward() = 0;
  /// Reads the file again and keeps how it is shown.
  virtual void Reload() = 0;

  using Act = std::function<void()>;
  /// A command of the tool bar, which also has a key and is in the context menu. The key works
  /// while the focus is in the display.
  QAction* AddButton(const char* text, const char* name, const char* tip, const QKeySequence& key,
                     Act act);
  /// The same without a button.
  QAction* AddKey(const char* text, const char* name, const char* tip, const QKeySequence& key,
                  Act act);
  /// Puts a command into a menu of its own within the context menu.
  static void PutIntoMenu(QAction* command, const QString& menu);
  QToolBar* Bar() { return bar_; }
  /// Where a command's menu opens: below its button, or in the middle where that has no room.
  QPoint PlaceBelow(QAction* command) const;

 signals:
  /// The user wants the table back.
  void closeRequested();
  /// The user wants the next file of the folder, or with -1 the one before.
  void fileWanted(int by);
  /// For the status bar.
  void told(const QString& text);

 protected:
  /// F5, and the keys for the files beside this one.
  QAction* AddReload();
  void AddFiles();
  /// A hidden table, without a vertical header, for what cursors read.
  QTableWidget* MakeReadings();
  void ShowMenu(const QPoint& at);
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  QToolBar* bar_;
};

}  // namespace orvane

#endif  // ORVANE_UI_DISPLAY_H_
