// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_WIDGETS_SURVEY_OVERVIEW_H_
#define ORVANE_SURVEY_WIDGETS_SURVEY_OVERVIEW_H_

#include <QObject>
#include <QThreadPool>
#include <memory>
#include <optional>
#include <vector>

#include "survey/coverage.h"
#include "survey/site_map.h"
#include "survey/survey_scan.h"

namespace orvane {

/// What is shown of all rows at once; made on a thread of its own, since it takes tens of
/// milliseconds for tens of thousands of rows.
class SurveyOverview : public QObject {
  Q_OBJECT

 public:
  explicit SurveyOverview(QObject* parent);
  /// Waits for what is being made.
  ~SurveyOverview() override;

  /// Makes those of these rows; of several that wait, of the last alone.
  void Make(std::vector<SharedRow> rows);
  /// What is under way is of no use any more.
  void Forget();
  bool IsBusy() const { return is_running_ || waiting_.has_value(); }

  struct Made {
    Coverage coverage;
    SiteMap sites;
  };

 signals:
  void came(const std::shared_ptr<orvane::SurveyOverview::Made>& made);

 private:
  void Run(std::vector<SharedRow> rows);
  void Take(const std::shared_ptr<Made>& made, unsigned turn);

  QThreadPool pool_;
  unsigned turn_ = 0;
  bool is_running_ = false;
  std::optional<std::vector<SharedRow>> waiting_;
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_WIDGETS_SURVEY_OVERVIEW_H_
