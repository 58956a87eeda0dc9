// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "base/number_text.h"
#include "survey/survey_report.h"

namespace orvane {
namespace {

constexpr double kLeft = 90;
constexpr double kWidth = 880;
constexpr double kLane = 24;
constexpr double kTop = 22;
constexpr std::int64_t kDay = 86400;

struct Lane {
  std::set<std::pair<std::int64_t, std::int64_t>> plans;
  std::vector<const SurveyRow*> recordings;
};

std::string Number(double value) { return FormatFixed(value, 1); }

class Picture {
 public:
  explicit Picture(SurveyRows rows) {
    for (const auto& row : rows) {
      if (row->IsRecording() && row->start > 0) {
        Lane& lane = lanes_[row->box];
        lane.recordings.push_back(row.get());
        Widen(row->start, row->end);
        AddPlan(*row, &lane);
      }
    }
  }

  std::string Text() {
    if (lanes_.empty()) {
      return {};
    }
    last_ = std::max(last_, first_ + 60);
    const double height = kTop + kLane * static_cast<double>(lanes_.size()) + 8;
    text_.append("<svg role=\"img\" viewBox=\"0 0 980 ").append(Number(height));
    text_.append("\" aria-label=\"When each box recorded\">\n");
    AddDays(height);
    double top = kTop;
    for (auto& [box, lane] : lanes_) {
      AddLane(box, lane, top);
      top += kLane;
    }
    return text_.append("</svg>\n");
  }

 private:
  void Widen(std::int64_t start, std::int64_t end) {
    first_ = first_ == 0 ? start : std::min(first_, start);
    last_ = std::max(last_, end);
  }

  // Boxes that a table names have a line too, which shows what they did not record.
  void AddPlan(const SurveyRow& row, Lane* lane) {
    const TableFacts* const table = row.table.get();
    if (table == nullptr || table->plan_start == 0 || table->plan_end <= table->plan_start) {
      return;
    }
    const std::pair plan(table->plan_start, table->plan_end);
    lane->plans.insert(plan);
    Widen(plan.first, plan.second);
    for (const PlannedBox& box : table->boxes) {
      lanes_[box.serial].plans.insert(plan);
    }
  }

  double At(std::int64_t time) const {
    return kLeft +
           kWidth * static_cast<double>(time - first_) / static_cast<double>(last_ - first_);
  }

  void AddBar(const char* kind, std::int64_t start, std::int64_t end, double top, double height,
              const std::string& title) {
    const double left = At(start);
    const double width = std::max(At(end) - left, 0.6);
    text_.append("<rect class=\"").append(kind).append("\" x=\"").append(Number(left));
    text_.append("\" y=\"").append(Number(top)).append("\" width=\"").append(Number(width));
    text_.append("\" height=\"").append(Number(height));
    text_.append(title.empty() ? "\"/>\n" : "\"><title>").append(title);
    text_.append(title.empty() ? "" : "</title></rect>\n");
  }

  void AddDays(double height) {
    constexpr std::int64_t kMostDays = 60;
    const std::int64_t days = (last_ - first_) / kDay + 1;
    const std::int64_t step = kDay * (1 + days / kMostDays);
    const std::int64_t labelled = step * (1 + (last_ - first_) / step / 10);
    for (std::int64_t day = (first_ + kDay - 1) / kDay * kDay; day <= last_; day += step) {
      const std::string x = Number(At(day));
      text_.append("<path class=\"day\" d=\"M").append(x).append(" 16V").append(Number(height));
      text_.append("\"/>\n");
      if (day % labelled == 0 || step == labelled) {
        text_.append("<text x=\"").append(x).append("\" y=\"12\">");
        text_.append(SurveyTime(day).substr(0, 10)).append("</text>\n");
      }
    }
  }

  void AddLane(std::int32_t box, Lane& lane, double top) {
    text_.append("<text x=\"4\" y=\"").append(Number(top + 15)).append("\">Box ");
    text_.append(FormatInt(box)).append("</text>\n");
    for (const auto& [start, end] : lane.plans) {
      AddBar("plan", start, end, top + 2, kLane - 6, {});
    }
    std::stable_sort(lane.recordings.begin(), lane.recordings.end(),
                     [](const auto* a, const auto* b) { return a->start < b->start; });
    double drawn_to = -1;  // of thousands of recordings only those that can be seen
    for (const SurveyRow* row : lane.recordings) {
      const bool is_seen = At(row->end) > drawn_to + 0.3 || row->bad > 0;
      if (is_seen) {
        AddRecording(*row, top);
        drawn_to = std::max(drawn_to, At(row->end));
      }
    }
  }

  void AddRecording(const SurveyRow& row, double top) {
    const double height = kLane - 10;
    std::string title = HtmlText(row.name);
    title.append(", ").append(SurveyTime(row.start)).append(" to ").append(SurveyTime(row.end));
    AddBar("done", row.start, row.end, top + 4, height, title);
    if (row.bad > 0 && row.records > 0) {
      const double share = static_cast<double>(row.bad) / static_cast<double>(row.records);
      const double part = std::max(2.0, height * share);
      AddBar("bad", row.start, row.end, top + 4 + height - part, part, {});
    }
  }

  std::map<std::int32_t, Lane> lanes_;
  std::int64_t first_ = 0;
  std::int64_t last_ = 0;
  std::string text_;
};

}  // namespace

std::string CoveragePicture(SurveyRows rows) { return Picture(rows).Text(); }

}  // namespace orvane
