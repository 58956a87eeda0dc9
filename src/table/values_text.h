// SPDX-License-Identifier: GPL-3.0-or-later
// Values of a table as KEY=VALUE lines for people, mail and version control. What is written here
// and read by value_lines.h gives the same stored bytes. docs/formats/values.md has the format.
#ifndef ORVANE_TABLE_VALUES_TEXT_H_
#define ORVANE_TABLE_VALUES_TEXT_H_

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "table/param_table.h"

namespace orvane {

/// Whether the value is a password, an encryption key, a user's name or a phone number.
bool IsSecretKey(ParamKey key);

/// Whether the key is about the file and not of the survey, so that no line can set it.
bool IsReadOnlyKey(ParamKey key);

/// The keys of a table that are found, each once, in its order.
std::vector<ParamKey> AllKeys(const ParamTable& table);
/// Those of them whose values differ from the built-in defaults.
std::vector<ParamKey> KeysNotDefault(const ParamTable& table);

struct ValuesOptions {
  bool with_secrets = false;
  /// What the comment above a line says of the value, in UTF-8; nothing where it is empty.
  std::function<std::string(const ParamEntry& entry)> meaning = {};
};

struct ValuesText {
  std::string text;                ///< UTF-8, each line ends with a newline
  std::vector<ParamKey> left_out;  ///< secrets that were not asked for
};

/// One line for each of the keys that the table has, read-only ones excepted.
ValuesText WriteValues(const ParamTable& table, std::span<const ParamKey> keys,
                       const ValuesOptions& options = {});

/// A value in UTF-8: as users know it, reals in their shortest exact form, or "hex:" and 32 digits
/// where such a text would not give the same 16 bytes.
std::string ValueAsText(const ParamEntry& entry);

/// "hex:" and the 32 digits of any value.
std::string ValueAsHex(const ParamValue& value);

/// The way back, for a text without blanks around it; fails where it is not wholly right.
Result<ParamValue> ValueFromText(std::string_view text, ValueType type);

}  // namespace orvane

#endif  // ORVANE_TABLE_VALUES_TEXT_H_
