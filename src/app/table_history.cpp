// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/table_history.h"

#include <QUndoCommand>
#include <algorithm>

#include "table/stored_values.h"
#include "table/values_text.h"

namespace orvane {
namespace {

std::size_t CountDiffering(const TableHistory::State& a, const TableHistory::State& b) {
  std::size_t count = 0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    count += a[i] != b[i] ? 1U : 0U;
  }
  return count;
}

// Of a key among the values of a state.
std::ptrdiff_t PositionOf(const ParamTable& table, ParamKey key) {
  const std::vector<ParamKey> keys = AllKeys(table);
  const auto found = std::find(keys.begin(), keys.end(), key);
  return found == keys.end() ? -1 : found - keys.begin();
}

}  // namespace

class TableHistory::Step : public QUndoCommand {
 public:
  Step(TableHistory* history, const QString& text, std::shared_ptr<State> before,
       std::shared_ptr<State> after)
      : QUndoCommand(text),
        history_(history),
        before_(std::move(before)),
        after_(std::move(after)) {}

  void undo() override { history_->Go(before_); }
  void redo() override { history_->Go(after_); }
  const std::shared_ptr<State>& Before() const { return before_; }
  const std::shared_ptr<State>& After() const { return after_; }

 private:
  TableHistory* history_;
  std::shared_ptr<State> before_;
  std::shared_ptr<State> after_;
};

TableHistory::TableHistory(ParamTable* table) : table_(table) {
  steps_.setUndoLimit(kMostSteps);
  Clear();
}

void TableHistory::Clear() {
  steps_.clear();
  now_ = std::make_shared<State>(StoredValues(*table_));
}

bool TableHistory::NoteStep(const QString& name) {
  auto after = std::make_shared<State>(StoredValues(*table_));
  const std::size_t count = CountDiffering(*now_, *after);
  if (count == 0) {
    return false;
  }
  const QString values =
      count == 1 ? QStringLiteral("1 value") : QStringLiteral("%1 values").arg(count);
  steps_.push(new Step(this, QStringLiteral("%1 (%2)").arg(name, values), now_, std::move(after)));
  return true;
}

void TableHistory::FoldSave() {
  *now_ = StoredValues(*table_);
  const std::ptrdiff_t version = PositionOf(*table_, "TBVI");
  if (version < 0) {
    return;
  }
  const auto at = static_cast<std::size_t>(version);
  for (int i = 0; i < steps_.count(); ++i) {
    const auto* step = static_cast<const Step*>(steps_.command(i));  // NOLINT: there are no others
    (*step->Before())[at] = (*now_)[at];
    (*step->After())[at] = (*now_)[at];
  }
}

void TableHistory::Undo() {
  NoteStep(QStringLiteral("Other changes"));
  steps_.undo();
}

void TableHistory::Redo() {
  NoteStep(QStringLiteral("Other changes"));
  steps_.redo();
}

void TableHistory::Go(const std::shared_ptr<State>& state) {
  now_ = state;
  RestoreValues(*state, table_);
}

}  // namespace orvane
