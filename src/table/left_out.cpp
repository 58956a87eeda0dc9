// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/left_out.h"

#include <algorithm>
#include <span>

#include "base/latin1.h"
#include "base/number_text.h"

namespace orvane {

void LeftOutRecords::Add(const ParamEntry& entry, std::uint64_t offset, std::string_view reason) {
  sum = Checksum(std::as_bytes(std::span(entry.key)), sum);
  sum = Checksum(std::as_bytes(std::span(&entry.type, 1)), sum);
  sum = Checksum(std::as_bytes(std::span(entry.value)), sum);
  if (count++ < kMostNamed) {
    const std::string key(entry.key.begin(), std::find(entry.key.begin(), entry.key.end(), '\0'));
    first.push_back({key, offset, std::string(reason)});
  }
}

bool LeftOutRecords::HoldsTheSameAs(const LeftOutRecords& other) const {
  return count == other.count && sum == other.sum;
}

std::string LeftOutRecords::Names(std::size_t most) const {
  std::vector<std::string> names;
  for (const LeftOutRecord& record : first) {
    if (std::find(names.begin(), names.end(), NameOf(record)) == names.end()) {
      names.push_back(NameOf(record));
    }
    if (names.size() > most) {
      break;
    }
  }
  const bool has_more = names.size() > most || count > first.size();
  names.resize(std::min(names.size(), most));
  std::string text;
  for (const std::string& name : names) {
    text += (text.empty() ? "" : ", ") + name;
  }
  return text + (has_more ? " and more" : "");
}

std::string LeftOutRecords::CountText() const {
  return FormatInt(count) + (count == 1 ? " record" : " records");
}

std::string LeftOutRecords::Summary() const {
  return count == 0 ? std::string()
                    : CountText() + (count == 1 ? " is" : " are") + " left out: " + Names();
}

std::string NameOf(const LeftOutRecord& record) {
  return record.key.empty() ? "(no key)" : PrintableLatin1(record.key);
}

}  // namespace orvane
