// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/codecs.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/number_text.h"
#include "table/param_text.h"
#include "table/param_time.h"

namespace orvane {
namespace {

int CountOf(const Field& field) {
  return field.widget == Widget::kCheck ? 2 : static_cast<int>(field.choices.size());
}

int IndexOf(const Field& field, std::int32_t stored) {
  const Codec& codec = field.codec;
  std::int64_t index = stored;
  if (codec.kind == CodecKind::kFlag) {
    return stored != 0 ? 1 : 0;
  }
  if (codec.kind == CodecKind::kMap) {
    const auto found = std::find(codec.map.begin(), codec.map.end(), stored);
    index = found == codec.map.end() ? -1 : found - codec.map.begin();
  } else {
    index -= codec.base;
  }
  if (index >= 0 && index < CountOf(field)) {
    return static_cast<int>(index);
  }
  switch (codec.unlisted) {
    case Unlisted::kFirst:
      return 0;
    case Unlisted::kLast:
      return CountOf(field) - 1;
    case Unlisted::kAsIndex:
      return stored >= 0 && stored < CountOf(field) ? stored : kNothingChosen;
    case Unlisted::kNothing:
      break;
  }
  return kNothingChosen;
}

ParamValue IntValue(std::int32_t number) {
  ParamValue value{};
  PutInt(number, &value);
  return value;
}

std::vector<ParamValue> StoredIndex(const Field& field, int index) {
  const Codec& codec = field.codec;
  if (index < 0 || index >= CountOf(field)) {
    return codec.unset == nullptr ? std::vector<ParamValue>()
                                  : std::vector<ParamValue>{IntValue(*codec.unset)};
  }
  if (codec.kind == CodecKind::kMap) {
    return {IntValue(codec.map[static_cast<std::size_t>(index)])};
  }
  return {IntValue(index + codec.base)};
}

std::vector<ParamValue> PiecesOf(std::string_view text, int count) {
  std::vector<ParamValue> pieces(static_cast<std::size_t>(count));
  for (ParamValue& piece : pieces) {
    const std::string_view share = text.substr(0, kMaxTextLength);
    std::copy(share.begin(), share.end(), piece.begin());
    text.remove_prefix(share.size());
  }
  return pieces;
}

std::string JoinedText(const std::vector<ParamValue>& stored) {
  std::string text;
  for (const ParamValue& piece : stored) {
    text += CharactersOf(piece, kMaxTextLength);
  }
  return text;
}

std::string ScaledText(const Field& field, const ParamValue& stored) {
  const double number = field.type == IntPT ? IntOf(stored) : RealOf(stored);
  const double shown = number * field.codec.to_shown;
  return field.codec.decimals < 0 ? FormatReal(shown) : FormatFixed(shown, field.codec.decimals);
}

std::string TextOf(const Field& field, const ParamValue& stored, int hours) {
  if (!field.choices.empty()) {
    const int index = IndexOf(field, IntOf(stored));
    return index == kNothingChosen
               ? std::string()
               : std::string(field.choices[static_cast<std::size_t>(index)].label);
  }
  if (field.codec.kind == CodecKind::kScale) {
    return ScaledText(field, stored);
  }
  if (field.type == AmxPT) {
    return FormatParamTime(ShiftedByHours(TimeOf(stored), hours));
  }
  std::string text;
  FormatParamValue(field.type, stored, &text);
  return text;
}

std::string RangeFault(const Field& field, std::string_view what, std::string_view article) {
  if (std::isinf(field.limits.max)) {
    return "Enter " + std::string(article) + " " + std::string(what) + " not below " +
           FormatReal(field.limits.min) + ".";
  }
  return "Enter " + std::string(article) + " " + std::string(what) + " between " +
         FormatReal(field.limits.min) + " and " + FormatReal(field.limits.max) + ".";
}

std::string NumberFault(const Field& field, const std::string& text) {
  const bool is_integer = field.widget == Widget::kInteger;
  const std::string_view what = is_integer ? "integer" : "number";
  const std::string_view article = is_integer ? "an" : "a";
  const std::optional<double> number =
      is_integer ? std::optional<double>(ParseInt(text)) : ParseReal(text);
  if (!number) {
    return "Enter " + std::string(article) + " " + std::string(what) + ".";
  }
  const bool has_range = field.limits.min < field.limits.max;
  return has_range && (*number < field.limits.min || *number > field.limits.max)
             ? RangeFault(field, what, article)
             : std::string();
}

}  // namespace

std::vector<ParamKey> KeysOf(const Field& field) {
  if (field.key.empty() || field.codec.kind == CodecKind::kUnbound) {
    return {};
  }
  if (field.codec.kind != CodecKind::kPieces) {
    return {ParamKey(field.key)};
  }
  std::vector<ParamKey> keys;
  for (int piece = 1; piece <= field.codec.base; ++piece) {
    keys.emplace_back(std::string(field.key) + FormatInt(piece));
  }
  return keys;
}

Shown ShownOf(const Field& field, const std::vector<ParamValue>& stored, int hours) {
  if (stored.empty()) {
    return {};
  }
  if (HasIndex(field.widget)) {
    return {{}, IndexOf(field, IntOf(stored.front()))};
  }
  return {field.codec.kind == CodecKind::kPieces ? JoinedText(stored)
                                                 : TextOf(field, stored.front(), hours),
          kNothingChosen};
}

std::vector<ParamValue> StoredOf(const Field& field, const Shown& shown, int hours) {
  if (KeysOf(field).empty() || field.widget == Widget::kShown) {
    return {};
  }
  if (HasIndex(field.widget)) {
    return StoredIndex(field, shown.index);
  }
  if (field.codec.kind == CodecKind::kPieces) {
    return PiecesOf(shown.text, field.codec.base);
  }
  ParamValue value{};
  ParseParamValue(shown.text, field.type, &value);
  if (field.codec.kind == CodecKind::kScale) {
    PutReal(RealOf(value) * field.codec.to_stored, &value);
  } else if (field.type == AmxPT) {
    PutTime(ShiftedByHours(TimeOf(value), -std::int64_t{hours}), &value);
  }
  return {value};
}

std::string FaultOf(const Field& field, const Shown& shown) {
  switch (field.widget) {
    case Widget::kInteger:
    case Widget::kReal:
      return NumberFault(field, shown.text);
    case Widget::kTime: {
      ParamTime time;
      return shown.text.empty() || ParseParamTimeStrictly(shown.text, &time)
                 ? std::string()
                 : "Enter a date and time such as 2026/11/21 08:00:00.";
    }
    case Widget::kText:
    case Widget::kPassword:
      break;
    default:
      return {};
  }
  const auto limit = static_cast<std::size_t>(field.limits.max_length);
  return field.codec.kind != CodecKind::kLongText && limit > 0 && shown.text.size() > limit
             ? "Enter no more than " + FormatInt(field.limits.max_length) + " characters."
             : std::string();
}

}  // namespace orvane
