// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/table_summary.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "base/latin1.h"
#include "base/number_text.h"
#include "editors/channel_keys.h"
#include "editors/schedule_cautions.h"
#include "table/box_keys.h"
#include "table/param_access.h"
#include "table/param_time.h"
#include "table/text_pieces.h"

namespace orvane {
namespace {

constexpr std::array<std::string_view, 6> kMethods = {"SIP",   "TDIP",   "TDEM",
                                                      "CSAMT", "MT/AMT", "FDEM"};
constexpr std::array<std::string_view, 14> kRequests = {
    "",        "Setup",      "Record", "", "",           "GPS reset", "",
    "Box Cal", "Sensor Cal", "",       "", "CS_Standby", "CS_Pause",  "CS_Record"};
constexpr std::array<std::string_view, 2> kCouplings = {"DC coupling", "AC coupling"};
constexpr std::array<std::string_view, 4> kGains = {"x 0.25", "x 1", "x 4", "x 16"};
constexpr int kFirstGain = -1;  // gains are powers of four, stored as the exponent

// The name of a code, or the code itself where it has none.
std::string NameOf(std::span<const std::string_view> names, int code, int first = 0) {
  const int index = code - first;
  const bool is_known = index >= 0 && static_cast<std::size_t>(index) < names.size() &&
                        !names[static_cast<std::size_t>(index)].empty();
  return is_known ? std::string(names[static_cast<std::size_t>(index)]) : "code " + FormatInt(code);
}

std::string Serial(std::int32_t serial) {
  return serial == 0 ? std::string() : FormatInt(static_cast<std::uint32_t>(serial));
}

// A definition as letters and the number behind them; below 0: none that could go on.
struct Numbered {
  std::string letters;
  int number = -1;
};

Numbered NumberedOf(const std::string& name) {
  const std::size_t digits = name.find_last_not_of("0123456789") + 1;
  const bool is_short = name.size() > digits && name.size() - digits <= 3;
  return {name.substr(0, digits), is_short ? ParseIntPrefix(name.substr(digits)) : -1};
}

// "Ex1 to Ex6, Hy": names whose numbers go on are joined.
std::string JoinedNames(const std::vector<std::string>& names) {
  std::string text;
  for (std::size_t first = 0, next = 0; first < names.size(); first = next) {
    const Numbered begin = NumberedOf(names[first]);
    const auto goes_on = [&](std::size_t at) {
      const Numbered one = NumberedOf(names[at]);
      return begin.number >= 0 && one.letters == begin.letters &&
             one.number == begin.number + static_cast<int>(at - first);
    };
    next = first + 1;
    while (next < names.size() && goes_on(next)) {
      ++next;
    }
    text += (text.empty() ? "" : ", ") + names[first];
    if (next - first > 1) {
      text += (next - first == 2 ? ", " : " to ") + names[next - 1];
    }
  }
  return text;
}

// "6: Ex1 to Ex6", "6, none defined".
std::string ChannelsText(const ParamTable& table, BoxKind kind, int slot, std::int32_t count) {
  std::vector<std::string> names;
  for (int channel = 1; channel <= std::min<std::int32_t>(count, MaxChannels(kind)); ++channel) {
    const std::string name = ParamAsText(table, ChannelKey(kind, slot, channel, kDefinition));
    if (!Trimmed(name).empty()) {
      names.emplace_back(Trimmed(name));
    }
  }
  const char* none = count > 0 ? ", none defined" : "";
  return FormatInt(count) + (names.empty() ? none : ": " + JoinedNames(names));
}

// A line for each, or one for all places where there are none.
void AddAuxiliaryBoxes(const ParamTable& table, std::vector<SummaryLine>* lines) {
  const std::size_t before = lines->size();
  SummaryLine none{"Auxiliary boxes", {}, {}};
  int slot = 0;
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    ++slot;
    none.keys.emplace_back(keys.serial);
    if (const std::string serial = Serial(IntParam(table, keys.serial)); !serial.empty()) {
      const std::int32_t count = IntParam(table, keys.channels);
      lines->push_back({"Auxiliary box",
                        serial + ", channels " + ChannelsText(table, kAuxiliaryBox, slot, count),
                        {keys.serial, keys.channels}});
    }
  }
  if (lines->size() == before) {
    lines->push_back(std::move(none));
  }
}

SummaryGroup Boxes(const ParamTable& table, Tech tech) {
  const std::int32_t reference = HasReferenceBox(tech) ? IntParam(table, "SNNR") : 0;
  SummaryGroup group = {"Boxes",
                        {{"Main box", Serial(IntParam(table, "SNUM")), {"SNUM"}},
                         {"Channels",
                          ChannelsText(table, kLocalBox, 0, MainBoxChannels(table)),
                          {kCountedChannels, kSetChannels}},
                         {"Transmitter box", Serial(IntParam(table, "SNTX")), {"SNTX"}}}};
  AddAuxiliaryBoxes(table, &group.lines);
  group.lines.push_back({"Reference box", Serial(reference), {"SNNR"}});
  return group;
}

SummaryGroup Times(const ParamTable& table, Tech tech, const Clock& now) {
  const auto text = [&table](ParamKey key) {
    const ParamTime time = TimeParam(table, key);
    return IsUnset(time) ? std::string() : FormatParamTime(time);
  };
  ScheduleCautions cautions;
  if (tech == kMtAmt) {
    cautions = CautionSchedule(TimeParam(table, "STIM"), TimeParam(table, "ETIM"), now);
  }
  return {"Times (as stored, UTC)",
          {{"Record start", text("STIM"), {"STIM"}, cautions.start},
           {"Record end", text("ETIM"), {"ETIM"}, cautions.end},
           {"High frequency start", text("HTIM"), {"HTIM"}},
           {"High frequency end", text("ETMH"), {"ETMH"}}}};
}

}  // namespace

std::string_view MethodName(Tech tech) {
  return IsKnown(tech) ? kMethods[static_cast<std::size_t>(tech) - 1] : std::string_view();
}

std::string FilterName(int code) {
  if (code == 0) {
    return "Off";
  }
  for (const int base : {16, 80, 160}) {
    if (code >= base && code < base + 5) {
      return FormatInt(code - base) + (code == base ? " (Weakest)" : "") +
             (base == 80 ? ", VLF trap" : "");
    }
  }
  return "code " + FormatInt(code);
}

std::vector<SummaryGroup> SummarizeTable(const ParamTable& table, const Clock& now) {
  const auto number = [&table](ParamKey key) { return IntParam(table, key); };
  const auto text = [&table](ParamKey key) { return ParamAsText(table, key); };
  const Tech tech = TechOf(table);
  return {
      {"Method",
       {{"Survey method", NameOf(kMethods, tech, 1), {"TECH"}},
        {"Mode request", NameOf(kRequests, number("RQST")), {"RQST"}},
        {"Line frequency", text("LFRQ") + " Hz", {"LFRQ"}}}},
      Boxes(table, tech),
      Times(table, tech, now),
      {"Gains and filters",
       {{"E gain", NameOf(kGains, number("EGNC"), kFirstGain), {"EGNC"}},
        {"H gain", NameOf(kGains, number("HGNC"), kFirstGain), {"HGNC"}},
        {"E coupling", NameOf(kCouplings, number("ACDC")), {"ACDC"}},
        {"H coupling", NameOf(kCouplings, number("ACDH")), {"ACDH"}},
        {"Low-pass filter", FilterName(number("LPFR")), {"LPFR"}}}},
      {"Survey",
       {{"Project", ReadTextPieces(table, "SRVY", 4), {"SRVY1"}},
        {"Company", ReadTextPieces(table, "CMPY", 4), {"CMPY1"}},
        {"Client", ReadTextPieces(table, "CLIENT", 4), {"CLIENT1"}},
        {"Survey area", ReadTextPieces(table, "AREA", 4), {"AREA1"}},
        {"Operator", ReadTextPieces(table, "LOUT", 4), {"LOUT1"}},
        {"Line", text("LINE"), {"LINE"}},
        {"Site", text("SITE"), {"SITE"}},
        {"Comment", ReadTextPieces(table, "CMMNT", 8), {"CMMNT1"}}}},
  };
}

}  // namespace orvane
