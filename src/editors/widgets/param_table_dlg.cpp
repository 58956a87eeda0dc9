// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/param_table_dlg.h"

#include <QHBoxLayout>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>
#include <utility>

#include "base/number_text.h"
#include "ui/byte_text.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

QLabel* NewLabel(const QString& text, QWidget* buddy, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setBuddy(buddy);
  buddy->setAccessibleName(text);
  return label;
}

}  // namespace

CParamTableDlg::CParamTableDlg(ParamTable* table, QWidget* parent,
                               std::vector<ParamKey> not_in_file, Explain explain)
    : QDialog(parent), rows_(table, std::move(not_in_file), std::move(explain)) {
  setWindowTitle(QStringLiteral("Parameter Table"));
  setObjectName(QStringLiteral("134"));
  ResizeWithinScreen(this, QSize(rows_.HasMeanings() ? 1180 : 860, 600));
  CreateControls();
  FillGrid();
  LayOut();
  connect(lookup_button_, &QPushButton::clicked, this, &CParamTableDlg::OnLookup);
  connect(sort_, &QCheckBox::toggled, this, &CParamTableDlg::OnSortByCode);
  connect(filter_, &QLineEdit::textChanged, this, &CParamTableDlg::OnFilter);
  connect(grid_, &CGridCtrl::cellEdited, this, &CParamTableDlg::OnEndEdit);
  connect(grid_, &CGridCtrl::focusCellChanged, this, &CParamTableDlg::ShowDetail);
  connect(close_, &QPushButton::clicked, this, &QDialog::accept);
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
  grid_ = new CGridCtrl(this);
  grid_->setObjectName(QString::number(kGrid));
  grid_->setAccessibleName(QStringLiteral("Parameters"));
  // Return goes to what the filter leaves; it does not close.
  connect(filter_, &QLineEdit::returnPressed, grid_, qOverload<>(&QWidget::setFocus));
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
  new QShortcut(QKeySequence(QStringLiteral("Ctrl+L")), lookup_, [this] { lookup_->setFocus(); });
  new QShortcut(QKeySequence(QStringLiteral("Ctrl+F")), filter_, [this] { filter_->setFocus(); });
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
  grid_->SetColumnWidth(kNumberColumn, 70);
  grid_->SetColumnWidth(kPermissionColumn, 120);
  grid_->SetColumnWidth(kValueColumn, 120);
  if (rows_.HasMeanings()) {
    grid_->SetColumnWidth(kPermissionColumn, 160);
    grid_->SetColumnWidth(kMeaningColumn, 400);
  }
  grid_->ExpandColumnsToFit();
  grid_->SetBeginEdit([this](int row, int column) {
    return column == kValueColumn && rows_.CanEdit(OrdinalAt(row));
  });
  grid_->SetDragEnabled(true);
}

void CParamTableDlg::LayOut() {
  auto* top = new QHBoxLayout;
  top->addWidget(NewLabel(QStringLiteral("Lookup by code"), lookup_, this));
  top->addWidget(lookup_);
  top->addWidget(lookup_button_);
  top->addSpacing(16);
  top->addWidget(NewLabel(QStringLiteral("Filter"), filter_, this));
  top->addWidget(filter_, 1);
  top->addSpacing(16);
  top->addWidget(sort_);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(detail_, 1);
  bottom->addWidget(close_, 0, Qt::AlignBottom);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
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
  ShowDetail(row);
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
  ShowAgain(rows_.ReadAgain());
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
    filter_->clear();  // it hides what was asked for
  }
  grid_->SetFocusCell(row, kValueColumn);
  grid_->EnsureVisible(row, kValueColumn);
  grid_->setFocus();
}

void CParamTableDlg::ShowMeaning(int row) {
  if (rows_.HasMeanings()) {
    grid_->SetItemText(row, kMeaningColumn,
                       TextFromBytes(rows_.Cell(OrdinalAt(row), kMeaningColumn)));
  }
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

void CParamTableDlg::OnFilter(const QString& text) {
  const std::string filter = BytesFromText(text);
  std::vector<bool> visible(static_cast<std::size_t>(grid_->GetRowCount()), true);
  for (int row = 1; row < grid_->GetRowCount(); ++row) {
    visible[static_cast<std::size_t>(row)] = rows_.Matches(OrdinalAt(row), filter);
  }
  grid_->SetVisibleRows(visible);
  if (grid_->GetFocusCell().first < 0) {  // nothing matched before
    const auto first = std::find(visible.begin() + 1, visible.end(), true) - visible.begin();
    grid_->SetFocusCell(static_cast<int>(first), kValueColumn);
  }
}

void CParamTableDlg::ShowDetail(int row) {
  detail_->setText(TextFromBytes(rows_.Detail(OrdinalAt(row))));
}

}  // namespace orvane
