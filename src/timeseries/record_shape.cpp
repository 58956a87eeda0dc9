// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/record_shape.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <limits>
#include <system_error>
#include <thread>

#include "base/number_text.h"
#include "timeseries/fold.h"

namespace orvane {
namespace {

std::vector<double> ValuesOf(const CTsRec& record, std::size_t channel) {
  std::vector<double> values(record.Scans());
  for (std::size_t scan = 0; scan < values.size(); ++scan) {
    values[scan] = record.Row(scan).Held(channel);
  }
  return values;
}

std::int32_t Held(double value) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::lround(std::clamp<double>(value, Limits::min(), Limits::max())));
}

// `traces` has one line of equal length for each channel; a value that is no number is the one
// before it.
void Replace(const std::vector<std::vector<double>>& traces, CTsRec* record) {
  const std::size_t scans = traces.empty() ? 0 : traces[0].size();
  std::vector<std::int32_t> held(scans * traces.size());
  for (std::size_t channel = 0; channel < traces.size(); ++channel) {
    double last = 0;
    for (std::size_t scan = 0; scan < scans; ++scan) {
      last = std::isnan(traces[channel][scan]) ? last : traces[channel][scan];
      held[scan * traces.size() + channel] = Held(last);
    }
  }
  record->SetHeld(std::move(held));
}

// Each trace by itself, so any number of threads gives the same.
void FilterTraces(const ViewFilter& filter, double rate, std::vector<std::vector<double>>* traces) {
  constexpr std::size_t kWorthAThread = 20000;  // values
  constexpr std::size_t kMostThreads = 4;
  const std::size_t values = traces->empty() ? 0 : traces->size() * traces->front().size();
  const std::size_t wanted = std::min({std::size_t{std::thread::hardware_concurrency()},
                                       traces->size(), kMostThreads, values / kWorthAThread});
  std::atomic<std::size_t> next = 0;
  const auto work = [&] {
    for (std::size_t i = next++; i < traces->size(); i = next++) {
      filter.Apply(rate, &(*traces)[i]);
    }
  };
  std::vector<std::thread> others;
  const auto join = [&others] {
    for (std::thread& other : others) {
      other.join();
    }
  };
  try {
    while (others.size() + 1 < wanted) {
      others.emplace_back(work);
    }
  } catch (const std::system_error&) {
    // with those that there are
  }
  work();
  join();
}

void Append(const std::string& more, std::string* note) {
  note->append(note->empty() || more.empty() ? "" : ", ").append(more);
}

}  // namespace

std::string WhyNoFold(const CTsRec& record, double frequency, bool halves) {
  return PhasePlaces::Of(record.Scans(), SampleRate(record.Header()), frequency, halves).Message();
}

ShapedRecord Shape(const RecordShape& shape, double frequency, CTsRec* record) {
  ShapedRecord shaped;
  if (shape.IsOff() || record->Scans() == 0) {
    return shaped;
  }
  const double rate = SampleRate(record->Header());
  const Result<> can_filter = shape.filter.Check(rate);
  const std::string no_fold =
      shape.folds ? WhyNoFold(*record, frequency, shape.halves) : std::string();
  const bool folds = shape.folds && no_fold.empty();
  std::size_t periods = 0;
  std::vector<std::vector<double>> traces;
  for (std::size_t channel = 0; channel < record->Channels(); ++channel) {
    traces.push_back(ValuesOf(*record, channel));
  }
  if (can_filter && !shape.filter.IsOff()) {
    FilterTraces(shape.filter, rate, &traces);
  }
  for (std::vector<double>& trace : traces) {
    if (const auto fold = folds ? FoldTrace(trace, rate, frequency, shape.halves)
                                : Result<Fold>(Failure("not wanted"))) {
      periods = fold->periods;
      shaped.seconds_per_scan = fold->step;
      trace = fold->means;
      shaped.spreads.push_back(fold->spreads);
    }
  }
  Replace(traces, record);
  Append(can_filter ? shape.filter.Text() : "not filtered: " + can_filter.Message(), &shaped.note);
  if (shape.folds) {
    const std::string done = "mean of " + FormatInt(periods) + " periods" +
                             (shape.halves ? ", second halves reversed" : "");
    Append(folds ? done : "not folded: " + no_fold, &shaped.note);
  }
  return shaped;
}

}  // namespace orvane
