// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/table_summary.h"

#include <array>
#include <cstddef>
#include <span>

#include "base/number_text.h"
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

std::string AuxiliaryBoxes(const ParamTable& table) {
  std::string text;
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    if (const std::string serial = Serial(IntParam(table, keys.serial)); !serial.empty()) {
      text += (text.empty() ? "" : ", ") + serial;
    }
  }
  return text;
}

std::vector<ParamKey> AuxiliarySerials() {
  std::vector<ParamKey> serials;
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    serials.emplace_back(keys.serial);
  }
  return serials;
}

SummaryGroup Boxes(const ParamTable& table, Tech tech) {
  const std::int32_t reference = HasReferenceBox(tech) ? IntParam(table, "SNNR") : 0;
  return {"Boxes",
          {{"Main box", Serial(IntParam(table, "SNUM")), {"SNUM"}},
           {"Channels", FormatInt(MainBoxChannels(table)), {kCountedChannels, kSetChannels}},
           {"Transmitter box", Serial(IntParam(table, "SNTX")), {"SNTX"}},
           {"Auxiliary boxes", AuxiliaryBoxes(table), AuxiliarySerials()},
           {"Reference box", Serial(reference), {"SNNR"}}}};
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
