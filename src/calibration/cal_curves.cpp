// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/cal_curves.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numeric>

#include "calibration/cal_reader.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr double kDegrees = 57.29577951308232;  // of one radian
constexpr std::uint8_t kSeriesKind = 2;

bool BeginsSecondSeries(const CalFileRecord& before, const CalFileRecord& record) {
  return before.kind == kSeriesKind && record.kind == kSeriesKind && record.step < before.step;
}

// The records to show, and why there are not more.
std::string TakeRecords(CalReader* in, std::vector<CalFileRecord>* records) {
  CalFileRecord record;
  while (in->TakeRecord(&record)) {
    if (records->size() == kMaxCalRecords) {
      return "the file has more than 500 records; the first 500 are shown";
    }
    if (!records->empty() && BeginsSecondSeries(records->back(), record)) {
      return "a second series of records is not shown";
    }
    records->push_back(record);
  }
  if (!in->Outcome()) {
    return in->Outcome().Message();
  }
  if (records->empty()) {
    return "no complete record";
  }
  return in->IsCut() ? "the last record is cut short and left out" : "";
}

// Positions in falling order of frequency; equal ones keep theirs. The order of neighbours being
// exchanged until none needs it: nothing passes a frequency that is not a number.
std::vector<std::size_t> FallingOrder(const std::vector<CalFileRecord>& records) {
  std::vector<std::size_t> order(records.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  const auto frequency = [&records](std::size_t at) -> float { return records[at].frequency; };
  for (auto begin = order.begin(); begin != order.end();) {
    const auto end =
        std::find_if(begin, order.end(), [&](std::size_t at) { return std::isnan(frequency(at)); });
    std::stable_sort(begin, end,
                     [&](std::size_t a, std::size_t b) { return frequency(a) > frequency(b); });
    begin = end == order.end() ? end : end + 1;
  }
  return order;
}

// The pass of each record: a step of 0 or 1 begins one.
std::vector<int> SweepsOf(const std::vector<CalFileRecord>& records) {
  std::vector<int> sweeps;
  for (const CalFileRecord& record : records) {
    const bool is_next = !sweeps.empty() && record.step <= 1;
    sweeps.push_back((sweeps.empty() ? 0 : sweeps.back()) + (is_next ? 1 : 0));
  }
  return sweeps;
}

CalCurve CurveOf(const std::vector<CalFileRecord>& records, const std::vector<std::size_t>& order,
                 const std::vector<int>& sweeps, std::size_t channel) {
  CalCurve curve;
  for (const std::size_t at : order) {
    const double real = records[at].channels[channel].real;
    const double imaginary = records[at].channels[channel].imaginary;
    curve.frequency.push_back(records[at].frequency);
    curve.amplitude.push_back(std::hypot(real, imaginary));
    curve.phase.push_back(std::atan2(imaginary, real) * kDegrees);
    curve.sweep.push_back(sweeps[at]);
  }
  curve.turn = FoldPhases(&curve.phase);
  return curve;
}

Result<CalCurves> Load(const std::filesystem::path& path) {
  CalCurves loaded;
  loaded.path = path;
  CalReader in;
  if (!in.Open(path)) {
    return Failure("Failed to open file " + PathText(path) + "!");
  }
  if (!in.TakeHeader(&loaded.header) || loaded.header.Channels() == 0) {
    return Failure("Failed to read calbration header!");  // kept: misspelled, as users know it
  }
  std::vector<CalFileRecord> records;
  loaded.note = TakeRecords(&in, &records);
  const auto order = FallingOrder(records);
  const auto sweeps = SweepsOf(records);
  for (std::size_t c = 0; c < loaded.header.Channels(); ++c) {
    loaded.channels.push_back(CurveOf(records, order, sweeps, c));
  }
  return loaded;
}

}  // namespace

double FoldPhases(std::vector<double>* phases) {
  constexpr double kReversed = 150;
  constexpr double kHalfTurn = 180;
  const double mean = std::accumulate(phases->begin(), phases->end(), 0.0) /
                      static_cast<double>(std::max<std::size_t>(phases->size(), 1));
  const double turn = mean > kReversed ? -kHalfTurn : mean < -kReversed ? kHalfTurn : 0;
  if (turn != 0) {
    for (double& phase : *phases) {
      phase += turn;
    }
  }
  return turn;
}

Result<CalCurves> LoadCalCurves(const std::filesystem::path& path) {
  try {
    return Load(path);
  } catch (const std::bad_alloc&) {
    return Failure("Memory allocation error!");
  }
}

}  // namespace orvane
