// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/survey_list.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <set>
#include <tuple>
#include <utility>

#include "base/number_text.h"
#include "survey/findings_list.h"

namespace orvane {
namespace {

constexpr std::array<std::string_view, kSurveyColumns> kTitles = {
    "Recording", "Findings", "Kind",     "Box",         "Site",      "Line",    "Method",
    "Start",     "Length",   "Channels", "Hz",          "Steps, Hz", "Records", "Bad",
    "Saturated", "Table",    "Clock",    "Calibration", "Files"};

std::string CountOf(std::uint64_t count) { return count == 0 ? std::string() : FormatInt(count); }

// "3 d 4 h", "2 h 5 min", "12 min", "30 s".
std::string LengthText(std::int64_t seconds) {
  struct Unit {
    std::int64_t seconds;
    std::string_view name;
  };
  constexpr std::array<Unit, 4> kUnits = {{{86400, " d"}, {3600, " h"}, {60, " min"}, {1, " s"}}};
  std::string text;
  int parts = 0;
  for (const Unit& unit : kUnits) {
    if (const std::int64_t count = seconds / unit.seconds; count > 0 && parts < 2) {
      text.append(text.empty() ? "" : " ").append(FormatInt(count)).append(unit.name);
      ++parts;
    }
    seconds %= unit.seconds;
  }
  return text;
}

std::string SaturatedText(const SurveyRow& row) {
  constexpr double kPercent = 100;
  return row.is_deep ? FormatReal(kPercent * row.SaturatedShare(), 3) + " %" : std::string();
}

std::string FilesText(const SurveyRow& row) {
  std::string text;
  for (const RowFile& file : row.files) {
    text.append(text.empty() ? "" : ", ").append(file.shown);
  }
  return text;
}

std::string TableText(const SurveyRow& row) {
  return row.table_state == TableState::kNotNeeded ? std::string()
                                                   : std::string(TableStateName(row.table_state));
}

// By what a column is sorted where its text does not say it.
std::optional<double> NumberOf(const SurveyRow& row, SurveyColumn column) {
  switch (column) {
    case SurveyColumn::kBox:
      return row.box;
    case SurveyColumn::kStart:
      return static_cast<double>(row.start);
    case SurveyColumn::kLength:
      return static_cast<double>(row.end - row.start);
    case SurveyColumn::kChannels:
      return row.channels;
    case SurveyColumn::kRate:
      return row.rate;
    case SurveyColumn::kFrequencies:
      return row.frequencies.empty() ? 0 : row.frequencies.front();
    case SurveyColumn::kRecords:
      return static_cast<double>(row.records);
    case SurveyColumn::kBad:
      return static_cast<double>(row.bad);
    case SurveyColumn::kSaturated:
      return row.SaturatedShare();
    default:
      return std::nullopt;
  }
}

std::string CountedTitle(std::string_view title, std::size_t count) {
  return std::string(title.empty() ? "not known" : title)
      .append(": ")
      .append(FormatInt(count))
      .append(count == 1 ? " row" : " rows");
}

}  // namespace

std::string_view TitleOf(SurveyColumn column) { return kTitles[static_cast<std::size_t>(column)]; }

std::string SurveyCell(const SurveyRow& row, SurveyColumn column) {
  switch (column) {
    case SurveyColumn::kName:
      return row.name;
    case SurveyColumn::kKind:
      return std::string(RowKindName(row.kind));
    case SurveyColumn::kBox:
      return row.box == 0 ? std::string() : FormatInt(row.box);
    case SurveyColumn::kSite:
      return row.table ? row.table->site : std::string();
    case SurveyColumn::kLine:
      return row.table ? row.table->line : std::string();
    case SurveyColumn::kMethod:
      return row.table ? std::string(MethodName(row.table->method)) : std::string();
    case SurveyColumn::kStart:
      return SurveyTime(row.start);
    case SurveyColumn::kLength:
      return LengthText(row.end - row.start);
    case SurveyColumn::kChannels:
      return row.channels == 0 ? std::string() : FormatInt(row.channels);
    case SurveyColumn::kRate:
      return row.rate > 0 ? FormatReal(row.rate, 7) : std::string();
    case SurveyColumn::kFrequencies:
      return FrequencyText(row);
    case SurveyColumn::kRecords:
      return CountOf(row.records);
    case SurveyColumn::kBad:
      return CountOf(row.bad);
    case SurveyColumn::kSaturated:
      return SaturatedText(row);
    case SurveyColumn::kTable:
      return TableText(row);
    case SurveyColumn::kClock:
      return row.table ? ClockText(*row.table) : std::string();
    case SurveyColumn::kCalibration:
      return CalibrationText(row);
    case SurveyColumn::kFiles:
      return FilesText(row);
    case SurveyColumn::kFindings:
      break;
  }
  return {};
}

void SurveyList::Clear() { *this = Emptied(); }

SurveyList SurveyList::Emptied() const {
  SurveyList list;
  list.grouping_ = grouping_;
  list.order_ = order_;
  list.is_descending_ = is_descending_;
  list.words_ = words_;
  return list;
}

void SurveyList::Add(std::span<const SharedRow> rows) {
  std::vector<std::size_t> fresh;
  for (const SharedRow& row : rows) {
    rows_.push_back(row);
    entries_.emplace_back();
    fresh.push_back(rows_.size() - 1);
    Fill(fresh.back());
  }
  Insert(std::move(fresh));
}

void SurveyList::TakeRows(SurveyList other) {
  rows_ = std::move(other.rows_);
  entries_ = std::move(other.entries_);
  groups_ = std::move(other.groups_);
  findings_ = std::move(other.findings_);
  places_.clear();
  if (std::tie(grouping_, order_, is_descending_, words_) !=
      std::tie(other.grouping_, other.order_, other.is_descending_, other.words_)) {
    Arrange();
  }
}

void SurveyList::SetFindings(SharedFindings findings) {
  findings_ = std::move(findings);
  findings_done_ = 0;
  places_.clear();
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    entries_[row].findings.clear();
    places_[rows_[row]->name] = row;
  }
}

bool SurveyList::AddFindings(std::size_t most) {
  for (; most > 0 && findings_done_ < findings_->size(); --most, ++findings_done_) {
    const SurveyFinding& finding = (*findings_)[findings_done_];
    AddFinding(finding.path);
    for (const std::string& name : finding.also) {
      AddFinding(name);
    }
  }
  const bool is_more = findings_done_ < findings_->size();
  if (!is_more) {
    places_ = {};
  }
  return is_more;
}

void SurveyList::AddFinding(const std::string& row) {
  if (const auto place = places_.find(row); place != places_.end()) {
    entries_[place->second].findings.push_back(static_cast<std::uint32_t>(findings_done_));
  }
}

// Values are printable, so that none has a line's end in it.
void SurveyList::Fill(std::size_t row) {
  std::string cells;
  for (int column = 0; column < kSurveyColumns; ++column) {
    cells.append(SurveyCell(*rows_[row], static_cast<SurveyColumn>(column))).append("\n");
  }
  cells.shrink_to_fit();
  entries_[row].cells = std::move(cells);
}

void SurveyList::SetGrouping(SurveyGrouping grouping) {
  grouping_ = grouping;
  Arrange();
}

void SurveyList::SetOrder(SurveyColumn column, bool is_descending) {
  order_ = column;
  is_descending_ = is_descending;
  Arrange();
}

void SurveyList::SetFilter(std::string_view text) {
  words_ = FilterWords(text);
  Arrange();
}

bool SurveyList::IsShown(std::size_t row) const {
  const Entry& entry = entries_[row];
  return std::all_of(words_.begin(), words_.end(), [&](const std::string& word) {
    return HasWord(entry.cells, word) ||
           std::any_of(entry.findings.begin(), entry.findings.end(), [&](std::uint32_t number) {
             return HasWord((*findings_)[number].sentence, word);
           });
  });
}

std::string SurveyList::GroupOf(std::size_t row) const {
  switch (grouping_) {
    case SurveyGrouping::kSite:
      return Cell(row, SurveyColumn::kSite);
    case SurveyGrouping::kBox:
      return Cell(row, SurveyColumn::kBox);
    case SurveyGrouping::kDay: {
      constexpr std::size_t kDateLength = 10;  // of "2026/11/20 06:00:00"
      return Cell(row, SurveyColumn::kStart).substr(0, kDateLength);
    }
    case SurveyGrouping::kNone:
      break;
  }
  return {};
}

// Rows without a value come last in either order.
bool SurveyList::IsBefore(std::size_t a, std::size_t b) const {
  if (order_ == SurveyColumn::kFindings) {
    if (entries_[a].findings.empty() || entries_[b].findings.empty()) {
      return !entries_[a].findings.empty();
    }
    const auto rank = [this](std::size_t row) {
      return std::pair(*WorstOf(row), -static_cast<std::ptrdiff_t>(entries_[row].findings.size()));
    };
    return is_descending_ ? rank(b) < rank(a) : rank(a) < rank(b);
  }
  const std::string_view text_a = TextOf(a, order_);
  const std::string_view text_b = TextOf(b, order_);
  if (text_a.empty() != text_b.empty()) {
    return text_b.empty();
  }
  if (const auto number = NumberOf(*rows_[a], order_)) {
    const double other = *NumberOf(*rows_[b], order_);
    return is_descending_ ? other < *number : *number < other;
  }
  return is_descending_ ? text_b < text_a : text_a < text_b;
}

void SurveyList::Arrange() {
  groups_.clear();
  std::vector<std::size_t> all(rows_.size());
  std::iota(all.begin(), all.end(), std::size_t{0});
  Insert(std::move(all));
}

// What has no such group comes last.
void SurveyList::Insert(std::vector<std::size_t> rows) {
  std::erase_if(rows, [this](std::size_t row) { return !IsShown(row); });
  const auto is_before = [this](std::size_t a, std::size_t b) { return IsBefore(a, b); };
  std::stable_sort(rows.begin(), rows.end(), is_before);
  std::map<std::string, std::vector<std::size_t>> by_key;
  for (const std::size_t row : rows) {
    by_key[GroupOf(row)].push_back(row);
  }
  for (auto& [key, more] : by_key) {
    auto group = std::lower_bound(
        groups_.begin(), groups_.end(), key, [](const SurveyGroup& one, const std::string& other) {
          return other.empty() ? !one.key.empty() : !one.key.empty() && one.key < other;
        });
    if (group == groups_.end() || group->key != key) {
      group = groups_.insert(group, SurveyGroup{key, {}, {}});
    }
    const auto before = static_cast<std::ptrdiff_t>(group->rows.size());
    group->rows.insert(group->rows.end(), more.begin(), more.end());
    std::inplace_merge(group->rows.begin(), group->rows.begin() + before, group->rows.end(),
                       is_before);
    if (grouping_ != SurveyGrouping::kNone) {
      group->title = CountedTitle(key, group->rows.size());
    }
  }
  NotePlaces();
}

void SurveyList::NotePlaces() {
  for (Entry& entry : entries_) {
    entry.place.reset();
  }
  for (std::size_t group = 0; group < groups_.size(); ++group) {
    for (std::size_t row = 0; row < groups_[group].rows.size(); ++row) {
      entries_[groups_[group].rows[row]].place = {group, row};
    }
  }
}

std::size_t SurveyList::Shown() const {
  return std::accumulate(
      groups_.begin(), groups_.end(), std::size_t{0},
      [](std::size_t sum, const SurveyGroup& group) { return sum + group.rows.size(); });
}

std::string_view SurveyList::TextOf(std::size_t row, SurveyColumn column) const {
  std::string_view rest = entries_[row].cells;
  for (int before = static_cast<int>(column); before > 0; --before) {
    rest.remove_prefix(rest.find('\n') + 1);
  }
  return rest.substr(0, rest.find('\n'));
}

std::string SurveyList::Cell(std::size_t row, SurveyColumn column) const {
  return column == SurveyColumn::kFindings ? CountOf(entries_[row].findings.size())
                                           : std::string(TextOf(row, column));
}

std::optional<Severity> SurveyList::WorstOf(std::size_t row) const {
  std::optional<Severity> worst;
  for (const std::uint32_t number : entries_[row].findings) {
    const Severity severity = (*findings_)[number].severity;
    worst = worst ? std::min(*worst, severity) : severity;
  }
  return worst;
}

std::string SurveyList::SentencesOf(std::size_t row) const {
  std::string sentences;
  for (const std::uint32_t number : entries_[row].findings) {
    sentences.append(sentences.empty() ? "" : "\n").append((*findings_)[number].sentence);
  }
  return sentences;
}

}  // namespace orvane
