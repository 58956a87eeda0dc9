// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/record_numbers.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "base/number_text.h"

namespace orvane {

void RecordNumbers::Add(std::uint64_t first, std::uint64_t last) {
  auto next = ranges_.upper_bound(first);
  if (next != ranges_.begin()) {
    const auto before = std::prev(next);
    if (before->second >= first - 1) {
      first = before->first;
      last = std::max(last, before->second);
      next = ranges_.erase(before);
    }
  }
  while (next != ranges_.end() && next->first - 1 <= last) {
    last = std::max(last, next->second);
    next = ranges_.erase(next);
  }
  ranges_.emplace_hint(next, first, last);
}

void RecordNumbers::Remove(std::uint64_t number) {
  if (!Has(number)) {
    return;
  }
  const auto range = std::prev(ranges_.upper_bound(number));
  const auto [first, last] = *range;
  ranges_.erase(range);
  if (first < number) {
    ranges_.emplace(first, number - 1);
  }
  if (number < last) {
    ranges_.emplace(number + 1, last);
  }
}

bool RecordNumbers::Has(std::uint64_t number) const {
  const auto next = ranges_.upper_bound(number);
  return next != ranges_.begin() && std::prev(next)->second >= number;
}

std::uint64_t RecordNumbers::Count() const {
  std::uint64_t count = 0;
  for (const auto& [first, last] : ranges_) {
    count += last - first + 1;
  }
  return count;
}

RecordNumbers RecordNumbers::Above(std::uint64_t count) const {
  RecordNumbers above;
  for (const auto& [first, last] : ranges_) {
    if (last > count) {
      above.ranges_.emplace(std::max(first, count + 1), last);
    }
  }
  return above;
}

std::string RecordNumbers::Text() const {
  constexpr std::size_t kMostNamed = 20;
  std::string text;
  std::size_t named = 0;
  for (const auto& [first, last] : ranges_) {
    if (named++ == kMostNamed) {
      return text + " and " + FormatInt(ranges_.size() - kMostNamed) + " more";
    }
    text.append(text.empty() ? "" : ", ").append(FormatInt(first));
    if (last > first) {
      text.append("-").append(FormatInt(last));
    }
  }
  return text;
}

Result<std::uint64_t> RecordNumberOf(std::string_view text) {
  std::uint64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (text.empty() || error != std::errc() || end != text.data() + text.size() || number == 0) {
    constexpr std::size_t kMostShown = 40;
    return Failure(std::string("\"")
                       .append(text.substr(0, kMostShown))
                       .append(text.size() > kMostShown ? "..." : "")
                       .append("\" is not the number of a record"));
  }
  return number;
}

Result<RecordNumbers> RecordNumbersOf(std::string_view list) {
  RecordNumbers numbers;
  for (bool has_more = true; has_more;) {
    const std::size_t end = std::min(list.find(','), list.size());
    const std::string_view part = list.substr(0, end);
    const std::size_t hyphen = std::min(part.find('-'), part.size());
    const auto first = RecordNumberOf(part.substr(0, hyphen));
    const auto last = hyphen < part.size() ? RecordNumberOf(part.substr(hyphen + 1)) : first;
    if (!first || !last) {
      return Failure(first ? last.Message() : first.Message());
    }
    if (*last < *first) {
      return Failure(std::string("\"").append(part).append("\" ends before it begins"));
    }
    numbers.Add(*first, *last);
    has_more = end < list.size();
    list.remove_prefix(has_more ? end + 1 : end);
  }
  return numbers;
}

}  // namespace orvane
