// SPDX-License-Identifier: GPL-3.0-or-later
// Long texts: chains of `LStPT` entries whose keys differ by their last character.
#include <algorithm>
#include <string>

#include "base/ascii.h"
#include "table/param_table.h"
#include "table/param_text.h"

namespace orvane {
namespace {

constexpr std::size_t kMaxLinks = kMaxLongText / kValueSize;

struct StepRule {
  char last_digit, first_digit;
  char last_upper, first_upper;
  char last_lower, first_lower;
  int step;
};
constexpr StepRule kUp = {'9', '0', 'Z', 'A', 'z', 'a', 1};
constexpr StepRule kDown = {'0', '9', 'A', 'Z', 'a', 'z', -1};

int StepKey(const StepRule& rule, std::string* key) {
  std::string stepped = *key;
  for (std::size_t at = stepped.size(); at-- > 0;) {
    char& c = stepped[at];
    if (!IsAlphanumeric(c)) {
      return 1;
    }
    if (c == rule.last_digit) {
      c = rule.first_digit;
    } else if (c == rule.last_upper) {
      c = rule.first_upper;
    } else if (c == rule.last_lower) {
      c = rule.first_lower;
    } else {
      c = static_cast<char>(c + rule.step);
      *key = stepped;
      return 0;
    }
  }
  return 1;
}

std::size_t LinksFor(std::size_t size) { return (size - 1) / kValueSize + 1; }

}  // namespace

int NextParamKey(std::string* key) { return StepKey(kUp, key); }
int PrevParamKey(std::string* key) { return StepKey(kDown, key); }

bool ParamTable::IsChainHead(ParamKey key) const {
  const ParamEntry* entry = FindParam(key);
  if (entry == nullptr || entry->type != LStPT) {
    return false;
  }
  std::string before = key.Text();
  const ParamEntry* previous = PrevParamKey(&before) == 0 ? FindParam(before) : nullptr;
  return previous == nullptr || previous->type != LStPT;
}

std::vector<std::uint16_t> ParamTable::ChainFrom(ParamKey head, std::size_t limit,
                                                 const std::uint32_t* mask) const {
  std::vector<std::uint16_t> links;
  std::string key = head.Text();
  do {
    const std::uint16_t position = Find(key);
    if (position == kNowhere || entries_[position].type != LStPT ||
        (mask != nullptr && entries_[position].write_mask != *mask)) {
      break;
    }
    links.push_back(position);
  } while (links.size() < limit && NextParamKey(&key) == 0);
  return links;
}

Status ParamTable::GetLongParam(ParamKey key, std::span<char> out) const {
  if (out.empty()) {
    return kLongTextTooLong;
  }
  std::fill(out.begin(), out.end(), '\0');
  if (FindParam(key) == nullptr) {
    return kKeyNotFound;
  }
  if (!IsChainHead(key)) {
    return kTypeMismatch;
  }
  const std::size_t size = std::min(out.size(), kMaxLongText);
  const auto links = ChainFrom(key, LinksFor(size), nullptr);
  const std::size_t capacity = std::min(size, links.size() * kValueSize);
  std::size_t length = 0;
  for (const std::uint16_t link : links) {
    std::string_view share = CharactersOf(entries_[link].value, kValueSize);
    share = share.substr(0, capacity - length);
    std::copy(share.begin(), share.end(), out.begin() + static_cast<std::ptrdiff_t>(length));
    length += share.size();
  }
  if (length == capacity) {
    std::fill(out.begin(), out.end(), '\0');
    return kLongTextTooLong;
  }
  return kOk;
}

Status ParamTable::SetLongParam(ParamKey key, std::string_view text, bool check_permission) {
  text = text.substr(0, text.find('\0'));
  if (text.size() + 1 > kMaxLongText) {
    return kLongTextTooLong;
  }
  const ParamEntry* head = FindParam(key);
  if (head == nullptr) {
    return kKeyNotFound;
  }
  if (!IsChainHead(key)) {
    return kTypeMismatch;
  }
  const std::uint32_t mask = head->write_mask;
  const auto links = ChainFrom(key, LinksFor(text.size() + 1), &mask);
  if (links.size() < LinksFor(text.size() + 1)) {
    return kLongTextTooLong;
  }
  if (const Status status = check_permission ? CheckWritePermission(head) : kOk; status != kOk) {
    return status;
  }
  // kept: of every existing following key, whatever its type, only the first byte is cleared.
  std::string following = key.Text();
  for (std::size_t i = 1; i < kMaxLinks && NextParamKey(&following) == 0; ++i) {
    ParamEntry* entry = FindMutable(following);
    if (entry == nullptr) {
      break;
    }
    entry->value[0] = 0;
  }
  // kept: what comes after the NUL in the last link stays.
  for (std::size_t i = 0; i <= text.size(); ++i) {
    entries_[links[i / kValueSize]].value[i % kValueSize] =
        i < text.size() ? static_cast<std::uint8_t>(text[i]) : 0;
  }
  return kOk;
}

std::size_t ParamTable::LongParamCapacity(ParamKey key) const {
  if (!IsChainHead(key)) {
    return 0;
  }
  const std::uint32_t mask = FindParam(key)->write_mask;
  return ChainFrom(key, kMaxLinks, &mask).size() * kValueSize;
}

}  // namespace orvane
