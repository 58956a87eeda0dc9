// SPDX-License-Identifier: GPL-3.0-or-later
#include "export/schedule_json.h"

#include <algorithm>
#include <cstdint>

#include "export/json_reading.h"
#include "stepping/tfs_file.h"

namespace orvane {
namespace {

constexpr std::string_view kFormat = "orvane-schedule";
constexpr std::size_t kMembers = 4;

Json JsonOfWaveform(int code) {
  const bool has_name = code >= 0 && code < static_cast<int>(kWaveforms.size());
  return has_name ? Json(WaveformName(code)) : Json(code);
}

Result<std::int16_t> WaveformFromJson(const Json& json) {
  if (const auto code = IntFromJson(json, INT16_MIN, INT16_MAX)) {
    return static_cast<std::int16_t>(*code);
  }
  const auto named = json.is_string()
                         ? std::find(kWaveforms.begin(), kWaveforms.end(), json.get<std::string>())
                         : kWaveforms.end();
  return named != kWaveforms.end()
             ? Result<std::int16_t>(static_cast<std::int16_t>(named - kWaveforms.begin()))
             : Failure("is no waveform");
}

Result<ScheduleRow> RowFromJson(const Json& json) {
  for (const char* name : {"end_time", "waveform", "frequency", "current"}) {
    if (!json.is_object() || !json.contains(name)) {
      return Failure(std::string("has no \"").append(name).append("\""));
    }
  }
  if (json.size() != kMembers) {
    return Failure("has an unknown member");
  }
  const auto end = IntFromJson(json["end_time"], INT32_MIN, INT32_MAX);
  const auto waveform = WaveformFromJson(json["waveform"]);
  const auto frequency = RealFromJson(json["frequency"]);
  const auto current = RealFromJson(json["current"]);
  if (!end) {
    return Failure("\"end_time\" " + end.Message());
  }
  if (!waveform) {
    return Failure("\"waveform\" " + waveform.Message());
  }
  if (!frequency || !current) {
    return Failure(frequency ? "\"current\" " + current.Message()
                             : "\"frequency\" " + frequency.Message());
  }
  ScheduleRow row;
  row.end_time = static_cast<std::int32_t>(*end);
  row.waveform = *waveform;
  row.frequency = *frequency;
  row.current = *current;
  return row;
}

}  // namespace

std::string WriteScheduleJson(std::span<const ScheduleRow> rows) {
  Json steps = Json::array();
  for (const ScheduleRow& row : rows) {
    steps.push_back({{"end_time", std::int32_t{row.end_time}},
                     {"waveform", JsonOfWaveform(row.waveform)},
                     {"frequency", JsonOfReal(row.frequency)},
                     {"current", JsonOfReal(row.current)}});
  }
  return JsonText({{"format", kFormat}, {"format_version", 1}, {"steps", std::move(steps)}});
}

Result<std::vector<ScheduleRow>> ReadScheduleJson(std::string_view text) {
  const auto json = ReadJsonObject(text);
  if (!json) {
    return Failure(json.Message());
  }
  if (const Result<> checked = CheckJsonFormat(*json, kFormat, {"steps"}); !checked) {
    return Failure(checked.Message());
  }
  const Json& steps = (*json)["steps"];
  if (!steps.is_array() || steps.size() > static_cast<std::size_t>(kMostSteps)) {
    return Failure("\"steps\" is no list of at most " + FormatInt(kMostSteps));
  }
  std::vector<ScheduleRow> rows;
  for (const Json& step : steps) {
    const auto row = RowFromJson(step);
    if (!row) {
      return Failure("step " + FormatInt(rows.size() + 1) + ": " + row.Message());
    }
    rows.push_back(*row);
  }
  const std::string refusal = WhyUnreadable(rows);
  return refusal.empty() ? Result<std::vector<ScheduleRow>>(std::move(rows)) : Failure(refusal);
}

}  // namespace orvane
