// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_WIDGETS_SITE_MAP_PANE_H_
#define ORVANE_SURVEY_WIDGETS_SITE_MAP_PANE_H_

#include <QListWidget>
#include <QWidget>
#include <optional>

#include "editors/widgets/spread_map_view.h"
#include "survey/site_map.h"

namespace orvane {

/// The map of the sites, and beside it their names, those without a place last. A click or Return
/// on either chooses the site's recordings.
class SiteMapPane : public QWidget {
  Q_OBJECT

 public:
  explicit SiteMapPane(QWidget* parent);

  void SetSites(SiteMap sites);
  /// Marks the site of a recording; none: no site.
  void SetCurrent(std::optional<std::size_t> row);

 signals:
  void chosen(const orvane::SiteRows& rows);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  SiteMap sites_;
  SpreadMapView* view_;
  QListWidget* names_;
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_WIDGETS_SITE_MAP_PANE_H_
