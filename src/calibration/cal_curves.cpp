// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/cal_curves.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numeric>

#include "calibration/cal_reader.h"

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
  if (!in->Error().empty()) {
    return in->Error();
  }
  if (records->empty()) {
    return "no whole record";
  }
  return in->IsCut() ? "the last record is cut and left out" : "";
}

std::string Load(const std::filesystem::path& path, CalCurves* curves) {
  CalCurves loaded;
  loaded.path = path;
  CalReader in;
  if (!in.Open(path).empty()) {
    return "Failed to open file " + path.string() + "!";
  }
  if (!in.TakeHeader(&loaded.header) || loaded.header.Channels() == 0) {
    return "Failed to read calbration header!";  // kept: misspelled, as users know it
  }
  std::vector<CalFileRecord> records;
  loaded.note = TakeRecords(&in, &records);
  SortByFrequency(&records);
  for (std::size_t c = 0; c < loaded.header.Channels(); ++c) {
    loaded.channels.push_back(CurveOf(records, c));
    FoldPhases(&loaded.channels.back().phase);
  }
  *curves = std::move(loaded);
  return {};
}

}  // namespace

void SortByFrequency(std::vector<CalFileRecord>* records) {
  const auto is_no_number = [](const CalFileRecord& record) {
    return std::isnan(static_cast<float>(record.frequency));
  };
  // The order of neighbours being exchanged until none needs it: nothing passes what does not
  // compare.
  for (auto begin = records->begin(); begin != records->end();) {
    const auto end = std::find_if(begin, records->end(), is_no_number);
    std::stable_sort(begin, end, [](const CalFileRecord& a, const CalFileRecord& b) {
      return a.frequency > b.frequency;
    });
    begin = end == records->end() ? end : end + 1;
  }
}

CalCurve CurveOf(const std::vector<CalFileRecord>& records, std::size_t channel) {
  CalCurve curve;
  for (const CalFileRecord& record : records) {
    const double real = record.channels[channel].real;
    const double imaginary = record.channels[channel].imaginary;
    curve.frequency.push_back(record.frequency);
    curve.amplitude.push_back(std::hypot(real, imaginary));
    curve.phase.push_back(std::atan2(imaginary, real) * kDegrees);
  }
  return curve;
}

void FoldPhases(std::vector<double>* phases) {
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
}

std::string LoadCalCurves(const std::filesystem::path& path, CalCurves* curves) {
  try {
    return Load(path, curves);
  } catch (const std::bad_alloc&) {
    return "Memory allocation error!";
  }
}

}  // namespace orvane
