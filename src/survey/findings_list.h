// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_FINDINGS_LIST_H_
#define ORVANE_SURVEY_FINDINGS_LIST_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "survey/survey_findings.h"

namespace orvane {

enum class FindingColumn : std::uint8_t { kSeverity, kBox, kFile, kWhat };
inline constexpr int kFindingColumns = 4;
std::string_view TitleOf(FindingColumn column);

/// Findings as a list to look through: sorted and filtered. What could not be read is among them.
class FindingsList {
 public:
  void Set(SharedFindings findings, std::span<const ScanNote> notes);
  /// None: in the order of the rules.
  void SetOrder(std::optional<FindingColumn> column, bool is_descending);
  /// Every word has to be in rule, box, file or sentence, in any case of letters; with a severity
  /// only such.
  void SetFilter(std::string_view text, std::optional<Severity> severity);

  std::size_t InAll() const { return findings_->size() + notes_.size(); }
  /// Those that are shown, in their order, by their numbers.
  const std::vector<std::size_t>& Shown() const { return shown_; }
  const SurveyFinding& At(std::size_t number) const {
    return number < findings_->size() ? (*findings_)[number] : notes_[number - findings_->size()];
  }

 private:
  void Arrange();
  bool IsShown(std::size_t number) const;
  bool IsBefore(std::size_t a, std::size_t b) const;

  SharedFindings findings_ = std::make_shared<const std::vector<SurveyFinding>>();
  std::vector<SurveyFinding> notes_;
  std::vector<std::size_t> shown_;
  std::optional<FindingColumn> order_;
  bool is_descending_ = false;
  std::vector<std::string> words_;
  std::optional<Severity> severity_;
};

/// The words of a filter, in upper case.
std::vector<std::string> FilterWords(std::string_view text);
/// Whether a word of upper case is in a text of any.
bool HasWord(std::string_view text, std::string_view word);

}  // namespace orvane

#endif  // ORVANE_SURVEY_FINDINGS_LIST_H_
