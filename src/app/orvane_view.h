// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_ORVANE_VIEW_H_
#define ORVANE_APP_ORVANE_VIEW_H_

#include <QLabel>
#include <QScrollArea>
#include <QString>
#include <QTimer>
#include <vector>

#include "app/orvane_doc.h"
#include "editors/table_summary.h"
#include "editors/widgets/timeline_bar.h"

namespace orvane {

/// The view of the document. While no waveform and no calibration is shown, it shows the open table
/// at a glance and follows every edit.
class COrvaneView : public QScrollArea {
  Q_OBJECT

 public:
  COrvaneView(COrvaneDoc* doc, QWidget* parent);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Build();
  void OnUpdate();
  bool IsNotInFile(const SummaryLine& line) const;
  QString NotInFileText() const;

  COrvaneDoc* doc_;
  QLabel* name_ = nullptr;
  QLabel* file_ = nullptr;
  TimelineBar* timeline_ = nullptr;
  QTimer minute_;                // a start that was to come may be in the past now
  std::vector<QLabel*> values_;  // in the order of the summary's lines
};

}  // namespace orvane

#endif  // ORVANE_APP_ORVANE_VIEW_H_
