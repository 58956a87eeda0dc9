// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "base/number_text.h"
#include "survey/coverage.h"
#include "survey/survey_report.h"

namespace orvane {
namespace {

constexpr double kLeft = 90;
constexpr double kWidth = 880;
constexpr double kLane = 24;
constexpr double kTop = 22;

std::string Number(double value) { return FormatFixed(value, 1); }

class Picture {
 public:
  explicit Picture(const Coverage& coverage)
      : coverage_(coverage), axis_(coverage, kLeft, kWidth) {}

  std::string Text() {
    const double height = kTop + kLane * static_cast<double>(coverage_.lanes.size()) + 8;
    text_.append("<svg role=\"img\" viewBox=\"0 0 980 ").append(Number(height));
    text_.append("\" aria-label=\"When each box recorded\">\n");
    AddTimes(height);
    double top = kTop;
    for (const CoverageLane& lane : coverage_.lanes) {
      AddLane(lane, top);
      top += kLane;
    }
    return text_.append("</svg>\n");
  }

 private:
  void AddBar(const char* kind, std::int64_t start, std::int64_t end, double top, double height,
              const std::string& title) {
    const double left = axis_.At(start);
    const double width = std::max(axis_.At(end) - left, 0.6);
    text_.append("<rect class=\"").append(kind).append("\" x=\"").append(Number(left));
    text_.append("\" y=\"").append(Number(top)).append("\" width=\"").append(Number(width));
    text_.append("\" height=\"").append(Number(height));
    text_.append(title.empty() ? "\"/>\n" : "\"><title>").append(title);
    text_.append(title.empty() ? "" : "</title></rect>\n");
  }

  void AddTimes(double height) {
    constexpr double kLabel = 105;
    for (const CoverageAxis::Tick& tick : axis_.Ticks(kLabel)) {
      text_.append("<path class=\"day\" d=\"M").append(Number(tick.at)).append(" 16V");
      text_.append(Number(height)).append("\"/>\n");
      if (!tick.text.empty()) {
        text_.append("<text x=\"").append(Number(tick.at)).append("\" y=\"12\">");
        text_.append(tick.text).append("</text>\n");
      }
    }
  }

  void AddLane(const CoverageLane& lane, double top) {
    text_.append("<text x=\"4\" y=\"").append(Number(top + 15)).append("\">Box ");
    text_.append(lane.Name()).append("</text>\n");
    for (const CoveragePart& plan : lane.planned) {
      AddBar("plan", plan.start, plan.end, top + 2, kLane - 6, {});
    }
    double drawn_to = -1;  // of thousands of recordings only those that can be seen
    for (const CoveragePart& part : lane.recorded) {
      if (axis_.At(part.end) > drawn_to + 0.3 || part.bad_share > 0) {
        AddRecording(part, top);
        drawn_to = std::max(drawn_to, axis_.At(part.end));
      }
    }
  }

  void AddRecording(const CoveragePart& part, double top) {
    const double height = kLane - 10;
    std::string title = HtmlText(part.what);
    title.append(", ").append(SurveyTime(part.start)).append(" to ").append(SurveyTime(part.end));
    AddBar("done", part.start, part.end, top + 4, height, title);
    if (part.bad_share > 0) {
      const double bad = std::max(2.0, height * part.bad_share);
      AddBar("bad", part.start, part.end, top + 4 + height - bad, bad, {});
    }
  }

  const Coverage& coverage_;
  CoverageAxis axis_;
  std::string text_;
};

}  // namespace

std::string CoveragePicture(SurveyRows rows) {
  const Coverage coverage = CoverageOf(rows);
  return coverage.lanes.empty() ? std::string() : Picture(coverage).Text();
}

}  // namespace orvane
