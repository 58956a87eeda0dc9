// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHANGES_WIDGETS_APPLY_VALUES_DLG_H_
#define ORVANE_CHANGES_WIDGETS_APPLY_VALUES_DLG_H_

#include <QAbstractTableModel>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <vector>

#include "meaning/meanings.h"
#include "table/value_lines.h"

namespace orvane {

/// The lines of a values file; those that would change the table have a tick.
class ValueLinesModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column : int { kLine, kCode, kValue, kState, kMeaning, kColumns };

  ValueLinesModel(const ParamTable* table, const Meanings* meanings, QObject* parent)
      : QAbstractTableModel(parent), table_(table), meanings_(meanings) {}

  void SetLines(std::vector<ValueLine> lines, bool are_ticked);
  void TickAll(bool are_ticked);
  /// The lines with a tick, in their order.
  std::vector<ValueLine> Ticked() const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 signals:
  void ticked();

 private:
  QString TextOf(const ValueLine& line, int column) const;
  QString MeaningOf(const ParamEntry& entry) const;

  const ParamTable* table_;
  const Meanings* meanings_;
  std::vector<ValueLine> lines_;
  std::vector<bool> ticks_;
};

/// Reads lines KEY=VALUE of a file or the clipboard, shows what each would do, and gives those that
/// are ticked.
class ApplyValuesDlg : public QDialog {
  Q_OBJECT

 public:
  /// Both must outlive the dialog, which does not change the table.
  ApplyValuesDlg(const ParamTable* table, const Meanings* meanings, QWidget* parent);

  /// False, after a message, where the file cannot be read.
  bool LoadFile(const QString& path);
  /// Once accepted: what to apply.
  std::vector<ValueLine> Lines() const { return model_->Ticked(); }

 private:
  QLayout* MakeTop();
  QWidget* MakeList();
  QWidget* MakeButtons();
  void AskForFile();
  void TakeClipboard();
  bool Load(const std::string& text, const QString& name);
  void Follow();
  void Warn(const std::string& message);

  const ParamTable* table_;
  ValueLinesModel* model_;
  QLabel* source_;
  QLabel* note_;
  QPushButton* apply_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_CHANGES_WIDGETS_APPLY_VALUES_DLG_H_
