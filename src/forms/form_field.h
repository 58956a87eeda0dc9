// SPDX-License-Identifier: GPL-3.0-or-later
// What a control of a dialog is: data, so that a dialog is a table of fields and a few rules.
#ifndef ORVANE_FORMS_FORM_FIELD_H_
#define ORVANE_FORMS_FORM_FIELD_H_

#include <span>
#include <string_view>

#include "table/param_entry.h"

namespace orvane {

/// What a control looks like, and whether it exchanges a text or the index of a choice.
enum class Widget {
  kText,      ///< text: one line
  kPassword,  ///< text: not echoed
  kInteger,   ///< text: a whole number
  kReal,      ///< text: a number
  kTime,      ///< text: a time
  kPath,      ///< text: a folder or file of this computer, in UTF-8
  kShown,     ///< text: not for editing; with choices the label of the one that is stored
  kRadios,    ///< index: a group of buttons, each with a control number of its own
  kCheck,     ///< index: 0 or 1
  kCombo,     ///< index: a list
};

constexpr bool HasIndex(Widget widget) {
  return widget == Widget::kRadios || widget == Widget::kCheck || widget == Widget::kCombo;
}

inline constexpr int kNothingChosen = -1;

/// One button of a group (with its control number) or one item of a list.
struct Choice {
  std::string_view label;
  int control = 0;
};

/// How a stored value becomes what is shown, and back.
enum class CodecKind {
  kUnbound,   ///< belongs to no key
  kPlain,     ///< the value's text form, or an index that is the stored number
  kOffset,    ///< stored number = index + base
  kMap,       ///< stored number = map[index]
  kFlag,      ///< index 1 for any stored number but 0
  kScale,     ///< shown number = stored x to_shown, stored = shown x to_stored
  kPieces,    ///< one text in `base` keys of 15 characters; the key is their prefix
  kLongText,  ///< one text in a chain of entries; the key is its first link
};

/// What a stored number without a choice of its own shows.
enum class Unlisted { kNothing, kFirst, kLast, kAsIndex };

struct Codec {
  CodecKind kind = CodecKind::kPlain;
  int base = 0;
  std::span<const int> map = {};
  Unlisted unlisted = Unlisted::kNothing;
  double to_shown = 1;
  double to_stored = 1;
  int decimals = -1;  ///< of `kScale`: this many after the point; below 0 the shorter form
  /// Written by the choice shown even where nobody touched it, so that a value that shows as
  /// another becomes that one.
  bool normalizes = false;
  /// What is written with nothing chosen; without it nothing is.
  const int* unset = nullptr;
};

constexpr Codec Unbound() { return {.kind = CodecKind::kUnbound}; }
constexpr Codec Offset(int base, Unlisted unlisted = Unlisted::kNothing) {
  return {.kind = CodecKind::kOffset,
          .base = base,
          .unlisted = unlisted,
          .normalizes = unlisted != Unlisted::kNothing};
}
constexpr Codec Map(std::span<const int> map, Unlisted unlisted, const int* unset = nullptr) {
  return {.kind = CodecKind::kMap,
          .map = map,
          .unlisted = unlisted,
          .normalizes = true,
          .unset = unset};
}
constexpr Codec Flag() { return {.kind = CodecKind::kFlag, .normalizes = true}; }
constexpr Codec Scale(double to_shown, double to_stored) {
  return {.kind = CodecKind::kScale, .to_shown = to_shown, .to_stored = to_stored};
}
/// A number, whole or not, that is only shown.
constexpr Codec ShownScaled(double to_shown, int decimals = -1) {
  return {.kind = CodecKind::kScale, .to_shown = to_shown, .decimals = decimals};
}
constexpr Codec LongText() { return {.kind = CodecKind::kLongText}; }
constexpr Codec Pieces(int count) { return {.kind = CodecKind::kPieces, .base = count}; }

/// What a user may enter. Numbers: a range where `min` < `max`; `max` may be infinite. Texts:
/// `max_length` characters where not 0; a long text is not refused beyond them, only not taken by
/// its line.
struct Limits {
  double min = 0;
  double max = 0;
  int max_length = 0;
};

struct Field {
  int control;  ///< control number; of a group that of its first button
  Widget widget;
  std::string_view label;
  std::string_view key = {};  ///< a literal; of `kPieces` the prefix
  ValueType type = IntPT;
  Codec codec = {};
  Limits limits = {};
  std::span<const Choice> choices = {};
  std::string_view group = {};    ///< names the control together with its label where labels repeat
  std::string_view meaning = {};  ///< names the key where the label alone would not
  std::string_view unit = {};     ///< of the stored value, where the label has none or another
};

/// A field whose key is named by more than its label.
constexpr Field Meaning(std::string_view meaning, Field field) {
  field.meaning = meaning;
  return field;
}
/// A field whose stored value has a unit that its label does not have.
constexpr Field StoredIn(std::string_view unit, Field field) {
  field.unit = unit;
  return field;
}

/// The commonest fields.
constexpr Field IntegerField(int control, std::string_view label, std::string_view key) {
  return {control, Widget::kInteger, label, key, IntPT};
}
constexpr Field RealField(int control, std::string_view label, std::string_view key) {
  return {control, Widget::kReal, label, key, FltPT};
}
constexpr Field TextField(int control, std::string_view label, std::string_view key,
                          int max_length) {
  return {control, Widget::kText, label, key, StrPT, {}, {.max_length = max_length}};
}

}  // namespace orvane

#endif  // ORVANE_FORMS_FORM_FIELD_H_
