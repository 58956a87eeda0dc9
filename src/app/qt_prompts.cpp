// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/qt_prompts.h"

#include <QApplication>
#include <QPushButton>
#include <algorithm>

namespace orvane {

Answer QtPrompts::Ask(const std::string& caption, const std::string& question,
                      QMessageBox::StandardButtons buttons, QMessageBox::StandardButton escape,
                      QMessageBox::StandardButton enter) {
  QWidget* over = QApplication::activeModalWidget();
  QMessageBox box(QMessageBox::Question, QString::fromStdString(caption),
                  QString::fromStdString(question), buttons,
                  over != nullptr ? over : parent_.data());
  box.setTextFormat(Qt::PlainText);
  box.setEscapeButton(escape);
  box.setDefaultButton(enter);
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

Answer QtPrompts::AskToLose(const std::string& caption, const std::string& question) {
  return Ask(caption, question, QMessageBox::Yes | QMessageBox::No, QMessageBox::No,
             QMessageBox::No);
}

Answer QtPrompts::AskYesNoCancel(const std::string& caption, const std::string& question) {
  return Ask(caption, question, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel,
             QMessageBox::Cancel);
}

int QtPrompts::AskChoice(const std::string& caption, const std::string& question,
                         const std::vector<std::string>& buttons, int escape) {
  QWidget* over = QApplication::activeModalWidget();
  QMessageBox box(QMessageBox::Question, QString::fromStdString(caption),
                  QString::fromStdString(question), QMessageBox::NoButton,
                  over != nullptr ? over : parent_.data());
  box.setTextFormat(Qt::PlainText);
  std::vector<QPushButton*> shown;
  for (const std::string& text : buttons) {
    const auto role = shown.empty()                              ? QMessageBox::AcceptRole
                      : static_cast<int>(shown.size()) == escape ? QMessageBox::RejectRole
                                                                 : QMessageBox::DestructiveRole;
    shown.push_back(box.addButton(QString::fromStdString(text), role));
  }
  box.setDefaultButton(shown.front());
  box.setEscapeButton(shown[static_cast<std::size_t>(escape)]);
  box.exec();
  const auto pressed = std::find(shown.begin(), shown.end(), box.clickedButton());
  return pressed == shown.end() ? escape : static_cast<int>(pressed - shown.begin());
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
