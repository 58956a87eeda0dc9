// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/findings_pane.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QToolButton>
#include <array>

#include "check/widgets/severity_sign.h"

namespace orvane {
namespace {

QString Text(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string_view CellOf(const SurveyFinding& finding, FindingColumn column) {
  switch (column) {
    case FindingColumn::kSeverity:
      return SeverityName(finding.severity);
    case FindingColumn::kBox:
      return finding.box;
    case FindingColumn::kFile:
      return finding.path;
    case FindingColumn::kWhat:
      break;
  }
  return finding.sentence;
}

}  // namespace

void SurveyFindingsModel::Change(const std::function<void(FindingsList*)>& change) {
  beginResetModel();
  change(&list_);
  endResetModel();
}

const SurveyFinding& SurveyFindingsModel::Of(const QModelIndex& index) const {
  return list_.At(list_.Shown()[static_cast<std::size_t>(index.row())]);
}

int SurveyFindingsModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(list_.Shown().size());
}

int SurveyFindingsModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : kFindingColumns;
}

QVariant SurveyFindingsModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) {
    return {};
  }
  const auto column = static_cast<FindingColumn>(index.column());
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) {
    return Text(CellOf(Of(index), column));
  }
  const bool has_sign = role == Qt::DecorationRole && column == FindingColumn::kSeverity;
  return has_sign ? QVariant(SignOf(Of(index).severity)) : QVariant();
}

QVariant SurveyFindingsModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const bool is_title = orientation == Qt::Horizontal && role == Qt::DisplayRole && section >= 0 &&
                        section < kFindingColumns;
  return is_title ? QVariant(Text(TitleOf(static_cast<FindingColumn>(section)))) : QVariant();
}

void SurveyFindingsModel::sort(int column, Qt::SortOrder order) {
  Change([&](FindingsList* list) {
    list->SetOrder(column < 0 ? std::nullopt : std::optional(static_cast<FindingColumn>(column)),
                   order == Qt::DescendingOrder);
  });
}

FindingsPane::FindingsPane(QWidget* parent)
    : QTreeView(parent), model_(new SurveyFindingsModel(this)) {
  setObjectName(QStringLiteral("survey-findings"));
  setAccessibleName(QStringLiteral("Findings"));
  setModel(model_);
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setAlternatingRowColors(true);
  setTabKeyNavigation(false);
  const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize);
  setIconSize(QSize(icon, icon));
  const int letter = fontMetrics().averageCharWidth();
  constexpr std::array<int, kFindingColumns> kLetters = {18, 8, 28, 60};
  for (int column = 0; column < kFindingColumns; ++column) {
    header()->resizeSection(column, letter * kLetters[static_cast<std::size_t>(column)]);
  }
  header()->setSortIndicatorClearable(true);  // back to the order of the rules
  header()->setSortIndicator(-1, Qt::AscendingOrder);
  setSortingEnabled(true);
  connect(this, &QTreeView::activated, this, &FindingsPane::Choose);
  connect(this, &QTreeView::clicked, this, &FindingsPane::Choose);
}

QWidget* FindingsPane::MakeTools(QWidget* parent) {
  auto* tools = new QWidget(parent);
  severity_ = new QComboBox(tools);
  severity_->setObjectName(QStringLiteral("findings-severity"));
  severity_->setAccessibleName(QStringLiteral("Severity"));
  severity_->addItems({QStringLiteral("All"), QStringLiteral("Errors"), QStringLiteral("Warnings"),
                       QStringLiteral("Hints")});
  connect(severity_, &QComboBox::currentIndexChanged, this, &FindingsPane::Refilter);
  filter_ = new QLineEdit(tools);
  filter_->setObjectName(QStringLiteral("findings-filter"));
  filter_->setPlaceholderText(QStringLiteral("Filter the findings"));
  filter_->setAccessibleName(QStringLiteral("Filter of the findings"));
  filter_->setClearButtonEnabled(true);
  for (auto* button : filter_->findChildren<QToolButton*>()) {
    button->setAccessibleName(QStringLiteral("Clear"));
  }
  connect(filter_, &QLineEdit::textChanged, this, &FindingsPane::Refilter);
  auto* row = new QHBoxLayout(tools);
  row->setContentsMargins({});
  row->addWidget(severity_);
  row->addWidget(filter_);
  setTabOrder(severity_, filter_);
  setTabOrder(filter_, this);  // above it, though made after it
  return tools;
}

void FindingsPane::SetFindings(const SharedFindings& findings, std::span<const ScanNote> notes) {
  model_->Change([&](FindingsList* list) { list->Set(findings, notes); });
  emit filtered();
}

void FindingsPane::Refilter() {
  const int choice = severity_->currentIndex();
  model_->Change([&](FindingsList* list) {
    list->SetFilter(filter_->text().toStdString(),
                    choice <= 0 ? std::nullopt : std::optional(static_cast<Severity>(choice - 1)));
  });
  emit filtered();
}

void FindingsPane::Choose(const QModelIndex& index) {
  if (index.isValid()) {
    emit chosen(model_->Of(index).path);
  }
}

}  // namespace orvane
