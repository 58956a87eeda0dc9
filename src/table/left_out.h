// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_LEFT_OUT_H_
#define ORVANE_TABLE_LEFT_OUT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/checksum.h"
#include "table/param_entry.h"

namespace orvane {

/// A record of a file that was read and not stored.
struct LeftOutRecord {
  std::string key;           ///< its bytes up to the first NUL
  std::uint64_t offset = 0;  ///< of the record in the file
  std::string reason;
};

/// The records of a file that were not stored, however many there are.
struct LeftOutRecords {
  void Add(const ParamEntry& entry, std::uint64_t offset, std::string_view reason);
  /// Whether keys, types and values are the same, one by one.
  bool HoldsTheSameAs(const LeftOutRecords& other) const;
  /// "NEWKEY, OTHER and more": each key once, at most `most` of them; printable, UTF-8.
  std::string Names(std::size_t most = 5) const;
  /// "1 record", "2 records".
  std::string CountText() const;
  /// "2 records are left out: NEWKEY, OTHER"; empty where none is.
  std::string Summary() const;

  std::vector<LeftOutRecord> first;  ///< in the order of the file
  std::size_t count = 0;             ///< all of them
  std::uint64_t sum = kEmptyChecksum;
  static constexpr std::size_t kMostNamed = 1000;
};

/// The key as it is told to users: printable, UTF-8.
std::string NameOf(const LeftOutRecord& record);

}  // namespace orvane

#endif  // ORVANE_TABLE_LEFT_OUT_H_
