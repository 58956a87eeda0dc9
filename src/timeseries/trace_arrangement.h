// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_TRACE_ARRANGEMENT_H_
#define ORVANE_TIMESERIES_TRACE_ARRANGEMENT_H_

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "timeseries/waveform_view.h"

namespace orvane {

/// How the traces of a waveform share its picture: which are hidden, which one is enlarged, how
/// each is zoomed and moved by itself, and which one keys act on. Traces count from 0.
class TraceArrangement {
 public:
  static constexpr double kEnlarged = 4;  ///< heights of any other trace
  static constexpr double kMostZoom = 1e6;
  static constexpr double kLeastZoom = 0.01;

  bool IsHidden(std::size_t trace) const { return traces_[trace].is_hidden; }
  void SetHidden(std::size_t trace, bool is_hidden);
  void ShowAll();
  /// Those of so many traces that are not hidden.
  std::vector<std::size_t> Shown(std::size_t count) const;
  /// Whether it is the only one of so many that is not hidden, and so stays.
  bool IsLastShown(std::size_t trace, std::size_t count) const;

  std::optional<std::size_t> Enlarged() const { return enlarged_; }
  void Enlarge(std::optional<std::size_t> trace) { enlarged_ = trace; }
  double Height(std::size_t trace) const { return enlarged_ == trace ? kEnlarged : 1; }

  /// The trace that keys act on.
  std::size_t Selected() const { return selected_; }
  void Select(std::size_t trace) { selected_ = trace; }
  /// The next one of so many that is not hidden, or with -1 the one before; around at the ends.
  void SelectBeside(int by, std::size_t count);

  /// Zooms the values of a trace around the middle of what is seen of it.
  void Zoom(std::size_t trace, double factor);
  /// Moves a trace up by a share of its height, by a negative one down, as far as just out of
  /// sight.
  void Pan(std::size_t trace, double share);
  /// Lets a trace be seen from `low` to `high`, where without this it is seen in `whole`.
  void ShowValues(std::size_t trace, ValueRange whole, double low, double high);
  /// What is seen of a trace that is seen in `whole` without this.
  ValueRange Values(std::size_t trace, ValueRange whole) const;
  /// No trace zoomed or moved by itself any more.
  void ResetValues();

  /// "Hidden: Ex1, Hy"; "No room for Ey" of traces that are shown and are not among the first
  /// `drawn`; empty where all are drawn.
  std::string NotDrawnText(const WaveformView& view, std::size_t drawn) const;

 private:
  struct Trace {
    bool is_hidden = false;
    double zoom = 1;
    double middle = 0;  // off that of the whole, in its spans
  };
  std::array<Trace, WaveformView::kMaxTraces> traces_{};
  std::optional<std::size_t> enlarged_;
  std::size_t selected_ = 0;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TRACE_ARRANGEMENT_H_
