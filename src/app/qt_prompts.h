// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_QT_PROMPTS_H_
#define ORVANE_APP_QT_PROMPTS_H_

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include "forms/prompts.h"

namespace orvane {

/// Questions and messages in message boxes over the window that is active.
class QtPrompts : public Prompts {
 public:
  void SetParent(QWidget* parent) { parent_ = parent; }

  Answer AskYesNo(const std::string& caption, const std::string& question) override;
  Answer AskToLose(const std::string& caption, const std::string& question) override;
  Answer AskYesNoCancel(const std::string& caption, const std::string& question) override;
  int AskChoice(const std::string& caption, const std::string& question,
                const std::vector<std::string>& buttons, int escape) override;
  void ShowWarning(const std::string& caption, const std::string& text) override;

 private:
  Answer Ask(const std::string& caption, const std::string& question,
             QMessageBox::StandardButtons buttons, QMessageBox::StandardButton escape,
             QMessageBox::StandardButton enter = QMessageBox::Yes);

  QPointer<QWidget> parent_;
};

/// Notices for whoever shows the status bar.
class StatusNotices : public QObject, public Notices {
  Q_OBJECT

 public:
  void ShowNotice(const std::string& text) override { emit shown(QString::fromStdString(text)); }
  void EndNotice(const std::string& text) override { emit ended(QString::fromStdString(text)); }

 signals:
  void shown(const QString& text);
  void ended(const QString& text);
};

}  // namespace orvane

#endif  // ORVANE_APP_QT_PROMPTS_H_
