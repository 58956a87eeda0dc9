// SPDX-License-Identifier: GPL-3.0-or-later
// Tables for tests of editors: set and read by text, filled at random, compared.
#ifndef ORVANE_TESTS_SUPPORT_TABLE_HELP_H_
#define ORVANE_TESTS_SUPPORT_TABLE_HELP_H_

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <string>
#include <string_view>

#include "table/param_table.h"
#include "table/param_text.h"

namespace orvane::testing {

inline ParamTable NewTable() {
  ParamTable table;
  EXPECT_EQ(table.BuildParamIndex(), kOk);
  return table;
}

inline void Set(ParamTable* table, ParamKey key, std::string_view text) {
  const auto type = static_cast<ValueType>(table->FindParam(key)->type);
  const auto value = ParseParamValueStrictly(text, type);
  ASSERT_EQ(value.Message(), "") << key.Text();
  ASSERT_EQ(table->SetParam(key, type, value->data()), kOk);
}

/// "KEY=text KEY=text"; "_" stands for a blank in a text.
inline void SetAll(ParamTable* table, std::string_view settings) {
  while (!settings.empty()) {
    const std::string_view setting = settings.substr(0, settings.find(' '));
    const std::size_t equals = setting.find('=');
    std::string text(setting.substr(equals + 1));
    std::replace(text.begin(), text.end(), '_', ' ');
    Set(table, setting.substr(0, equals), text);
    settings.remove_prefix(std::min(settings.size(), setting.size() + 1));
  }
}

inline std::string Get(const ParamTable& table, ParamKey key) {
  std::string text;
  const ParamEntry* entry = table.FindParam(key);
  FormatParamValue(static_cast<ValueType>(entry->type), entry->value, &text);
  return text;
}

/// The values of several keys, with a blank between them.
inline std::string Values(const ParamTable& table, std::string_view keys) {
  std::string values;
  for (std::size_t at = 0; at < keys.size();) {
    const std::string_view key = keys.substr(at, keys.find(' ', at) - at);
    values.append(at == 0 ? "" : " ").append(Get(table, key));
    at += key.size() + 1;
  }
  return values;
}

/// Every value random: small and huge integers, doubles of any digits, texts of any bytes, times
/// that need not be valid.
inline ParamTable RandomTable(unsigned seed) {
  ParamTable table = NewTable();
  std::mt19937 random(seed);
  ParamKey key;
  for (int position = 0; table.GetParamKey(position, &key) == kOk; ++position) {
    ParamValue value{};
    const auto type = static_cast<ValueType>(table.FindParam(key)->type);
    if (type == IntPT) {
      PutInt(random() % 4 == 0 ? static_cast<std::int32_t>(random())
                               : static_cast<std::int32_t>(random() % 24) - 3,
             &value);
    } else if (type == FltPT) {
      PutReal(std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 80) - 60),
              &value);
    } else {
      for (std::size_t i = 0; i < (type == AmxPT ? 8U : 15U); ++i) {
        value[i] = static_cast<std::uint8_t>(random() % (type == AmxPT ? 70 : 256));
      }
    }
    EXPECT_EQ(table.SetParam(key, type, value.data()), kOk);
  }
  return table;
}

/// The keys whose stored bytes differ.
inline std::set<std::string> Changes(const ParamTable& before, const ParamTable& after) {
  std::set<std::string> keys;
  ParamKey key;
  for (int position = 0; before.GetParamKey(position, &key) == kOk; ++position) {
    if (before.FindParam(key)->value != after.FindParam(key)->value) {
      keys.insert(key.Text());
    }
  }
  return keys;
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_TABLE_HELP_H_
