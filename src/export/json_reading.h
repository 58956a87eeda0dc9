// SPDX-License-Identifier: GPL-3.0-or-later
// JSON that people and programs may have changed, read strictly: what is not understood is refused,
// with its place, so that nothing is lost without a word.
#ifndef ORVANE_EXPORT_JSON_READING_H_
#define ORVANE_EXPORT_JSON_READING_H_

#include <filesystem>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "base/result.h"

namespace orvane {

using Json = nlohmann::ordered_json;

/// The largest text that is read: ten times a whole table or the longest schedule.
inline constexpr std::size_t kMostJsonBytes = 1 << 20;

/// An object of any JSON text, however broken. Fails where it is larger than `kMostJsonBytes`, is
/// nested deeper than tables and schedules are, names a member twice, or is no object.
Result<Json> ReadJsonObject(std::string_view text);

/// The bytes of a file of at most `kMostJsonBytes`; fails with a reason without its name.
Result<std::string> LoadJsonText(const std::filesystem::path& path);

/// Fails where `object` lacks one of `needed`, or has what is neither needed nor `optional`, or is
/// not of this format and its version 1 (members "format" and "format_version").
Result<> CheckJsonFormat(const Json& object, std::string_view format,
                         std::initializer_list<std::string_view> needed,
                         std::initializer_list<std::string_view> optional = {});

/// A real as JSON: a number in as many digits, 17 at most, as give the same bits again; "nan",
/// "inf" and "-inf" as texts. The way back takes whole numbers too, and fails for anything else.
Json JsonOfReal(double value);
Result<double> RealFromJson(const Json& value);

/// Fails where `value` is no whole number from `least` to `most`.
Result<std::int64_t> IntFromJson(const Json& value, std::int64_t least, std::int64_t most);

/// As it is written to files: indented, with a newline at the end.
std::string JsonText(const Json& json);

}  // namespace orvane

#endif  // ORVANE_EXPORT_JSON_READING_H_
