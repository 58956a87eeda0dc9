// SPDX-License-Identifier: GPL-3.0-or-later
// Values of the table as text and back. Texts are bytes (Latin-1 on screen).
#ifndef ORVANE_TABLE_PARAM_TEXT_H_
#define ORVANE_TABLE_PARAM_TEXT_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "base/result.h"
#include "table/param_entry.h"

namespace orvane {

/// The numbers and times of a value, and back. Bytes that the type does not use are left alone.
std::int32_t IntOf(const ParamValue& value);
double RealOf(const ParamValue& value);
ParamTime TimeOf(const ParamValue& value);
void PutInt(std::int32_t number, ParamValue* value);
void PutReal(double number, ParamValue* value);
void PutTime(const ParamTime& time, ParamValue* value);

/// The characters before the first NUL among the first `limit` bytes.
std::string_view CharactersOf(const ParamValue& value, std::size_t limit);

/// The value as text: decimal integers, reals with 10 significant digits, texts as they are, dotted
/// addresses, times by `FormatParamTime`. A `RawPT` value has no text form and leaves `text` as it
/// is; an unknown type gives an empty text.
void FormatParamValue(ValueType type, const ParamValue& value, std::string* text);

/// Reads a value as leniently as the boxes do: leading digits count, junk gives 0, long texts are
/// cut. A `RawPT` value is not written, an unknown type gives zeros.
void ParseParamValue(std::string_view text, ValueType type, ParamValue* value);

/// Reads a value that must be right: the whole text, and it must fit.
Result<ParamValue> ParseParamValueStrictly(std::string_view text, ValueType type);

/// The name of a value type as the users know it, "IntPT"; empty for `RawPT` and unknown codes.
std::string_view ValueTypeName(std::uint8_t type);

}  // namespace orvane

#endif  // ORVANE_TABLE_PARAM_TEXT_H_
