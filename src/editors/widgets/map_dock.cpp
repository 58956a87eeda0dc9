// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/map_dock.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace orvane {

MapDock::MapDock(const ParamTable* table, QWidget* parent)
    : QDockWidget(QStringLiteral("Map"), parent), table_(table), view_(new SpreadMapView(this)) {
  setObjectName(QStringLiteral("map-dock"));
  auto* content = new QWidget(this);
  auto* save = new QPushButton(QStringLiteral("Save &Picture..."), content);
  save->setObjectName(QStringLiteral("save-map"));
  connect(save, &QPushButton::clicked, view_, &SpreadMapView::AskToSave);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(save);
  auto* layout = new QVBoxLayout(content);
  layout->addWidget(view_, 1);
  layout->addLayout(buttons);
  setWidget(content);
}

void MapDock::Follow() {
  if (isVisible()) {
    view_->SetMap(MapOf(*table_));
  }
}

void MapDock::showEvent(QShowEvent* event) {
  QDockWidget::showEvent(event);
  Follow();
}

}  // namespace orvane
