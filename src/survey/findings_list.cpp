// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/findings_list.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/ascii.h"

namespace orvane {
namespace {

constexpr std::array<std::string_view, kFindingColumns> kTitles = {"Severity", "Box", "File",
                                                                   "Finding"};

// Serial numbers by size: those of fewer digits first.
int Compare(const SurveyFinding& a, const SurveyFinding& b, FindingColumn column) {
  switch (column) {
    case FindingColumn::kSeverity:
      return static_cast<int>(a.severity) - static_cast<int>(b.severity);
    case FindingColumn::kBox:
      return a.box.size() != b.box.size() ? (a.box.size() < b.box.size() ? -1 : 1)
                                          : a.box.compare(b.box);
    case FindingColumn::kFile:
      return a.path.compare(b.path);
    case FindingColumn::kWhat:
      break;
  }
  return a.sentence.compare(b.sentence);
}

bool HasValue(const SurveyFinding& finding, FindingColumn column) {
  return column == FindingColumn::kBox    ? !finding.box.empty()
         : column == FindingColumn::kFile ? !finding.path.empty()
                                          : true;
}

}  // namespace

std::string_view TitleOf(FindingColumn column) { return kTitles[static_cast<std::size_t>(column)]; }

std::vector<std::string> FilterWords(std::string_view text) {
  std::vector<std::string> words;
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperCased);
  for (std::size_t at = upper.find_first_not_of(' '); at != std::string::npos;) {
    const std::size_t end = std::min(upper.find(' ', at), upper.size());
    words.push_back(upper.substr(at, end - at));
    at = upper.find_first_not_of(' ', end);
  }
  return words;
}

bool HasWord(std::string_view text, std::string_view word) {
  return std::search(text.begin(), text.end(), word.begin(), word.end(),
                     [](char a, char b) { return UpperCased(a) == b; }) != text.end();
}

void FindingsList::Set(SharedFindings findings, std::span<const ScanNote> notes) {
  findings_ = std::move(findings);
  notes_.clear();
  for (const ScanNote& note : notes) {
    std::string sentence("not read: ");
    notes_.push_back({"not-read", Severity::kWarning, sentence.append(note.reason), {}, note.path});
  }
  Arrange();
}

void FindingsList::SetOrder(std::optional<FindingColumn> column, bool is_descending) {
  order_ = column;
  is_descending_ = is_descending;
  Arrange();
}

void FindingsList::SetFilter(std::string_view text, std::optional<Severity> severity) {
  words_ = FilterWords(text);
  severity_ = severity;
  Arrange();
}

bool FindingsList::IsShown(std::size_t number) const {
  const SurveyFinding& finding = At(number);
  if (severity_ && finding.severity != *severity_) {
    return false;
  }
  return std::all_of(words_.begin(), words_.end(), [&finding](const std::string& word) {
    return HasWord(finding.id, word) || HasWord(finding.box, word) || HasWord(finding.path, word) ||
           HasWord(finding.sentence, word);
  });
}

// What has no value comes last in either order.
bool FindingsList::IsBefore(std::size_t a, std::size_t b) const {
  const bool has_value = HasValue(At(a), *order_);
  if (has_value != HasValue(At(b), *order_)) {
    return has_value;
  }
  const int order = Compare(At(a), At(b), *order_);
  return is_descending_ ? order > 0 : order < 0;
}

void FindingsList::Arrange() {
  shown_.clear();
  for (std::size_t number = 0; number < InAll(); ++number) {
    if (IsShown(number)) {
      shown_.push_back(number);
    }
  }
  if (order_) {
    std::stable_sort(shown_.begin(), shown_.end(),
                     [this](std::size_t a, std::size_t b) { return IsBefore(a, b); });
  }
}

}  // namespace orvane
