// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_PARAM_DICTIONARY_H_
#define ORVANE_TABLE_PARAM_DICTIONARY_H_

#include <array>
#include <cstddef>

#include "table/param_entry.h"
#include "table/param_index.h"

namespace orvane {

inline constexpr std::size_t kDictionarySize = 719;

/// Every parameter a receiver knows, in file order: key, type, write mask, default value.
extern const std::array<ParamEntry, kDictionarySize> kParamDictionary;

/// The hash index of the built-in dictionary's keys, computed while compiling by the same code
/// that builds any other table's.
extern const StoredIndex<IndexSize(kDictionarySize)> kBuiltInIndex;

/// Whether `words` are the built-in dictionary's keys, so that `kBuiltInIndex` is their index.
bool AreBuiltInKeys(std::span<const std::uint64_t> words);

}  // namespace orvane

#endif  // ORVANE_TABLE_PARAM_DICTIONARY_H_
