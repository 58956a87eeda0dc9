// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/field_sheet.h"

#include <algorithm>

#include "base/number_text.h"
#include "editors/schedule_cautions.h"
#include "editors/spread.h"
#include "editors/spread_map.h"
#include "editors/table_summary.h"
#include "editors/timeline.h"
#include "table/param_access.h"
#include "table/param_time.h"
#include "table/tech.h"

namespace orvane {
namespace {

using Cells = std::array<std::string, kSheetColumns.size()>;

// The hours that the table's zone adds to UTC.
int HoursOf(const ParamTable& table) {
  return IntParam(table, "TMZONE") != 0 ? IntParam(table, "TMDIFF") : 0;
}

std::string TimeLine(const ParamTable& table, ParamKey key) {
  const ParamTime time = TimeParam(table, key);
  if (IsUnset(time)) {
    return "not set";
  }
  const std::string utc = FormatParamTime(time) + " UTC";
  const int hours = HoursOf(table);
  return hours == 0 ? utc
                    : FormatParamTime(ShiftedByHours(time, hours)) + " local (UTC" +
                          (hours > 0 ? "+" : "") + FormatInt(hours) + "), " + utc;
}

// Lines of the table at a glance that a sheet takes over, each with its group.
bool IsTaken(std::string_view group, std::string_view label) {
  return group == "Method" || group == "Gains and filters" || group == "Survey" ||
         (group == "Boxes" && label != "Channels");
}

void AddSensors(const ParamTable& table, BoxKind kind, std::vector<SheetLine>* lines) {
  if (kind == kTransmitterBox) {
    lines->push_back({"Current sensor", ParamAsText(table, "CSSN")});
  } else if (kind == kLocalBox) {
    lines->push_back({"Coils Hx, Hy, Hz", ParamAsText(table, "HXSN") + ", " +
                                              ParamAsText(table, "HYSN") + ", " +
                                              ParamAsText(table, "HZSN")});
  }
}

// "60 s: 8 Hz, 5 A; 90 s: 16 Hz, 5 A": until when in the cycle each step lasts.
std::string StepsText(const Timeline& line) {
  constexpr std::size_t kMost = 12;  // what a line of the sheet has room for
  std::string text;
  for (const TimeLane& lane : line.lanes) {
    if (lane.name != "Steps") {
      continue;
    }
    for (std::size_t i = 0; i < std::min(lane.parts.size(), kMost); ++i) {
      text += text.empty() ? "" : "; ";
      text += FormatReal(lane.parts[i].end) + " s: " + lane.parts[i].what;
    }
    if (lane.parts.size() > kMost) {
      text += "; " + FormatInt(lane.parts.size() - kMost) + " more";
    }
  }
  return text;
}

std::vector<SheetLine> LinesOf(const ParamTable& table, BoxKind kind, const Clock& now,
                               const ScheduleFile* steps) {
  std::vector<SheetLine> lines;
  for (const SummaryGroup& group : SummarizeTable(table, now)) {
    for (const SummaryLine& line : group.lines) {
      if (IsTaken(group.title, line.label)) {
        lines.push_back({std::string(line.label), line.value.empty() ? "not set" : line.value});
      }
    }
  }
  AddSensors(table, kind, &lines);
  lines.push_back({"Record start", TimeLine(table, "STIM")});
  lines.push_back({"Record end", TimeLine(table, "ETIM")});
  if (TechOf(table) == kMtAmt) {
    lines.push_back({"High rates start", TimeLine(table, "HTIM")});
    lines.push_back({"High rates end", TimeLine(table, "ETMH")});
  }
  const Timeline line = TimelineOf(table, now, HoursOf(table), steps);
  lines.push_back({"Printed", FormatParamTime(now.Now()) + " UTC"});
  lines.push_back({"Schedule", line.plan});
  if (std::string text = StepsText(line); !text.empty()) {
    lines.push_back({"Steps, until", std::move(text)});
  }
  return lines;
}

// "x 4", by the letter that a definition begins with.
std::string GainOf(const ParamTable& table, const std::string& name, BoxKind kind) {
  const bool is_magnetic =
      kind == kTransmitterBox || (!name.empty() && (name[0] == 'H' || name[0] == 'h'));
  constexpr std::array<std::string_view, 4> kGains = {"x 0.25", "x 1", "x 4", "x 16"};
  const int index = IntParam(table, is_magnetic ? "HGNC" : "EGNC") + 1;
  return index >= 0 && index < static_cast<int>(kGains.size())
             ? std::string(kGains[static_cast<std::size_t>(index)])
             : std::string();
}

Cells ChannelOf(const ParamTable& table, const Spread& spread, const SpreadMap& map, int box,
                int channel) {
  const BoxKind kind = static_cast<BoxKind>(spread.Box(box).kind);
  const std::string name = spread.ChannelCell(box, channel, kDefinition);
  Cells cells = {FormatInt(channel + 1), name};
  const int at = map.IndexOf(box, channel);
  if (at >= 0 && map.items[static_cast<std::size_t>(at)].kind != MapItem::kLoop) {
    std::size_t cell = 2;
    for (const MapPoint& point : map.items[static_cast<std::size_t>(at)].points) {
      cells[cell++] = FormatReal(point.east);
      cells[cell++] = FormatReal(point.north);
    }
  }
  cells[6] = GainOf(table, name, kind);
  cells[7] = spread.ChannelCell(box, channel, kGainFactor);
  return cells;
}

bool HasSheet(const BoxRow& row, Tech tech) {
  return row.kind == kLocalBox ||
         (row.serial != 0 && (row.kind != kTransmitterBox || tech != kMtAmt));
}

}  // namespace

std::vector<FieldSheet> FieldSheetsOf(const ParamTable& table, const Clock& now,
                                      const ScheduleFile* steps) {
  ParamTable copy = table;  // a spread works on a table that it may change
  const Spread spread(&copy);
  const SpreadMap map = MapOf(spread, table);
  std::vector<FieldSheet> sheets;
  for (int box = 0; box < spread.BoxCount(); ++box) {
    if (!HasSheet(spread.Box(box), TechOf(table))) {
      continue;
    }
    FieldSheet sheet;
    sheet.title = spread.BoxName(box);
    sheet.box = box;
    sheet.lines = LinesOf(table, static_cast<BoxKind>(spread.Box(box).kind), now, steps);
    for (int channel = 0; channel < spread.ChannelCount(box); ++channel) {
      sheet.channels.push_back(ChannelOf(table, spread, map, box, channel));
    }
    sheets.push_back(std::move(sheet));
  }
  return sheets;
}

}  // namespace orvane
