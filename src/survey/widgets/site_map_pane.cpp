// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/site_map_pane.h"

#include <QHBoxLayout>

#include "ui/list_item.h"

namespace orvane {

SiteMapPane::SiteMapPane(QWidget* parent)
    : QWidget(parent), view_(new SpreadMapView(this)), unplaced_(new QListWidget(this)) {
  view_->setObjectName(QStringLiteral("survey-map"));
  view_->setAccessibleName(QStringLiteral("Map of the sites"));
  constexpr int kLeastHeight = 80;
  view_->setMinimumHeight(kLeastHeight);
  unplaced_->setObjectName(QStringLiteral("survey-unplaced"));
  unplaced_->setAccessibleName(QStringLiteral("Sites that are not on the map"));
  unplaced_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(view_, 2);
  layout->addWidget(unplaced_, 1);
  connect(view_, &SpreadMapView::activated, this,
          [this](int item) { emit chosen(sites_.rows[static_cast<std::size_t>(item)]); });
  const auto choose = [this](const QListWidgetItem* item) {
    emit chosen(sites_.unplaced[static_cast<std::size_t>(unplaced_->row(item))].rows);
  };
  connect(unplaced_, &QListWidget::itemActivated, this, choose);
  connect(unplaced_, &QListWidget::itemClicked, this, choose);
  SetSites({});
}

void SiteMapPane::SetSites(SiteMap sites) {
  view_->ShowChosen(-1);
  sites_ = std::move(sites);
  view_->SetMap(sites_.map);
  unplaced_->clear();
  for (const SiteMap::Unplaced& site : sites_.unplaced) {
    auto* item = OnlyShown(new QListWidgetItem(QString::fromStdString(site.text), unplaced_));
    item->setToolTip(item->text());
  }
  unplaced_->setVisible(!sites_.unplaced.empty());
}

void SiteMapPane::SetCurrent(std::optional<std::size_t> row) {
  const auto item = row ? sites_.ItemOf(*row) : std::nullopt;
  view_->ShowChosen(item ? static_cast<int>(*item) : -1);
}

}  // namespace orvane
