// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/stack_lines.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace orvane {
namespace {

StackMarks CurveOf(const StackView& view, std::size_t record, const StackPicture& picture) {
  StackMarks curve;
  for (std::size_t item = 0; item < view.Items(record); ++item) {
    curve.Add(view.ItemPlace(item), view.Value(record, item), picture);
  }
  return curve;
}

StackMarks MediansOf(const StackView& view, const StackView::Group& group,
                     const StackPicture& picture) {
  StackMarks medians;
  std::size_t item = 0;
  for (const RobustStats& stats : view.Summary(group)) {
    const std::size_t before = medians.x.size();
    if (stats.count > 0) {
      medians.Add(view.ItemPlace(item), stats.median, picture);
    }
    if (medians.x.size() > before) {
      medians.spread.push_back(stats.spread);
    }
    ++item;
  }
  return medians;
}

}  // namespace

void StackMarks::Add(double at, double value, const StackPicture& picture) {
  const LogValue log = LogValueOf(value);
  const double shown = picture.has_log_y ? log.magnitude : value;
  const bool has_place = std::isfinite(at) && (!picture.has_log_x || at > 0);
  if (has_place && std::isfinite(shown) && (!picture.has_log_y || shown > 0)) {
    x.push_back(at);
    y.push_back(shown);
    is_hollow.push_back(picture.has_log_y && log.is_hollow);
  }
}

StackLines StackLinesOf(const StackView& view, const StackView::Group& group,
                        const StackPicture& picture) {
  StackLines lines;
  if (picture.is_points) {
    for (const StackView::Point& point : view.Points(group, picture.item, picture.against)) {
      lines.middle.Add(point.x, point.y, picture);
    }
    return lines;
  }
  const std::size_t count = std::min(group.records.size(), kMostStackCurves);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t record = group.records[i * group.records.size() / count];
    lines.records.push_back(CurveOf(view, record, picture));
  }
  lines.left_out = group.records.size() - count;
  lines.middle = MediansOf(view, group, picture);
  return lines;
}

std::string StackAxisText(const StackView& view, const StackPicture& picture) {
  if (!picture.is_points) {
    return view.AxisText();
  }
  return picture.against == StackView::Against::kValue26 ? "Field at 26" : "Extension's number";
}

std::string StackValueText(const StackView& view, const StackPicture& picture) {
  std::string text = picture.has_log_y ? "|Value|" : "Value";
  if (view.Domain() == StackDomain::kTime) {
    text += view.Part() == 0 ? " (first)" : " (second)";
  }
  return picture.is_points ? text + " of item " + FormatInt(picture.item + 1) : text;
}

}  // namespace orvane
