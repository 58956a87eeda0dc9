// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/qt_prompts.h"

#include <QApplication>

namespace orvane {

Answer QtPrompts::Ask(const std::string& caption, const std::string& question,
                      QMessageBox::StandardButtons buttons, QMessageBox::StandardButton escape) {
  QWidget* over = QApplication::activeModalWidget();
  QMessageBox box(QMessageBox::Question, QString::fromStdString(caption),
                  QString::fromStdString(question), buttons,
                  over != nullptr ? over : parent_.data());
  box.setTextFormat(Qt::PlainText);
  box.setEscapeButton(escape);
  box.setDefaultButton(QMessageBox::Yes);
  switch (box.exec()) {
    case QMessageBox::Yes:
      return Answer::kYes;
    case QMessageBox::No:
      return Answer::kNo;
    default:
      return Answer::kCancel;
  }
}

Answer QtPrompts::AskYesNo(const std::string& caption, const std::string& question) {
  return Ask(caption, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
}

Answer QtPrompts::AskYesNoCancel(const std::string& caption, const std::string& question) {
  return Ask(caption, question, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
             QMessageBox::Cancel);
}

void QtPrompts::ShowWarning(const std::string& caption, const std::string& text) {
  QWidget* over = QApplication::activeModalWidget();
  QMessageBox box(QMessageBox::Warning, QString::fromStdString(caption),
                  QString::fromStdString(text), QMessageBox::Ok,
                  over != nullptr ? over : parent_.data());
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

}  // namespace orvane
