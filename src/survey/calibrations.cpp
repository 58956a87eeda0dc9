// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/calibrations.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <tuple>

#include "base/ascii.h"
#include "base/number_text.h"
#include "calibration/cal_header.h"
#include "files/find_file.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr std::int64_t kDay = 86400;

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperCased);
  return upper;
}

// Why a calibration that is there is of no use.
std::string FaultOf(const FileFacts& facts, std::string_view name) {
  const bool is_of_box = FileTypeOf(name) == FileType::kBoxCalibration;
  if (!facts.failure.empty()) {
    return "it cannot be read";
  }
  if (facts.records == 0) {
    return "it has no whole record";
  }
  if (is_of_box && (facts.kind == kSensorCal || facts.kind == kCurrentSensorCal)) {
    return "it is of a sensor";
  }
  return !is_of_box && facts.kind == kBoxCal ? "it is of a box" : "";
}

}  // namespace

void Calibrations::Add(const std::filesystem::path& folder, std::string_view name,
                       FileFacts facts) {
  known_[UpperCase(name)].push_back({folder, std::move(facts)});
}

void Calibrations::UseFolder(const std::filesystem::path& folder, const ReadingOptions& reading) {
  only_ = folder;
  reading_ = reading;
}

const FileFacts* Calibrations::FindInFolder(const std::string& name) {
  auto [place, is_new] = of_folder_.try_emplace(name);
  if (is_new) {
    const auto path = FindInAnyCase(only_ / PathOf(name));
    FileInfo info;
    if (path && ReadInfo(*path, &info)) {
      place->second = ReadFacts(FileTypeOf(name), *path, reading_);
    }
  }
  return place->second ? &*place->second : nullptr;
}

const FileFacts* Calibrations::Find(const std::filesystem::path& folder, const std::string& name,
                                    std::int64_t start) {
  if (!only_.empty()) {
    return FindInFolder(name);
  }
  const auto place = known_.find(name);
  if (place == known_.end()) {
    return nullptr;
  }
  const auto rank = [&](const Known& one) {
    const std::int64_t distance = one.facts.start == 0 || start == 0
                                      ? std::numeric_limits<std::int64_t>::max()
                                      : std::abs(start - one.facts.start);
    return std::tuple(!FaultOf(one.facts, name).empty(), one.folder != folder, distance);
  };
  const auto& all = place->second;
  return &std::min_element(all.begin(), all.end(), [&rank](const Known& a, const Known& b) {
            return rank(a) < rank(b);
          })->facts;
}

RowCalibration Calibrations::Look(const std::filesystem::path& folder, const std::string& unit,
                                  std::string_view end, std::int64_t start) {
  RowCalibration result;
  result.name = std::string(unit).append(end);
  result.wanted = ParseIntPrefix(unit);
  const FileFacts* const facts = Find(folder, UpperCase(result.name), start);
  result.fault = facts == nullptr ? std::string() : FaultOf(*facts, result.name);
  if (facts == nullptr || !result.fault.empty()) {
    return result;
  }
  result.is_found = true;
  result.time = facts->start;
  result.serial = facts->serial;
  if (start > 0 && facts->start > 0) {
    result.age_days = (start - facts->start) / kDay;
  }
  return result;
}

std::vector<RowCalibration> Calibrations::Of(const std::filesystem::path& folder,
                                             const SurveyRow& row) {
  const std::int64_t start = row.has_wrong_clock ? 0 : row.start;
  std::vector<RowCalibration> all(1);
  if (row.box == 0) {
    all.front().name = "of the box, whose serial number is not known,";
  } else {
    all.front() = Look(folder, FormatInt(row.box), ".CLB", start);
  }
  for (const PlannedSensor& sensor : row.table->sensors) {
    if (sensor.channel > row.channels) {
      continue;
    }
    RowCalibration one;
    if (sensor.unit.empty()) {
      one.name = std::string("of channel ").append(FormatInt(sensor.channel));
    } else {
      one = Look(folder, sensor.unit, ".CLC", start);
    }
    const bool is_known = std::any_of(all.begin(), all.end(), [&one](const RowCalibration& other) {
      return other.name == one.name;
    });
    if (!is_known) {
      all.push_back(std::move(one));
    }
  }
  return all;
}

}  // namespace orvane
