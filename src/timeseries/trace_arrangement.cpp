// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/trace_arrangement.h"

#include <algorithm>

#include "base/number_text.h"

namespace orvane {
namespace {

void AppendNames(const char* title, const std::vector<std::string>& names, std::string* text) {
  constexpr std::size_t kMostNames = 12;
  for (std::size_t i = 0; i < std::min(names.size(), kMostNames); ++i) {
    text->append(i > 0            ? ", "
                 : !text->empty() ? std::string("; ").append(title)
                                  : std::string(title))
        .append(names[i]);
  }
  if (names.size() > kMostNames) {
    text->append(" and ").append(FormatInt(names.size() - kMostNames)).append(" more");
  }
}

}  // namespace

void TraceArrangement::SetHidden(std::size_t trace, bool is_hidden) {
  traces_[trace].is_hidden = is_hidden;
  if (is_hidden && enlarged_ == trace) {
    enlarged_.reset();
  }
}

void TraceArrangement::ShowAll() {
  for (Trace& trace : traces_) {
    trace.is_hidden = false;
  }
}

std::vector<std::size_t> TraceArrangement::Shown(std::size_t count) const {
  std::vector<std::size_t> shown;
  for (std::size_t trace = 0; trace < std::min(count, traces_.size()); ++trace) {
    if (!traces_[trace].is_hidden) {
      shown.push_back(trace);
    }
  }
  return shown;
}

bool TraceArrangement::IsLastShown(std::size_t trace, std::size_t count) const {
  return Shown(count) == std::vector<std::size_t>{trace};
}

void TraceArrangement::SelectBeside(int by, std::size_t count) {
  const std::vector<std::size_t> shown = Shown(count);
  if (shown.empty()) {
    return;
  }
  const auto at = std::lower_bound(shown.begin(), shown.end(), selected_);
  const auto size = static_cast<std::ptrdiff_t>(shown.size());
  const bool is_there = at != shown.end() && *at == selected_;
  const std::ptrdiff_t next = (at - shown.begin()) + (is_there || by < 0 ? by : 0);
  selected_ = shown[static_cast<std::size_t>((next % size + size) % size)];
}

void TraceArrangement::Zoom(std::size_t trace, double factor) {
  double& zoom = traces_[trace].zoom;
  zoom = std::clamp(zoom * factor, kLeastZoom, kMostZoom);
}

void TraceArrangement::Pan(std::size_t trace, double share) {
  Trace& of = traces_[trace];
  of.middle = std::clamp(of.middle - share / of.zoom, -1.0, 1.0);
}

void TraceArrangement::ShowValues(std::size_t trace, ValueRange whole, double low, double high) {
  const double span = whole.high - whole.low;
  if (span > 0 && high > low) {
    Trace& of = traces_[trace];
    of.zoom = std::clamp(span / (high - low), kLeastZoom, kMostZoom);
    of.middle = ((low + high) - (whole.low + whole.high)) / 2 / span;
  }
}

ValueRange TraceArrangement::Values(std::size_t trace, ValueRange whole) const {
  const Trace& of = traces_[trace];
  if (of.zoom == 1 && of.middle == 0) {
    return whole;
  }
  const double span = whole.high - whole.low;
  const double middle = (whole.low + whole.high) / 2 + of.middle * span;
  return {middle - span / 2 / of.zoom, middle + span / 2 / of.zoom};
}

void TraceArrangement::ResetValues() {
  for (Trace& trace : traces_) {
    trace.zoom = 1;
    trace.middle = 0;
  }
}

std::string TraceArrangement::NotDrawnText(const WaveformView& view, std::size_t drawn) const {
  std::vector<std::string> hidden;
  std::vector<std::string> without_room;
  std::size_t shown = 0;
  for (std::size_t trace = 0; trace < view.TraceCount(); ++trace) {
    if (IsHidden(trace)) {
      hidden.push_back(view.Channel(trace).name);
    } else if (++shown > drawn) {
      without_room.push_back(view.Channel(trace).name);
    }
  }
  const std::vector<std::string>& beyond = view.NamesBeyond();
  without_room.insert(without_room.end(), beyond.begin(), beyond.end());
  std::string text;
  AppendNames("Hidden: ", hidden, &text);
  AppendNames("No room for ", without_room, &text);
  return text;
}

}  // namespace orvane
