// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHECK_WIDGETS_CHECK_DOCK_H_
#define ORVANE_CHECK_WIDGETS_CHECK_DOCK_H_

#include <QCheckBox>
#include <QDockWidget>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <functional>
#include <vector>

#include "check/check.h"
#include "check/widgets/file_check.h"
#include "check/widgets/findings_model.h"
#include "ui/folder_line.h"
#include "ui/list_view.h"

namespace orvane {

/// "Morning Check": whether the boxes may leave with the table. Findings follow every change; what
/// takes files to be known comes from a thread a moment later. Below them the boxes of the spread
/// and what lies where their files go.
class CheckDock : public QDockWidget {
  Q_OBJECT

 public:
  /// `table` must outlive the dock.
  CheckDock(const ParamTable* table, QWidget* parent);

  /// The file of the table; empty where it has none. What its hints were dismissed as is kept by
  /// it.
  void SetFile(const QString& path);
  /// Where calibrations are and the boxes' files go unless the user says otherwise.
  void SetUsualFolders(const QString& calibrations, const QString& set);
  /// The table has changed: what needs no file is looked at now, the rest soon.
  void Follow();
  /// Files may have changed: the user comes back, or files are about to be written.
  void LookAtFiles();

  /// "2 errors, 3 warnings", "Nothing found".
  const QString& CountText() const { return count_text_; }
  /// All that is known now, dismissed hints left out.
  const std::vector<Finding>& Findings() const { return findings_; }

  /// Those that need no file.
  const std::vector<Finding>& TableFindings() const { return of_table_; }

  /// The time of the check, in UTC; the computer's unless it is replaced.
  std::function<ParamTime()> now;

 signals:
  /// A finding was double-clicked, or Return pressed: where it is mended.
  void mendWanted(orvane::ParamKey key);
  void writeWanted();
  void guidedWriteWanted();
  void countChanged(const QString& text);
  /// `Findings()` are others, or were looked for again.
  void found();

 private:
  QWidget* MakeContent();
  CListView* MakeFindings();
  QLayout* MakeFindingButtons();
  QWidget* MakeFolders();
  QWidget* MakeSpread();
  CFolderLine* AddFolder(QFormLayout* form, const char* label, const char* name, const char* tip);
  Places PlacesNow() const;
  void TakeFiles(const FileCheck::Outcome& outcome);
  void ShowFindings();
  void ShowBoxes(const std::vector<SetRow>& boxes);
  void CopyToCards();
  void EnableButtons();
  void Mend();
  void Dismiss();
  QString DismissedAs(const Finding& finding) const;
  QStringList Dismissed() const;

  const ParamTable* table_;
  QString file_;
  std::vector<Finding> of_table_;
  std::vector<Finding> of_files_;
  std::vector<Finding> findings_;
  QString count_text_;
  FileCheck* files_;
  QTimer later_;
  FindingsModel* model_;
  CListView* list_ = nullptr;
  QLabel* count_ = nullptr;
  QPushButton* mend_ = nullptr;
  QPushButton* dismiss_ = nullptr;
  QCheckBox* show_dismissed_ = nullptr;
  CFolderLine* calibrations_ = nullptr;
  CFolderLine* set_ = nullptr;
  CFolderLine* card_ = nullptr;
  QTableWidget* boxes_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_CHECK_WIDGETS_CHECK_DOCK_H_
