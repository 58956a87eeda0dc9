// SPDX-License-Identifier: GPL-3.0-or-later
// What a picture of stack results shows, without drawing.
#ifndef ORVANE_TIMESERIES_STACK_LINES_H_
#define ORVANE_TIMESERIES_STACK_LINES_H_

#include <string>
#include <vector>

#include "timeseries/stack_view.h"

namespace orvane {

/// How stack results are shown.
struct StackPicture {
  bool is_points = false;  ///< one item against a number of its record, else curves over the items
  StackView::Against against = StackView::Against::kValue26;
  std::size_t item = 0;  ///< from 0
  bool has_log_x = false;
  bool has_log_y = false;
};

/// Points to draw. On a logarithmic value axis magnitudes, those of negative values hollow; what an
/// axis cannot show is left out.
struct StackMarks {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> spread;  ///< of each; may be empty
  std::vector<bool> is_hollow;

  void Add(double at, double value, const StackPicture& picture);
  bool IsEmpty() const { return x.empty(); }
};

/// What is drawn of one label.
struct StackLines {
  std::vector<StackMarks> records;  ///< curves; at most kMostStackCurves, evenly taken
  std::size_t left_out = 0;         ///< records that have no curve for that reason
  StackMarks middle;                ///< medians and spreads of the items, or the points
};
inline constexpr std::size_t kMostStackCurves = 200;

StackLines StackLinesOf(const StackView& view, const StackView::Group& group,
                        const StackPicture& picture);

/// "Item", "Field at 26", "Extension": with what logarithms leave of it.
std::string StackAxisText(const StackView& view, const StackPicture& picture);
/// "Value", "|Value| of item 3".
std::string StackValueText(const StackView& view, const StackPicture& picture);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_STACK_LINES_H_
