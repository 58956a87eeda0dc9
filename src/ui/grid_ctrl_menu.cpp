// SPDX-License-Identifier: GPL-3.0-or-later
// The context menu of CGridCtrl, and what its entries ask the user for: files and a printer.
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPrinter>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <map>

#include "ui/file_dialogs.h"
#include "ui/grid_ctrl.h"
#include "ui/printer_choice.h"

namespace orvane {
namespace {

void Warn(QWidget* parent, const QString& text) {
  QMessageBox::warning(parent, QStringLiteral("Orvane"), text);
}

// Empty: cancelled.
QString AskForFile(CGridCtrl* grid, QFileDialog::AcceptMode mode, const QString& title) {
  CFileDialog dialog(title, "Text Files (*.txt)|*.txt|All Files (*.*)|*.*||", {}, grid);
  dialog.setAcceptMode(mode);
  dialog.setFileMode(mode == QFileDialog::AcceptOpen ? QFileDialog::ExistingFile
                                                     : QFileDialog::AnyFile);
  dialog.setDefaultSuffix(QStringLiteral("txt"));
  if (mode == QFileDialog::AcceptSave) {
    static const QRegularExpression kNotInNames(QStringLiteral("[^A-Za-z0-9]+"));
    QString name = grid->accessibleName();
    dialog.selectFile(name.replace(kNotInNames, QStringLiteral("-")));
  }
  dialog.ExecRemembering(QStringLiteral("Folders/Cells"));
  return dialog.Chosen();
}

}  // namespace

bool CGridCtrl::HasEditableCells() const {
  for (int row = GetFixedRowCount(); row < GetRowCount(); ++row) {
    for (int col = 0; col < GetColumnCount(); ++col) {
      if (model_.flags(model_.index(row, col)).testFlag(Qt::ItemIsEditable)) {
        return true;
      }
    }
  }
  return false;
}

// Below the focus cell where that is in sight.
QPoint CGridCtrl::PlaceOfMenu() const {
  const QPoint below = visualRect(currentIndex()).bottomLeft();
  const QRect seen = viewport()->rect();
  return viewport()->mapToGlobal(seen.contains(below) ? below : seen.center());
}

void CGridCtrl::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  ShowMenu(event->reason() == QContextMenuEvent::Keyboard ? PlaceOfMenu() : event->globalPos());
}

void CGridCtrl::ShowMenu(const QPoint& at) {
  QMenu menu(this);
  menu.setAccessibleName(tr("Cells"));
  std::map<const QAction*, void (CGridCtrl::*)()> acts;
  const auto add = [&](const QString& text, const char* name, void (CGridCtrl::*act)()) {
    QAction* action = menu.addAction(text);
    action->setObjectName(QString::fromLatin1(name));
    acts[action] = act;
    return action;
  };
  const auto show_key = [](QAction* action, QKeySequence::StandardKey key) {
    action->setShortcut(key);
    action->setShortcutVisibleInContextMenu(true);
  };
  const bool is_edited = HasEditableCells();
  QAction* copy = add(tr("&Copy"), "copy", &CGridCtrl::CopySelection);
  show_key(copy, QKeySequence::Copy);
  copy->setEnabled(selectionModel()->hasSelection());
  if (is_edited) {
    QAction* paste = add(tr("&Paste"), "paste", &CGridCtrl::Paste);
    show_key(paste, QKeySequence::Paste);
    paste->setEnabled(currentIndex().isValid() && !QGuiApplication::clipboard()->text().isEmpty());
  }
  menu.addSeparator();
  add(tr("&Save cells..."), "save-cells", &CGridCtrl::AskAndSave);
  if (is_edited) {
    add(tr("&Load cells..."), "load-cells", &CGridCtrl::AskAndLoad);
  }
  add(tr("P&rint..."), "print", &CGridCtrl::AskAndPrint);
  if (!actions().isEmpty()) {
    menu.addSeparator();
    menu.addActions(actions());
  }
  // Assistive tools trigger an entry without closing the menu.
  const QAction* chosen = nullptr;
  connect(&menu, &QMenu::triggered, this, [&](const QAction* action) {
    chosen = action;
    menu.close();
  });
  menu.exec(at);
  if (const auto act = acts.find(chosen); act != acts.end()) {
    (this->*act->second)();
  }
}

void CGridCtrl::AskAndSave() {
  const QString path = AskForFile(this, QFileDialog::AcceptSave, tr("Save Cells"));
  if (const auto saved = path.isEmpty() ? Result<>() : SaveCells(path); !saved) {
    Warn(this, QString::fromStdString(saved.Message()));
  }
}

void CGridCtrl::AskAndLoad() {
  const QString path = AskForFile(this, QFileDialog::AcceptOpen, tr("Load Cells"));
  if (const auto loaded = path.isEmpty() ? Result<>() : LoadCells(path); !loaded) {
    Warn(this, QString::fromStdString(loaded.Message()));
  }
}

void CGridCtrl::AskAndPrint() {
  CommitEdit();
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
  // For this print only: the window may be about something else the next time.
  const QScopedValueRollback title(print_title_);
  if (print_title_.isEmpty()) {
    print_title_ = window()->windowTitle() + QStringLiteral(": ") + accessibleName();
  }
  if (AskForPrinter(&printer, {}, PageCount(printer), this) && !Print(&printer)) {
    Warn(this, tr("The cells could not be printed."));
  }
}

}  // namespace orvane
