// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_MAP_DOCK_H_
#define ORVANE_EDITORS_WIDGETS_MAP_DOCK_H_

#include <QDockWidget>

#include "editors/widgets/spread_map_view.h"
#include "table/param_table.h"

namespace orvane {

/// "Map": the spread of a table beside it.
class MapDock : public QDockWidget {
  Q_OBJECT

 public:
  /// The table must outlive the dock.
  MapDock(const ParamTable* table, QWidget* parent);

  /// The table has changed. Does nothing while nobody sees the dock.
  void Follow();
  SpreadMapView* View() const { return view_; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  const ParamTable* table_;
  SpreadMapView* view_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_MAP_DOCK_H_
