// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_FORMS_EARLY_WRITES_H_
#define ORVANE_FORMS_EARLY_WRITES_H_

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "table/param_table.h"

namespace orvane {

/// What a dialog writes into the table before its OK. Cancel does not undo it, so that the user has
/// to know which keys have other values than before.
class EarlyWrites {
 public:
  explicit EarlyWrites(ParamTable* table) : table_(table) {}

  /// Writes at once; a key that the table lacks is skipped.
  void PutInt(ParamKey key, std::int32_t number);
  void PutReal(ParamKey key, double number);
  void Put(ParamKey key, ValueType type, const ParamValue& value);

  /// To be called before a key is written by other means.
  void Remember(ParamKey key);

  /// The keys, in the order of their first write, whose values differ from those before it.
  std::vector<std::string> Changes() const;

 private:
  ParamTable* table_;
  std::vector<std::pair<ParamKey, ParamValue>> before_;
};

}  // namespace orvane

#endif  // ORVANE_FORMS_EARLY_WRITES_H_
