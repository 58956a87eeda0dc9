// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/site_map_pane.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "ui/list_item.h"
#include "ui/plot_theme.h"

namespace orvane {

SiteMapPane::SiteMapPane(QWidget* parent)
    : QWidget(parent), view_(new SpreadMapView(this)), names_(new QListWidget(this)) {
  view_->setObjectName(QStringLiteral("survey-map"));
  view_->setAccessibleName(QStringLiteral("Map of the sites"));
  constexpr int kLeastHeight = 80;
  view_->setMinimumHeight(kLeastHeight);
  names_->setObjectName(QStringLiteral("survey-sites"));
  names_->setAccessibleName(QStringLiteral("Sites"));
  names_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins({});
  layout->addWidget(view_, 2);
  layout->addWidget(names_, 1);
  connect(view_, &SpreadMapView::activated, this,
          [this](int item) { emit chosen(sites_.rows[static_cast<std::size_t>(item)]); });
  const auto choose = [this](const QListWidgetItem* item) {
    const auto row = static_cast<std::size_t>(names_->row(item));
    const std::size_t placed = sites_.rows.size();
    view_->ShowChosen(row < placed ? static_cast<int>(row) : -1);
    emit chosen(row < placed ? sites_.rows[row] : sites_.unplaced[row - placed].rows);
  };
  connect(names_, &QListWidget::itemActivated, this, choose);
  connect(names_, &QListWidget::itemClicked, this, choose);
  SetSites({});
}

void SiteMapPane::SetSites(SiteMap sites) {
  view_->ShowChosen(-1);
  sites_ = std::move(sites);
  view_->SetMap(sites_.map);
  names_->clear();
  const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
  const auto add = [this](const QString& text) {
    auto* item = OnlyShown(new QListWidgetItem(text, names_));
    item->setToolTip(text);
    return item;
  };
  for (const MapItem& site : sites_.map.items) {
    // As the map draws it.
    QPixmap swatch(size, size);
    swatch.fill(Qt::transparent);
    QPainter painter(&swatch);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(TraceColor(site.box - 1, palette()));
    painter.drawEllipse(QRectF(0, 0, size, size).adjusted(3, 3, -3, -3));
    painter.end();
    add(QString::fromLatin1(site.name) + QStringLiteral(": ") + QString::fromLatin1(site.owner))
        ->setIcon(QIcon(swatch));
  }
  for (const SiteMap::Unplaced& site : sites_.unplaced) {
    add(QString::fromStdString(site.text));
  }
  names_->setVisible(names_->count() > 0);
}

void SiteMapPane::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    SetSites(sites_);  // in the colours of the other theme
  }
}

void SiteMapPane::SetCurrent(std::optional<std::size_t> row) {
  const auto item = row ? sites_.ItemOf(*row) : std::nullopt;
  view_->ShowChosen(item ? static_cast<int>(*item) : -1);
  int name = item ? static_cast<int>(*item) : -1;
  for (std::size_t i = 0; row && !item && i < sites_.unplaced.size(); ++i) {
    const SiteRows& rows = sites_.unplaced[i].rows;
    if (std::binary_search(rows.begin(), rows.end(), *row)) {
      name = static_cast<int>(sites_.rows.size() + i);
    }
  }
  names_->setCurrentRow(name);
}

}  // namespace orvane
