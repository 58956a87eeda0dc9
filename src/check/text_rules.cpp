// SPDX-License-Identifier: GPL-3.0-or-later
// What does not fit: into a file of version 1, into the room of a text.
#include <algorithm>

#include "base/number_text.h"
#include "check/rule.h"
#include "table/param_dictionary.h"
#include "table/param_text.h"
#include "table/tbl_record.h"
#include "table/text_pieces.h"
#include "table/values_text.h"

namespace orvane {
namespace {

constexpr std::size_t kMostNamed = 8;

// The first of some keys, and how many more there are.
std::string FirstKeys(const std::vector<ParamKey>& keys) {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < std::min(keys.size(), kMostNamed); ++i) {
    texts.push_back(keys[i].Text());
  }
  if (keys.size() > kMostNamed) {
    texts.push_back(FormatInt(keys.size() - kMostNamed) + " more");
  }
  return Listed(texts);
}

bool IsCutInV1(const ParamEntry& entry) {
  TblRecordV1 record;
  return FitsTblV1Key(entry) && MakeTblRecordV1(entry, &record) != kOk;
}

void Version1(const Situation& situation, const Teller& tell) {
  if (situation.Int("TBVO") != 1) {
    return;
  }
  std::vector<ParamKey> lost;
  std::vector<ParamKey> cut;
  for (const ParamKey key : KeysNotDefault(situation.table)) {
    const ParamEntry* entry = situation.table.FindParam(key);
    if (!FitsTblV1Key(*entry)) {
      lost.push_back(key);
    } else if (IsCutInV1(*entry)) {
      cut.push_back(key);
    }
  }
  std::string sentence = "Files of version 1";
  if (!lost.empty()) {
    sentence += " have no room for " + FormatInt(lost.size()) + " values: " + FirstKeys(lost);
  }
  if (!cut.empty()) {
    sentence += std::string(lost.empty() ? "" : "; they") + " cut the texts of " + FirstKeys(cut);
  }
  if (!lost.empty() || !cut.empty()) {
    std::vector<ParamKey> keys = {"TBVO"};
    keys.insert(keys.end(), lost.begin(), lost.end());
    keys.insert(keys.end(), cut.begin(), cut.end());
    tell(std::move(keys), std::move(sentence));
  }
}

struct LongText {
  std::string_view prefix;
  std::string_view name;
  int pieces;
};
constexpr std::array<LongText, 6> kLongTexts = {{{"SRVY", "survey", 4},
                                                 {"CMPY", "company", 4},
                                                 {"CLIENT", "client", 4},
                                                 {"AREA", "area", 4},
                                                 {"LOUT", "operator", 4},
                                                 {"CMMNT", "comment", 8}}};

void TextFull(const Situation& situation, const Teller& tell) {
  std::vector<ParamKey> keys;
  std::vector<std::string> names;
  for (const LongText& text : kLongTexts) {
    const auto room = static_cast<std::size_t>(text.pieces) * kMaxTextLength;
    if (ReadTextPieces(situation.table, text.prefix, text.pieces).size() >= room) {
      keys.emplace_back(std::string(text.prefix) + "1");
      names.emplace_back(text.name);
    }
  }
  if (!keys.empty()) {
    tell(std::move(keys), "Fills all its room and was probably cut: " + Listed(names));
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"version-1", Severity::kWarning,
     "TBVO is 1, and values that are not the defaults have keys above 4 characters, which files of "
     "version 1 lack, or texts are longer than their records: 8 characters, 12 of a position.",
     Version1},
    {"text-full", Severity::kHint,
     "Survey, company, client, area or operator fill all 60 characters or the comment its 120: "
     "they were probably cut.",
     TextFull},
});

}  // namespace

std::span<const Rule> TextRules() { return kRules; }

}  // namespace orvane
