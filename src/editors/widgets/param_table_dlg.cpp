// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/param_table_dlg.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QSettings>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>
#include <initializer_list>
#include <utility>

#include "base/number_text.h"
#include "ui/byte_text.h"
#include "ui/flow_layout.h"
#include "ui/plot_theme.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

QLabel* NewLabel(const QString& text, QWidget* buddy, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setBuddy(buddy);
  buddy->setAccessibleName(text);
  return label;
}

constexpr auto kFavouritesSetting = "Raw Parameters/Favourites";

std::set<std::string> SavedFavourites() {
  std::set<std::string> keys;
  for (const QString& key : QSettings().value(QLatin1String(kFavouritesSetting)).toStringList()) {
    keys.insert(BytesFromText(key));
  }
  return keys;
}

void SaveFavourites(const std::set<std::string>& keys) {
  QStringList texts;
  for (const std::string& key : keys) {
    texts << TextFromBytes(key);
  }
  QSettings().setValue(QLatin1String(kFavouritesSetting), texts);
}

std::vector<GridChoice> ChoicesOf(const RawRow& row) {
  std::vector<GridChoice> choices;
  for (const RawChoice& choice : row.meaning.choices) {
    const QString value = TextFromBytes(choice.value);
    choices.push_back({value, value + QStringLiteral(": ") + TextFromBytes(choice.meaning)});
  }
  return choices;
}

}  // namespace

CParamTableDlg::CParamTableDlg(ParamTable* table, QWidget* parent,
                               std::vector<ParamKey> not_in_file, Explain explain,
                               const ParamTable* file)
    : QDialog(parent), rows_(table, std::move(not_in_file), std::move(explain), file) {
  rows_.SetFavourites(SavedFavourites());
  setWindowTitle(QStringLiteral("Parameter Table"));
  setObjectName(QStringLiteral("134"));
  ResizeWithinScreen(this, QSize(rows_.HasMeanings() ? 1180 : 860, 600));
  CreateControls();
  CreateGrid();
  FillGrid();
  LayOut();
  connect(lookup_button_, &QPushButton::clicked, this, &CParamTableDlg::OnLookup);
  connect(sort_, &QCheckBox::toggled, this, &CParamTableDlg::OnSortByCode);
  connect(filter_, &QLineEdit::textChanged, this, &CParamTableDlg::OnFilter);
  connect(grid_, &CGridCtrl::cellEdited, this, &CParamTableDlg::OnEndEdit);
  connect(switches_, &RawSwitches::changed, this, &CParamTableDlg::OnFilter);
  connect(grid_, &CGridCtrl::starToggled, this, &CParamTableDlg::OnStarToggled);
  connect(grid_, &CGridCtrl::focusCellChanged, this, &CParamTableDlg::OnFocusMoved);
  connect(close_, &QPushButton::clicked, this, &QDialog::accept);
  OnFilter();
  grid_->SetFocusCell(1, kValueColumn);
  grid_->setFocus();
}

void CParamTableDlg::CreateControls() {
  lookup_ = new QLineEdit(this);
  lookup_->setObjectName(QString::number(kLookup));
  lookup_->setMaxLength(static_cast<int>(kKeySize));
  lookup_->setValidator(new ByteTextValidator(lookup_));
  lookup_->setToolTip(QStringLiteral("Ctrl+L"));
  lookup_button_ = new QPushButton(QStringLiteral("Lookup"), this);
  lookup_button_->setObjectName(QString::number(kLookupButton));
  lookup_button_->setAutoDefault(false);
  connect(lookup_, &QLineEdit::returnPressed, this, &CParamTableDlg::OnLookup);
  filter_ = new QLineEdit(this);
  filter_->setObjectName(QStringLiteral("filter"));
  filter_->setPlaceholderText(rows_.HasMeanings()
                                  ? QStringLiteral("part of a code, value or meaning")
                                  : QStringLiteral("part of a code or value"));
  filter_->setToolTip(QStringLiteral("Ctrl+F"));
  filter_->setValidator(new ByteTextValidator(filter_));
  filter_->setClearButtonEnabled(true);
  for (auto* button : filter_->findChildren<QToolButton*>()) {
    button->setAccessibleName(QStringLiteral("Clear the filter"));
  }
  sort_ = new QCheckBox(QStringLiteral("Sort by code"), this);
  sort_->setObjectName(QString::number(kSortByCode));
  undo_ = NewStepButton("&Undo", "undo", "Ctrl+Z", &CParamTableDlg::undoWanted);
  redo_ = NewStepButton("&Redo", "redo", "Ctrl+Y|Ctrl+Shift+Z", &CParamTableDlg::redoWanted);
  switches_ = new RawSwitches(rows_.HasFile(), rows_.HasMeanings(), this);
  new QShortcut(QKeySequence(QStringLiteral("Ctrl+L")), lookup_, [this] { lookup_->setFocus(); });
  new QShortcut(QKeySequence(QStringLiteral("Ctrl+F")), filter_, [this] { filter_->setFocus(); });
}

// The keys are heard without an edit to undo, too: to say so.
QPushButton* CParamTableDlg::NewStepButton(const char* text, const char* name, const char* keys,
                                           void (CParamTableDlg::*wanted)()) {
  auto* button = new QPushButton(QString::fromLatin1(text), this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  button->setEnabled(false);
  const QStringList all = QString::fromLatin1(keys).split(QLatin1Char('|'));
  button->setToolTip(QStringLiteral("Of the edits made in this window (%1)").arg(all.front()));
  button->setAccessibleDescription(button->toolTip());
  connect(button, &QPushButton::clicked, this, wanted);
  for (const QString& key : all) {
    new QShortcut(QKeySequence(key), this, [this, button, wanted] { Step(button, wanted); });
  }
  return button;
}

void CParamTableDlg::Step(const QPushButton* button, void (CParamTableDlg::*wanted)()) {
  if (button->isEnabled()) {
    (this->*wanted)();
    return;
  }
  ShowLine(button == undo_ ? QStringLiteral("Nothing more to undo here")
                           : QStringLiteral("Nothing more to redo here"),
           false);
  Announce();
}

void CParamTableDlg::ShowSteps(bool can_undo, bool can_redo) {
  // A disabled button would pass the focus to the next one.
  for (const auto& [button, is_enabled] : {std::pair(undo_, can_undo), {redo_, can_redo}}) {
    if (!is_enabled && button->hasFocus()) {
      grid_->setFocus();
    }
    button->setEnabled(is_enabled);
  }
}

void CParamTableDlg::CreateGrid() {
  grid_ = new CGridCtrl(this);
  grid_->setObjectName(QString::number(kGrid));
  grid_->setAccessibleName(QStringLiteral("Parameters"));
  if (rows_.HasMeanings()) {
    auto* favourite = new QAction(QStringLiteral("&Favourite"), grid_);
    favourite->setObjectName(QStringLiteral("favourite"));
    favourite->setShortcut(QKeySequence(QStringLiteral("Ctrl+D")));
    favourite->setShortcutVisibleInContextMenu(true);
    favourite->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(favourite, &QAction::triggered, this, &CParamTableDlg::ToggleFavourite);
    grid_->addAction(favourite);
  }
  // Return goes to what the filter leaves; it does not close.
  connect(filter_, &QLineEdit::returnPressed, grid_, qOverload<>(&QWidget::setFocus));
  caution_ = new QLabel(this);
  caution_->setObjectName(QStringLiteral("caution"));
  caution_->setTextFormat(Qt::PlainText);
  caution_->setWordWrap(true);
  caution_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  detail_ = new QLabel(this);
  detail_->setObjectName(QStringLiteral("detail"));
  detail_->setTextFormat(Qt::PlainText);
  detail_->setWordWrap(true);
  detail_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  detail_->setMinimumHeight(2 * detail_->fontMetrics().lineSpacing());
  detail_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  close_ = new QPushButton(QStringLiteral("Close"), this);
  close_->setObjectName(QStringLiteral("1"));
  close_->setAutoDefault(false);  // made last, as the tab order goes

  // Values are bytes: what is no Latin-1 character cannot be stored.
  grid_->SetEditValidator(new ByteTextValidator(this));
}

void CParamTableDlg::FillGrid() {
  std::vector<std::vector<QString>> texts;
  texts.reserve(static_cast<std::size_t>(rows_.Count()) + 1);
  std::vector<QString> header;
  for (const std::string_view name : kRawColumnNames) {
    header.push_back(TextFromBytes(name));
  }
  if (rows_.HasMeanings()) {
    header.push_back(TextFromBytes(kMeaningName));
  }
  texts.push_back(header);
  for (int ordinal = 1; ordinal <= rows_.Count(); ++ordinal) {
    auto& row = texts.emplace_back();
    for (int column = 0; column < static_cast<int>(header.size()); ++column) {
      row.push_back(TextFromBytes(rows_.Cell(ordinal, static_cast<RawColumn>(column))));
    }
  }
  grid_->SetTexts(texts);
  grid_->SetFixedRowCount(1);
  DressRows();
  SetWidths();
  grid_->SetBeginEdit([this](int row, int column) {
    return column == kValueColumn && rows_.CanEdit(OrdinalAt(row));
  });
  grid_->SetDragEnabled(true);
}

void CParamTableDlg::DressRows() {
  for (int ordinal = 1; rows_.HasMeanings() && ordinal <= rows_.Count(); ++ordinal) {
    const RawRow& row = rows_.Row(ordinal);
    if (!row.meaning.choices.empty()) {
      static_cast<CGridCell*>(grid_->GetCell(ordinal, kValueColumn))->SetCodes(ChoicesOf(row));
    }
    CGridCellBase* meaning = grid_->GetCell(ordinal, kMeaningColumn);
    meaning->SetStar(rows_.IsFavourite(ordinal));
    const QString caution = TextFromBytes(rows_.Caution(ordinal));
    meaning->SetWarning(caution);
    grid_->GetCell(ordinal, kValueColumn)->SetWarning(caution);
  }
}

void CParamTableDlg::SetWidths() {
  grid_->SetColumnWidth(kNumberColumn, 70);
  grid_->SetColumnWidth(kPermissionColumn, 120);
  grid_->SetColumnWidth(kValueColumn, 120);
  if (rows_.HasMeanings()) {
    grid_->SetColumnWidth(kPermissionColumn, 160);
    grid_->SetColumnWidth(kMeaningColumn, 400);
  }
  grid_->ExpandColumnsToFit();
}

void CParamTableDlg::LayOut() {
  const auto row = [this](std::initializer_list<QWidget*> widgets) {
    auto* group = new QWidget(this);
    auto* layout = new QHBoxLayout(group);
    layout->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget : widgets) {
      layout->addWidget(widget);
    }
    return group;
  };
  auto* top = new FlowLayout;
  top->addWidget(
      row({NewLabel(QStringLiteral("Lookup by code"), lookup_, this), lookup_, lookup_button_}));
  QWidget* filter = row({NewLabel(QStringLiteral("Filter"), filter_, this), filter_});
  filter->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  top->addWidget(filter);
  for (QWidget* widget : std::initializer_list<QWidget*>{sort_, undo_, redo_}) {
    top->addWidget(widget);
  }
  auto* lines = new QVBoxLayout;
  lines->addWidget(caution_);
  lines->addWidget(detail_, 1);
  auto* bottom = new QHBoxLayout;
  bottom->addLayout(lines, 1);
  bottom->addWidget(close_, 0, Qt::AlignBottom);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(switches_);
  layout->addWidget(grid_, 1);
  layout->addLayout(bottom);
}

void CParamTableDlg::done(int result) {
  grid_->CommitEdit();
  QDialog::done(result);
}

int CParamTableDlg::OrdinalAt(int row) const {
  return ParseInt(BytesFromText(grid_->GetItemText(row, kNumberColumn))).value_or(0);
}

void CParamTableDlg::OnEndEdit(int row) {
  const int ordinal = OrdinalAt(row);
  const std::vector<int> partners =
      rows_.EndEdit(ordinal, BytesFromText(grid_->GetItemText(row, kValueColumn)));
  ShowMeaning(row);
  Mark(row);
  ShowAgain(partners);
  edited_ = ordinal;
  moves_left_ = grid_->GetFocusCell().first == row ? 1 : 0;
  ShowDetail(row);
  Announce();
  emit edited();
}

void CParamTableDlg::ShowAgain(const std::vector<int>& ordinals) {
  for (int row = 1; !ordinals.empty() && row < grid_->GetRowCount(); ++row) {
    const int ordinal = OrdinalAt(row);
    if (std::find(ordinals.begin(), ordinals.end(), ordinal) != ordinals.end()) {
      grid_->SetItemText(row, kValueColumn, TextFromBytes(rows_.Row(ordinal).value));
      ShowMeaning(row);
      Mark(row);
    }
  }
}

void CParamTableDlg::Mark(int row) {
  for (const int column : {kCodeColumn, kValueColumn}) {
    grid_->SetItemMarked(row, column, rows_.IsChanged(OrdinalAt(row)));
  }
}

void CParamTableDlg::Refresh() {
  const std::vector<int> changed = rows_.ReadAgain();
  edited_ = changed.empty() ? edited_ : 0;
  ShowAgain(changed);
  if (!changed.empty()) {  // undone: to be seen
    GoTo(rows_.Row(changed.front()).key);
  }
  ShowDetail(grid_->GetFocusCell().first);
}

void CParamTableDlg::GoTo(ParamKey key) {
  const int ordinal = rows_.OrdinalOf(key);
  for (int row = 1; row < grid_->GetRowCount(); ++row) {
    if (OrdinalAt(row) == ordinal) {
      FocusRow(row);
      return;
    }
  }
}

void CParamTableDlg::FocusRow(int row) {
  if (!grid_->IsRowVisible(row)) {
    ShowAllRows();  // what was asked for is among them
  }
  grid_->SetFocusCell(row, kValueColumn);
  grid_->EnsureVisible(row, kValueColumn);
  grid_->setFocus();
}

void CParamTableDlg::ShowMeaning(int row) {
  const QString caution = TextFromBytes(rows_.Caution(OrdinalAt(row)));
  grid_->SetItemWarning(row, kValueColumn, caution);
  if (rows_.HasMeanings()) {
    grid_->SetItemText(row, kMeaningColumn,
                       TextFromBytes(rows_.Cell(OrdinalAt(row), kMeaningColumn)));
    grid_->SetItemWarning(row, kMeaningColumn, caution);
  }
}

void CParamTableDlg::ToggleFavourite() {
  if (const int row = grid_->GetFocusCell().first; row > 0) {
    grid_->SetItemStar(row, kMeaningColumn, !rows_.IsFavourite(OrdinalAt(row)));
    OnStarToggled(row, kMeaningColumn);
  }
}

// Of the other row of a duplicated key too.
void CParamTableDlg::OnStarToggled(int row, int column) {
  const int ordinal = OrdinalAt(row);
  rows_.SetFavourite(ordinal, grid_->GetCell(row, column)->GetStar() == true);
  for (int other = 1; other < grid_->GetRowCount(); ++other) {
    if (rows_.Row(OrdinalAt(other)).key == rows_.Row(ordinal).key) {
      grid_->SetItemStar(other, column, rows_.IsFavourite(ordinal));
    }
  }
  SaveFavourites(rows_.Favourites());
}

void CParamTableDlg::ShowAllRows() {
  filter_->clear();
  switches_->SwitchAllOff();
}

void CParamTableDlg::OnLookup() {
  const QString code = lookup_->text();
  for (int row = 1; row < grid_->GetRowCount(); ++row) {
    if (EqualsWithoutCase(BytesFromText(grid_->GetItemText(row, kCodeColumn)),
                          BytesFromText(code))) {
      FocusRow(row);
      return;
    }
  }
}

void CParamTableDlg::OnSortByCode(bool by_code) {
  if (by_code) {
    grid_->SortTextItems(kCodeColumn, true);
  } else {
    const auto by_number = [](const QString& a, const QString& b) {
      return ParseIntPrefix(BytesFromText(a)) < ParseIntPrefix(BytesFromText(b));
    };
    grid_->SortItems(by_number, kNumberColumn, true);
  }
}

void CParamTableDlg::OnFilter() {
  const std::string filter = BytesFromText(filter_->text());
  const unsigned switches = switches_->On();
  std::vector<bool> visible(static_cast<std::size_t>(grid_->GetRowCount()), true);
  for (int row = 1; row < grid_->GetRowCount(); ++row) {
    visible[static_cast<std::size_t>(row)] = rows_.Matches(OrdinalAt(row), filter, switches);
  }
  grid_->SetVisibleRows(visible);
  switches_->ShowCount(static_cast<int>(std::count(visible.begin() + 1, visible.end(), true)),
                       rows_.Count());
  if (grid_->GetFocusCell().first < 0) {  // nothing matched before
    const auto first = std::find(visible.begin() + 1, visible.end(), true) - visible.begin();
    grid_->SetFocusCell(static_cast<int>(first), kValueColumn);
  }
}

void CParamTableDlg::OnFocusMoved(int row) {
  if (--moves_left_ < 0) {
    edited_ = 0;
  }
  ShowDetail(row);
}

std::string CParamTableDlg::CautionLine(int ordinal) const {
  const std::string caution = ordinal > 0 ? rows_.Caution(ordinal) : std::string();
  const RawRow* row = caution.empty() ? nullptr : &rows_.Row(ordinal);
  return row == nullptr ? caution : row->key.Text() + "=" + row->value + ": " + caution;
}

// Of the value that was just typed, though Return has gone to the next row.
void CParamTableDlg::ShowDetail(int row) {
  const int ordinal = OrdinalAt(row);
  detail_->setText(TextFromBytes(rows_.Detail(ordinal)));
  const std::string of_edit = CautionLine(edited_);
  ShowLine(TextFromBytes(of_edit.empty() ? CautionLine(ordinal) : of_edit), true);
}

void CParamTableDlg::ShowLine(const QString& text, bool is_warning) {
  QPalette colors = palette();
  if (is_warning) {
    colors.setColor(QPalette::WindowText, WarningColor(colors));
  }
  caution_->setPalette(colors);
  caution_->setText(text);
  grid_->setAccessibleDescription(text);
}

void CParamTableDlg::Announce() {
  if (!caution_->text().isEmpty()) {
    QAccessibleEvent alert(caution_, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
  }
}

}  // namespace orvane
