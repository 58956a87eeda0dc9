// SPDX-License-Identifier: GPL-3.0-or-later
#include "changes/widgets/changes_dock.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <utility>

#include "files/path_text.h"
#include "ui/file_dialogs.h"
#include "ui/named_button.h"
#include "ui/qt_path.h"

namespace orvane {
namespace {

// In the order of `Against`.
constexpr std::array<const char*, 5> kAgainst = {"File on disk", "Built-in values", "Another table",
                                                 "What a box takes at power-up",
                                                 "What a version-1 file would hold"};

const QString kFolder = QStringLiteral("Folders/Compare");

}  // namespace

ChangesDock::ChangesDock(const ParamTable* table, const ParamTable* start, MeaningsSource meanings,
                         QWidget* parent)
    : QDockWidget(QStringLiteral("Changes"), parent),
      comparison_(table, start, std::move(meanings)),
      model_(new ChangesModel(this)) {
  setObjectName(QStringLiteral("changes"));
  setAllowedAreas(Qt::BottomDockWidgetArea | Qt::TopDockWidgetArea);
  setWidget(MakeContent());
  connect(against_, &QComboBox::currentIndexChanged, this, &ChangesDock::OnAgainst);
  connect(model_, &ChangesModel::ticked, this, &ChangesDock::EnableButtons);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ChangesDock::EnableButtons);
  connect(list_, &CListView::opened, this, &ChangesDock::Edit);
  setFocusProxy(list_);
  EnableButtons();
}

QAction* ChangesDock::NewAction(const char* text, const QKeySequence& key,
                                void (ChangesDock::*handler)()) {
  auto* action = new QAction(QString::fromLatin1(text), list_);
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetShortcut);
  connect(action, &QAction::triggered, this, handler);
  list_->addAction(action);
  return action;
}

QLayout* ChangesDock::MakeTop() {
  against_ = new QComboBox(this);
  against_->setObjectName(QStringLiteral("against"));
  for (const char* text : kAgainst) {
    against_->addItem(QString::fromLatin1(text));
  }
  auto* label = new QLabel(QStringLiteral("Compare &with"), this);
  label->setBuddy(against_);
  against_->setAccessibleName(QStringLiteral("Compare with"));
  choose_ =
      NewNamedButton("Choose...", "choose", "Choose the second table", this, &ChangesDock::Choose);
  second_ = new QLabel(this);
  second_->setTextFormat(Qt::PlainText);
  take_ = NewNamedButton("&Revert", "take",
                         "Take over the values there of the ticked rows, "
                         "or of the selected ones where none is ticked",
                         this, &ChangesDock::TakeChosen);
  take_all_ = NewNamedButton("Revert &All", "take-all", "Take over all values there", this,
                             &ChangesDock::TakeAll);
  copy_ = NewNamedButton("&Copy", "copy", "Copy the selected rows, or all where none is", this,
                         &ChangesDock::Copy);
  auto* top = new QHBoxLayout;
  top->addWidget(label);
  top->addWidget(against_);
  top->addWidget(choose_);
  top->addWidget(second_);
  top->addStretch(1);
  for (QPushButton* button : {take_, take_all_, copy_}) {
    top->addWidget(button);
  }
  return top;
}

void ChangesDock::MakeList() {
  list_ = new CListView(QStringLiteral("change-list"), QStringLiteral("Changes"), model_, this);
  const int width = fontMetrics().averageCharWidth();
  list_->setColumnWidth(ChangesModel::kCode, 16 * width);
  list_->setColumnWidth(ChangesModel::kMeaning, 46 * width);
  list_->setColumnWidth(ChangesModel::kThere, 34 * width);
  NewAction("&Edit...", QKeySequence(), &ChangesDock::Edit);
  NewAction("&Revert", QKeySequence(), &ChangesDock::TakeChosen);
  NewAction("&Copy", QKeySequence::Copy, &ChangesDock::Copy);
  list_->setContextMenuPolicy(Qt::ActionsContextMenu);
}

QWidget* ChangesDock::MakeContent() {
  auto* content = new QWidget(this);
  auto* layout = new QVBoxLayout(content);
  layout->addLayout(MakeTop());
  MakeList();
  layout->addWidget(list_, 1);
  summary_ = new QLabel(this);
  summary_->setObjectName(QStringLiteral("change-summary"));
  summary_->setTextFormat(Qt::PlainText);
  summary_->setWordWrap(true);
  layout->addWidget(summary_);
  return content;
}

void ChangesDock::ShowAgainst(Against against) {
  {
    const QSignalBlocker once(against_);
    against_->setCurrentIndex(static_cast<int>(against));
  }
  show();
  raise();
  OnAgainst();
  list_->setFocus();
}

void ChangesDock::SetSecond(const QString& path) {
  comparison_.SetSecond(PathFromText(path));
  second_->setText(QFileInfo(path).fileName());
  second_->setToolTip(path);
}

void ChangesDock::SetFile(const QString& path) {
  comparison_.SetFile(path.isEmpty() ? std::filesystem::path() : PathFromText(path));
}

void ChangesDock::OnAgainst() {
  comparison_.CompareWith(static_cast<Against>(against_->currentIndex()));
  model_->ClearTicks();
  Follow();
}

void ChangesDock::Choose() {
  CFileDialog dialog(QStringLiteral("Compare With"),
                     "Tbl Files (*.tbl)|*.tbl|All Files (*.*)|*.*||", QString(), this);
  dialog.setFileMode(QFileDialog::ExistingFile);
  if (dialog.ExecRemembering(kFolder)) {
    SetSecond(dialog.Chosen());
  }
  Follow();
}

void ChangesDock::Follow() {
  if (!isVisible()) {
    return;
  }
  const int current = list_->currentIndex().row();
  const ParamKey key = current < 0 ? ParamKey() : model_->Row(current).key;
  const Result<> updated = comparison_.Update();
  model_->SetRows(comparison_.Rows());
  KeepRow(key);
  const bool is_second = comparison_.With() == Against::kTable;
  choose_->setVisible(is_second);
  second_->setVisible(is_second);
  take_->setText(is_second ? QStringLiteral("Take &Over") : QStringLiteral("&Revert"));
  take_all_->setText(is_second ? QStringLiteral("Take &All") : QStringLiteral("Revert &All"));
  summary_->setText(QString::fromStdString(updated ? comparison_.Text() : updated.Message()));
  EnableButtons();
}

// Where the row of the key went; else the one that has its place.
void ChangesDock::KeepRow(ParamKey key) {
  if (list_->currentIndex().isValid() || model_->rowCount() == 0) {
    return;
  }
  const auto& rows = model_->Rows();
  const auto found = std::find_if(rows.begin(), rows.end(),
                                  [key](const ChangeRow& row) { return row.key == key; });
  list_->setCurrentIndex(
      model_->index(found == rows.end() ? 0 : static_cast<int>(found - rows.begin()), 0));
}

std::vector<int> ChangesDock::Chosen() const {
  std::vector<int> rows = model_->Ticked();
  return rows.empty() ? list_->SelectedRows() : rows;
}

void ChangesDock::Take(const std::vector<int>& rows) {
  Values values;
  for (const int row : rows) {
    if (model_->Row(row).can_take) {
      values.emplace_back(model_->Row(row).key, model_->Row(row).value);
    }
  }
  if (values.empty()) {
    emit told(QStringLiteral("None of these rows has a value that can be taken over"));
    return;
  }
  const bool is_second = comparison_.With() == Against::kTable;
  model_->ClearTicks();
  emit takeWanted(is_second ? QStringLiteral("Take Over") : QStringLiteral("Revert"), values);
}

void ChangesDock::TakeChosen() { Take(Chosen()); }

void ChangesDock::TakeAll() {
  std::vector<int> rows;
  for (int row = 0; row < model_->rowCount(); ++row) {
    rows.push_back(row);
  }
  Take(rows);
}

void ChangesDock::Copy() {
  const std::vector<int> selected = list_->SelectedRows();
  std::vector<ChangeRow> rows;
  for (const int row : selected) {
    rows.push_back(model_->Row(row));
  }
  QApplication::clipboard()->setText(
      QString::fromStdString(AsText(rows.empty() ? model_->Rows() : rows)));
}

void ChangesDock::Edit() {
  const int row = list_->currentIndex().row();
  if (row >= 0 && !model_->Row(row).key.IsEmpty()) {
    emit editWanted(model_->Row(row).key);
  }
}

void ChangesDock::EnableButtons() {
  const auto can_take = [this](const std::vector<int>& rows) {
    return std::any_of(rows.begin(), rows.end(),
                       [this](int row) { return model_->Row(row).can_take; });
  };
  take_->setEnabled(can_take(Chosen()));
  take_all_->setEnabled(std::any_of(model_->Rows().begin(), model_->Rows().end(),
                                    [](const ChangeRow& row) { return row.can_take; }));
  copy_->setEnabled(model_->rowCount() > 0);
}

void ChangesDock::showEvent(QShowEvent* event) {
  QDockWidget::showEvent(event);
  Follow();
}

}  // namespace orvane
