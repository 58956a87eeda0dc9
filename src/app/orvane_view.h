// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_ORVANE_VIEW_H_
#define ORVANE_APP_ORVANE_VIEW_H_

#include <QGridLayout>
#include <QLabel>
#include <QScrollArea>
#include <QString>
#include <QTimer>
#include <array>
#include <span>
#include <vector>

#include "app/glance_card.h"
#include "app/orvane_doc.h"
#include "app/start_panel.h"
#include "check/finding.h"
#include "editors/widgets/spread_map_view.h"
#include "editors/widgets/timeline_bar.h"
#include "stepping/schedule_file.h"

namespace orvane {

/// The view of the document. While no waveform and no calibration is shown, it shows the open table
/// at a glance and follows every edit: groups of values that open their dialogs, what the check
/// found, the map and the timeline. Beside a table that is new and untouched it says how to begin.
class COrvaneView : public QScrollArea {
  Q_OBJECT

 public:
  /// What can be opened from here; the first five in the order of `SummarizeTable()`.
  enum class Part { kMethod, kBoxes, kTimes, kGains, kSurvey, kCheck, kMap, kTimeline };
  Q_ENUM(Part)

  COrvaneView(COrvaneDoc* doc, QWidget* parent);

  /// The table has changed, or perhaps the schedule file that it names.
  void Follow();
  /// What the check found: counts, the worst of it, marks on the map. They belong to the table as
  /// it is.
  void SetFindings(const QString& counts, std::span<const Finding> findings,
                   const std::vector<MapMark>& marks);
  /// What the card of a part opens.
  void SetOpens(Part part, const QString& what) { CardOf(part)->SetOpens(what); }
  /// Gone once a file is opened or something is edited, until it is shown again.
  void ShowStart(bool is_shown);
  /// The schedule file that the table names; null without one. Valid until the next call.
  const ScheduleFile* Steps();
  StartPanel* Start() const { return start_; }

 signals:
  void opened(orvane::COrvaneView::Part part);

 protected:
  void changeEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  static constexpr int kGroups = 5;
  static constexpr int kColumns = 3;

  void Build();
  QWidget* NewPage();
  QLayout* NewHead(QWidget* page);
  void AddParts();
  void AddCheck();
  void AddMap();
  void AddTimeline();
  void ArrangeColumns();
  void PlaceStart(bool is_beside);
  void OrderTab();
  void HideStart();
  void AddToColumn(int column, QWidget* widget, int stretch = 0);
  GlanceCard* CardOf(Part part) const { return cards_[static_cast<std::size_t>(part)]; }
  void ShowFile();
  void ShowTimeline();
  bool IsNotInFile(const SummaryLine& line) const;
  QString NotInFileText() const;

  COrvaneDoc* doc_;
  QLabel* name_ = nullptr;
  QLabel* file_ = nullptr;
  QGridLayout* grid_ = nullptr;
  std::array<QWidget*, kColumns> columns_{};
  std::array<GlanceCard*, 8> cards_{};  // by part
  std::array<LinesCard*, kGroups> groups_{};
  StartPanel* start_ = nullptr;
  QLabel* counts_ = nullptr;
  QLabel* worst_ = nullptr;
  SpreadMapView* map_ = nullptr;
  TimelineBar* timeline_ = nullptr;
  ScheduleFileMemory schedule_;
  QTimer minute_;  // a start that was to come may be in the past now
};

}  // namespace orvane

#endif  // ORVANE_APP_ORVANE_VIEW_H_
