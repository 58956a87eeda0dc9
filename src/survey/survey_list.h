// SPDX-License-Identifier: GPL-3.0-or-later
// What a survey holds as a list to look through: in words, grouped, sorted and filtered.
#ifndef ORVANE_SURVEY_SURVEY_LIST_H_
#define ORVANE_SURVEY_SURVEY_LIST_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "survey/survey_scan.h"

namespace orvane {

enum class SurveyColumn : std::uint8_t {
  kName,
  kFindings,
  kKind,
  kBox,
  kSite,
  kLine,
  kMethod,
  kStart,
  kLength,
  kChannels,
  kRate,
  kFrequencies,
  kRecords,
  kBad,
  kSaturated,
  kTable,
  kClock,
  kCalibration,
  kFiles,
};
inline constexpr int kSurveyColumns = 19;
std::string_view TitleOf(SurveyColumn column);

enum class SurveyGrouping : std::uint8_t { kNone, kSite, kBox, kDay };

/// A value as text, UTF-8 and printable; empty where it is not known.
std::string SurveyCell(const SurveyRow& row, SurveyColumn column);

/// Rows that belong together. Without a grouping there is one group of all, without a title.
struct SurveyGroup {
  std::string key;                ///< "S0450E"; empty: not known
  std::string title;              ///< "S0450E: 12 recordings"
  std::vector<std::size_t> rows;  ///< by their places in the survey
};

/// Which rows are shown and where. Rows are kept by their places; the survey's own stay as they
/// are.
class SurveyList {
 public:
  /// One without rows that is grouped, sorted and filtered alike.
  SurveyList Emptied() const;
  void Clear();
  /// Puts rows in their places: a merge, whatever there is already.
  void Add(std::span<const SharedRow> rows);
  /// The rows of another list, grouped, sorted and filtered as these were.
  void TakeRows(SurveyList other);
  /// Forgets those before, and has these looked through by `AddFindings()`.
  void SetFindings(SharedFindings findings);
  /// Gives rows the next `most` findings; false: that were all. Rows stay where they are.
  bool AddFindings(std::size_t most);
  /// Puts rows in their places anew, where that depends on findings.
  void Rearrange() { Arrange(); }
  /// Whether rows are where they are, or shown at all, by their findings.
  bool DependsOnFindings() const { return order_ == SurveyColumn::kFindings || !words_.empty(); }
  void SetGrouping(SurveyGrouping grouping);
  void SetOrder(SurveyColumn column, bool is_descending);
  /// Every word of it has to be in one of the row's texts or findings, in any case of letters.
  void SetFilter(std::string_view text);

  const std::vector<SharedRow>& Rows() const { return rows_; }
  const std::vector<SurveyGroup>& Groups() const { return groups_; }
  /// Where a row is shown; none where the filter hides it.
  struct Place {
    std::size_t group = 0;
    std::size_t row = 0;  ///< in the group
  };
  std::optional<Place> PlaceOf(std::size_t row) const { return entries_[row].place; }
  SurveyGrouping Grouping() const { return grouping_; }
  std::size_t Shown() const;
  /// As `SurveyCell()`; of the findings how many there are.
  std::string Cell(std::size_t row, SurveyColumn column) const;
  /// The worst of a row's findings; none without any.
  std::optional<Severity> WorstOf(std::size_t row) const;
  /// All sentences of a row, a line each.
  std::string SentencesOf(std::size_t row) const;

 private:
  struct Entry {
    std::string cells;                    // a line each
    std::vector<std::uint32_t> findings;  // by their places
    std::optional<Place> place;
  };

  void Fill(std::size_t row);
  void AddFinding(const std::string& row);
  std::string_view TextOf(std::size_t row, SurveyColumn column) const;
  void Insert(std::vector<std::size_t> rows);
  void NotePlaces();
  void Arrange();
  bool IsShown(std::size_t row) const;
  std::string GroupOf(std::size_t row) const;
  bool IsBefore(std::size_t a, std::size_t b) const;

  std::vector<SharedRow> rows_;
  std::vector<Entry> entries_;
  SharedFindings findings_ = std::make_shared<const std::vector<SurveyFinding>>();
  std::size_t findings_done_ = 0;
  std::unordered_map<std::string_view, std::size_t> places_;  // of rows, while findings come
  std::vector<SurveyGroup> groups_;
  SurveyGrouping grouping_ = SurveyGrouping::kSite;
  SurveyColumn order_ = SurveyColumn::kStart;
  bool is_descending_ = false;
  std::vector<std::string> words_;  // upper case
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_SURVEY_LIST_H_
