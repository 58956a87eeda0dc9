// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/survey_overview.h"

#include <utility>

namespace orvane {

SurveyOverview::SurveyOverview(QObject* parent) : QObject(parent) { pool_.setMaxThreadCount(1); }

SurveyOverview::~SurveyOverview() { pool_.waitForDone(); }

void SurveyOverview::Make(std::vector<SharedRow> rows) {
  if (is_running_) {
    waiting_ = std::move(rows);
  } else {
    Run(std::move(rows));
  }
}

void SurveyOverview::Forget() {
  ++turn_;
  waiting_.reset();
}

void SurveyOverview::Run(std::vector<SharedRow> rows) {
  is_running_ = true;
  pool_.start([this, rows = std::move(rows), turn = turn_] {
    auto made = std::make_shared<Made>(Made{CoverageOf(rows), SitesOf(rows)});
    QMetaObject::invokeMethod(
        this, [this, made, turn] { Take(made, turn); }, Qt::QueuedConnection);
  });
}

void SurveyOverview::Take(const std::shared_ptr<Made>& made, unsigned turn) {
  is_running_ = false;
  if (turn == turn_) {
    emit came(made);
  }
  if (auto next = std::exchange(waiting_, std::nullopt); next && !is_running_) {
    Run(std::move(*next));
  }
}

}  // namespace orvane
