// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHANGES_WIDGETS_SAVE_VALUES_DLG_H_
#define ORVANE_CHANGES_WIDGETS_SAVE_VALUES_DLG_H_

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <vector>

#include "meaning/meanings.h"
#include "table/param_table.h"
#include "table/values_text.h"

namespace orvane {

/// Writes values of a table as lines KEY=VALUE, into a file or the clipboard.
class SaveValuesDlg : public QDialog {
  Q_OBJECT

 public:
  /// One of the sets of keys to choose from.
  struct Choice {
    QString text;
    std::vector<ParamKey> keys;
  };

  /// Table and meanings must outlive the dialog. The first choice with keys is chosen.
  SaveValuesDlg(const ParamTable* table, const Meanings* meanings, std::vector<Choice> choices,
                QWidget* parent);

  /// What was done, for the status bar; empty where nothing was.
  const QString& Told() const { return told_; }
  /// Writes the file; false, after a message, where it cannot be written.
  bool SaveTo(const QString& path);

 private:
  QWidget* MakeChoices();
  QWidget* MakeButtons();
  ValuesText Write() const;
  void Save();
  void Copy();
  void ShowLeftOut();
  void Done(const ValuesText& written, const QString& where);

  const ParamTable* table_;
  const Meanings* meanings_;
  std::vector<Choice> choices_;
  QButtonGroup* chosen_;
  QCheckBox* with_secrets_ = nullptr;
  QCheckBox* with_meanings_ = nullptr;
  QLabel* note_ = nullptr;
  QString told_;
};

}  // namespace orvane

#endif  // ORVANE_CHANGES_WIDGETS_SAVE_VALUES_DLG_H_
