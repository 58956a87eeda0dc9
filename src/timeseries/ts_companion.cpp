// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/ts_companion.h"

#include <algorithm>

#include "base/ascii.h"
#include "table/param_text.h"

namespace orvane {
namespace {

bool HasLowerKey(const ParamEntry& entry, ParamKey key) {
  return ParamKey(entry.key).Word() < key.Word();
}

// Made once: to copy it is faster than to build its index again.
const ParamTable& Defaults() {
  static const ParamTable defaults = [] {
    ParamTable table;
    // Without memory for the index every key is unknown: names and scales are then missing.
    static_cast<void>(table.BuildParamIndex());
    return table;
  }();
  return defaults;
}

}  // namespace

std::string CompanionName(std::string_view path) {
  return path.size() < 3 ? std::string()
                         : std::string(path.substr(0, path.size() - 3)).append("TBL");
}

TsCompanion::TsCompanion() : table_(Defaults()) {}

TsCompanion::TsCompanion(const ParamTable& table) : table_(table), is_loaded_(true) {
  if (const ParamEntry* entry = table_.FindParam("VER"); entry != nullptr) {
    version_ = CharactersOf(entry->value, kMaxTextLength);
  }
}

Status TsCompanion::Load(const std::filesystem::path& path, TblReport* report) {
  *this = TsCompanion();
  *report = {};
  TblReader reader;
  if (const Status status = reader.Open(path, report); status != kOk) {
    return status;
  }
  ParamEntry entry;
  while (reader.Next(&entry)) {
    ++report->records;
    Store(entry);
  }
  if (const Status status = reader.End(report); status != kOk) {
    *this = TsCompanion();
    return status;
  }
  is_loaded_ = true;
  const Le<std::int32_t> version = report->version;
  return table_.SetParam("TBVI", IntPT, &version);
}

void TsCompanion::Store(const ParamEntry& entry) {
  const ParamKey key(entry.key);
  const auto type = static_cast<ValueType>(entry.type);
  const Status status = table_.SetParam(key, type, entry.value.data());
  if (status == kOk && key == "VER") {
    version_ = CharactersOf(entry.value, kMaxTextLength);
  }
  if (status != kKeyNotFound || key.IsEmpty()) {
    return;  // a record of another type than the dictionary's counts for nothing
  }
  const auto place = std::lower_bound(beside_.begin(), beside_.end(), key, HasLowerKey);
  if (place != beside_.end() && ParamKey(place->key) == key) {
    *place = entry;
  } else if (beside_.size() < kMaxBeside) {
    beside_.insert(place, entry);
  }
}

const ParamEntry* TsCompanion::Find(ParamKey key) const {
  if (const ParamEntry* entry = table_.FindParam(key); entry != nullptr) {
    return entry;
  }
  const auto place = std::lower_bound(beside_.begin(), beside_.end(), key, HasLowerKey);
  return place != beside_.end() && ParamKey(place->key) == key ? &*place : nullptr;
}

bool TsCompanion::IsOldVersion() const {
  return ContainsWithoutCase(version_, "A") || ContainsWithoutCase(version_, "B");
}

}  // namespace orvane
