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

struct Stretch {
  std::int64_t start = 0;
  std::int64_t end = 0;
  double left = 0;
};

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
        AddPlan(*row, &lane);
      }
    }
  }

  std::string Text() {
    if (lanes_.empty()) {
      return {};
    }
    FindStretches();
    const double height = kTop + kLane * static_cast<double>(lanes_.size()) + 8;
    text_.append("<svg role=\"img\" viewBox=\"0 0 980 ").append(Number(height));
    text_.append("\" aria-label=\"When each box recorded\">\n");
    AddTimes(height);
    double top = kTop;
    for (auto& [box, lane] : lanes_) {
      AddLane(box, lane, top);
      top += kLane;
    }
    return text_.append("</svg>\n");
  }

 private:
  // Boxes that a table names have a line too, which shows what they did not record.
  void AddPlan(const SurveyRow& row, Lane* lane) {
    const TableFacts* const table = row.table.get();
    if (table == nullptr || table->plan_start == 0 || table->plan_end <= table->plan_start) {
      return;
    }
    const std::pair plan(table->plan_start, table->plan_end);
    lane->plans.insert(plan);
    for (const PlannedBox& box : table->boxes) {
      lanes_[box.serial].plans.insert(plan);
    }
  }

  // Stretches of time in which something was planned or recorded, with those between them, nights
  // mostly, left out.
  void FindStretches() {
    constexpr std::int64_t kLeastBreak = 3600;
    std::vector<std::pair<std::int64_t, std::int64_t>> spans;
    for (const auto& [box, lane] : lanes_) {
      spans.insert(spans.end(), lane.plans.begin(), lane.plans.end());
      for (const SurveyRow* row : lane.recordings) {
        spans.emplace_back(row->start, std::max(row->end, row->start + 1));
      }
    }
    std::sort(spans.begin(), spans.end());
    for (const auto& [start, end] : spans) {
      if (stretches_.empty() || start - stretches_.back().end > kLeastBreak) {
        stretches_.push_back({start, end, 0});
      }
      stretches_.back().end = std::max(stretches_.back().end, end);
    }
    double seconds = 0;
    for (const Stretch& stretch : stretches_) {
      seconds += static_cast<double>(stretch.end - stretch.start);
    }
    const double breaks = static_cast<double>(stretches_.size() - 1);
    const double between = breaks == 0 ? 0 : std::min(14.0, 0.3 * kWidth / breaks);
    scale_ = (kWidth - breaks * between) / seconds;
    double left = kLeft;
    for (Stretch& stretch : stretches_) {
      stretch.left = left;
      left += static_cast<double>(stretch.end - stretch.start) * scale_ + between;
    }
  }

  double At(std::int64_t time) const {
    const auto after =
        std::upper_bound(stretches_.begin(), stretches_.end(), time,
                         [](std::int64_t at, const Stretch& one) { return at < one.start; });
    const Stretch& stretch = after == stretches_.begin() ? *after : *(after - 1);
    return stretch.left + static_cast<double>(time - stretch.start) * scale_;
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

  // A line where each stretch begins and at each midnight, with as many times as there is room for.
  void AddTimes(double height) {
    constexpr double kLabel = 105;
    constexpr std::size_t kMostLines = 500;
    double labelled_to = 0;
    std::size_t lines = 0;
    for (const Stretch& stretch : stretches_) {
      for (std::int64_t time = stretch.start; time < stretch.end && lines < kMostLines;
           time = (time / kDay + 1) * kDay, ++lines) {
        const double x = At(time);
        text_.append("<path class=\"day\" d=\"M").append(Number(x)).append(" 16V");
        text_.append(Number(height)).append("\"/>\n");
        if (x >= labelled_to && x + kLabel < kLeft + kWidth + kLabel / 2) {
          text_.append("<text x=\"").append(Number(x)).append("\" y=\"12\">");
          text_.append(SurveyTime(time).substr(0, 16)).append("</text>\n");
          labelled_to = x + kLabel;
        }
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
  std::vector<Stretch> stretches_;  // in their order
  double scale_ = 0;                // pixels for a second
  std::string text_;
};

}  // namespace

std::string CoveragePicture(SurveyRows rows) { return Picture(rows).Text(); }

}  // namespace orvane
