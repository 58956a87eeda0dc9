// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_RESULT_LIST_DLG_H_
#define ORVANE_UI_RESULT_LIST_DLG_H_

#include <QDesktopServices>
#include <QDialog>
#include <QLabel>
#include <QTreeWidget>
#include <QUrl>
#include <functional>
#include <vector>

#include "ui/text_editor.h"

namespace orvane {

/// What came of one of several things.
struct ResultRow {
  enum Kind { kProblem, kNote, kGood };  ///< in the order in which a user wants to see them
  QString name;
  QString path;  ///< of the input, whole; empty where there is none
  Kind kind = kGood;
  QString result;
  QStringList outputs;   ///< paths; the last one is opened
  QString details = {};  ///< shown below the list while the row is the current one

  /// Of the output, else of the input.
  QString Folder() const;
};

/// A message, and below it a list of what came of each thing: problems first, reasons whole, sorted
/// by any column. Return or a double click opens an output.
class CResultListDlg : public QDialog {
  Q_OBJECT

 public:
  struct Texts {
    QString message;
    QString counts;  ///< below the message; may be empty
    QString first_column;
  };
  /// `editor` shows texts and must outlive the dialog; null where outputs are not to be opened.
  CResultListDlg(const Texts& texts, const std::vector<ResultRow>& rows, const TextEditor* editor,
                 QWidget* parent);

  /// The output that the user wants to see and that is not a text: the caller shows it once the
  /// dialog is closed, because it would be covered.
  const QString& ToShow() const { return to_show_; }

  /// What shows a folder, replaceable for tests.
  std::function<bool(const QUrl&)> open_folder = QDesktopServices::openUrl;

 protected:
  /// Return in the list opens an output and never reaches the dialog, which it would close.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLayout* Head(const Texts& texts, bool has_problem);
  QWidget* Buttons();
  void AddRow(const ResultRow& row, int number);
  void FitColumns();
  void Open(const QTreeWidgetItem* item);
  void ShowDetails(const QTreeWidgetItem* item);
  void OpenFolder();
  void CopyAll() const;

  const TextEditor* editor_;
  QTreeWidget* list_;
  QLabel* details_;
  QString to_show_;
};

}  // namespace orvane

#endif  // ORVANE_UI_RESULT_LIST_DLG_H_
