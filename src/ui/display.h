// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_DISPLAY_H_
#define ORVANE_UI_DISPLAY_H_

#include <QString>
#include <QWidget>

namespace orvane {

/// What stands in the main window in place of the table at a glance while a field file is looked
/// at. It never changes the open document.
class CDisplay : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

  /// For the window's title.
  virtual QString Title() const = 0;
  /// The scroll buttons of the tool bar.
  virtual void ScrollBack() = 0;
  virtual void ScrollForward() = 0;

 signals:
  /// The user wants the table back.
  void CloseAsked();
  /// For the status bar.
  void Told(const QString& text);
};

}  // namespace orvane

#endif  // ORVANE_UI_DISPLAY_H_
