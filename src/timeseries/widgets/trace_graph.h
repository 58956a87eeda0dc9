// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_TRACE_GRAPH_H_
#define ORVANE_TIMESERIES_WIDGETS_TRACE_GRAPH_H_

#include <qcustomplot.h>

namespace orvane {

/// A graph whose wide line is filled column by column of the screen's points: to outline one with
/// thousands of sharp turns takes seconds. What is printed is a line as it is.
class TraceGraph : public QCPGraph {
 public:
  using QCPGraph::QCPGraph;

 protected:
  void drawLinePlot(QCPPainter* painter, const QVector<QPointF>& lines) const override;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_TRACE_GRAPH_H_
