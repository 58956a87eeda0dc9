// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_TABLE_HISTORY_H_
#define ORVANE_APP_TABLE_HISTORY_H_

#include <QString>
#include <QUndoStack>
#include <memory>
#include <vector>

#include "table/param_table.h"

namespace orvane {

/// The steps that Undo takes back and Redo makes again. Whoever changes the table says so
/// afterwards; what differs from the state before is one step.
class TableHistory {
 public:
  /// The values of the table between two steps.
  using State = std::vector<ParamValue>;

  /// `table` must outlive the history.
  explicit TableHistory(ParamTable* table);

  static constexpr int kMostSteps = 1000;  ///< the oldest are forgotten: 12 KB each

  /// No steps: the table as it is now is where they begin.
  void Clear();

  /// What was changed since the last step becomes one, "Coil Calibration (2 values)". False where
  /// nothing was.
  bool NoteStep(const QString& name);

  /// The table was saved, which sets the versions of file and output: no step, but part of the
  /// present state. Of the other states the version of the file follows too.
  void FoldSave();

  /// Changes that nobody has named yet are a step first: none is lost.
  void Undo();
  void Redo();

  /// For its texts and signals; steps are taken by `Undo()` and `Redo()`.
  const QUndoStack& Steps() const { return steps_; }

 private:
  class Step;

  void Go(const std::shared_ptr<State>& state);

  ParamTable* table_;
  std::shared_ptr<State> now_;
  QUndoStack steps_;
};

}  // namespace orvane

#endif  // ORVANE_APP_TABLE_HISTORY_H_
