// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/values_text.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/ascii.h"
#include "base/latin1.h"
#include "base/number_text.h"
#include "table/param_text.h"
#include "table/table_diff.h"

namespace orvane {
namespace {

// What the dialogs of radio, modem and FTP client ask for under these names.
constexpr std::array<ParamKey, 8> kSecretKeys = {"EKEY",    "PHNE",    "PPPNAME", "PPPPSWD",
                                                 "FTPSUSR", "FTPSPWD", "FTPCUSR", "FTPCPWD"};

constexpr std::string_view kHexMark = "hex:";
constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr std::size_t kHexSize = 2 * kValueSize;

Result<ParamValue> ValueFromHex(std::string_view digits) {
  ParamValue value{};
  const char* at = digits.data();
  bool is_right = digits.size() == kHexSize;
  for (std::size_t i = 0; is_right && i < value.size(); ++i, at += 2) {
    is_right = std::from_chars(at, at + 2, value[i], 16).ptr == at + 2;
  }
  return is_right ? Result<ParamValue>(value) : Failure("has not 32 hexadecimal digits");
}

// As users know it; not every value can be told so.
std::string ShownText(const ParamEntry& entry) {
  std::string text;
  if (entry.type == FltPT) {
    return FormatRealExactly(RealOf(entry.value));
  }
  FormatParamValue(static_cast<ValueType>(entry.type), entry.value, &text);
  return PrintableLatin1(text);
}

void AddComment(std::string_view comment, std::string* text) {
  if (!comment.empty()) {
    text->append("# ").append(PrintableUtf8(comment)).append("\n");
  }
}

void AddLine(const ParamEntry& entry, const ValuesOptions& options, std::string* text) {
  if (options.meaning) {
    AddComment(options.meaning(entry), text);
  }
  const std::string value = ValueAsText(entry);
  const std::string shown = ShownText(entry);
  if (value != shown && !shown.empty()) {
    AddComment("shown as " + shown, text);
  }
  text->append(ParamKey(entry.key).Text()).append("=").append(value).append("\n");
}

void TellLeftOut(const std::vector<ParamKey>& keys, std::string* text) {
  std::string names;
  for (const ParamKey key : keys) {
    names.append(" ").append(key.Text());
  }
  AddComment(names.empty() ? names : "left out:" + names, text);
}

}  // namespace

bool IsSecretKey(ParamKey key) {
  return std::find(kSecretKeys.begin(), kSecretKeys.end(), key) != kSecretKeys.end();
}

bool IsReadOnlyKey(ParamKey key) { return key == "TBVI"; }

std::vector<ParamKey> AllKeys(const ParamTable& table) {
  std::vector<ParamKey> keys;
  ParamKey key;
  for (int position = 0; table.GetParamKey(position, &key) == kOk; ++position) {
    if (table.FindParam(key) != nullptr && std::find(keys.begin(), keys.end(), key) == keys.end()) {
      keys.push_back(key);
    }
  }
  return keys;
}

std::vector<ParamKey> KeysNotDefault(const ParamTable& table) {
  ParamTable defaults;
  return defaults.BuildParamIndex() == kOk ? DifferingKeys(table, defaults) : AllKeys(table);
}

std::string ValueAsText(const ParamEntry& entry) {
  std::string text = ShownText(entry);
  const auto back = ValueFromText(Trimmed(text), static_cast<ValueType>(entry.type));
  return back == entry.value ? text : ValueAsHex(entry.value);
}

std::string ValueAsHex(const ParamValue& value) {
  std::string text(kHexMark);
  for (const std::uint8_t byte : value) {
    text += kHexDigits[byte / 16U];
    text += kHexDigits[byte % 16U];
  }
  return text;
}

Result<ParamValue> ValueFromText(std::string_view text, ValueType type) {
  if (text.starts_with(kHexMark)) {
    return ValueFromHex(text.substr(kHexMark.size()));
  }
  const auto bytes = Latin1FromUtf8(text);
  return bytes ? ParseParamValueStrictly(*bytes, type) : Failure(bytes.Message());
}

ValuesText WriteValues(const ParamTable& table, std::span<const ParamKey> keys,
                       const ValuesOptions& options) {
  ValuesText written;
  for (const ParamKey key : keys) {
    const ParamEntry* entry = table.FindParam(key);
    if (entry == nullptr || IsReadOnlyKey(key)) {
      continue;
    }
    if (IsSecretKey(key) && !options.with_secrets) {
      written.left_out.push_back(key);
    } else {
      AddLine(*entry, options, &written.text);
    }
  }
  TellLeftOut(written.left_out, &written.text);
  return written;
}

}  // namespace orvane
