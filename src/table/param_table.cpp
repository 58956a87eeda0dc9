// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/param_table.h"

#include <algorithm>
#include <new>

#include "base/number_text.h"
#include "table/param_dictionary.h"
#include "table/param_text.h"

namespace orvane {
namespace {

std::size_t CountEntries(std::span<const ParamEntry> entries) {
  const auto end = std::find_if(entries.begin(), entries.end(), [](const ParamEntry& entry) {
    return entry.key[0] == '\0' || entry.key[0] == '\x03';
  });
  return static_cast<std::size_t>(end - entries.begin());
}

bool IsTextType(ValueType type) { return type == StrPT || type == PosPT; }

// How many bytes a value of the type holds; 16 also for texts.
std::size_t ValueSize(ValueType type) {
  switch (type) {
    case IntPT:
    case RawPT:
      return 4;
    case FltPT:
    case AmxPT:
      return 8;
    default:
      return kValueSize;
  }
}

// The 16 bytes to store: unused ones zero, texts cut.
ParamValue StoredValue(ValueType type, const void* from) {
  ParamValue value{};
  if (IsTextType(type) || type == LStPT) {
    const std::size_t limit = type == LStPT ? kValueSize : kMaxTextLength;
    std::memcpy(value.data(), from, strnlen(static_cast<const char*>(from), limit));
  } else {
    std::memcpy(value.data(), from, ValueSize(type));
  }
  return value;
}

bool IsModeInMask(std::int32_t mode, std::uint32_t mask) {
  return ((mask >> (static_cast<std::uint32_t>(mode) % 32U)) & 1U) != 0;
}

}  // namespace

bool AllocateSlots(std::vector<std::uint16_t>* positions, std::size_t size) {
  try {
    positions->resize(size);
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

ParamTable::ParamTable() : ParamTable(kParamDictionary) {}

ParamTable::ParamTable(std::span<const ParamEntry> entries)
    : entries_(entries.begin(), entries.end()) {
  entries_.emplace_back();
}

Status ParamTable::BuildParamIndex(const LogSink& log, SlotAllocator allocate) {
  shape_ = {};
  positions_ = {};
  mode_position_ = kNowhere;

  std::vector<std::uint64_t> words(CountEntries(entries_));
  for (std::size_t i = 0; i < words.size(); ++i) {
    const ParamKey key(entries_[i].key);
    entries_[i].key = key.Bytes();
    words[i] = key.Word();
  }
  if (words.size() >= kEmptySlot || !allocate(&positions_, IndexSize(words.size()))) {
    positions_ = {};
    return kIndexNotAllocated;
  }
  if (log) {
    log("\nParameter table hash index allocated - Size = 0");  // kept: the size is always told as 0
  }
  if (AreBuiltInKeys(words)) {
    std::copy(kBuiltInIndex.positions.begin(), kBuiltInIndex.positions.end(), positions_.begin());
    shape_ = kBuiltInIndex.shape;
  } else {
    shape_ = SearchIndex(words, positions_);
  }
  hash_ = IndexHash(shape_.multiplier, shape_.size);
  mode_position_ = Find("MODE");
  if (log) {
    log("\nParameter table hash index built - Parameters: " + FormatInt(shape_.count) +
        "  Max run: " + FormatInt(shape_.longest_run));
  }
  return kOk;
}

ParamEntry* ParamTable::FindMutable(ParamKey key) {
  const std::uint16_t position = Find(key);
  return position == kNowhere ? nullptr : &entries_[position];
}

Status ParamTable::GetParam(ParamKey key, ValueType type, void* out) const {
  const ParamEntry* entry = FindParam(key);
  if (entry == nullptr) {
    return kKeyNotFound;
  }
  if (entry->type != type || type > LStPT) {
    return kTypeMismatch;
  }
  if (IsTextType(type)) {
    const std::string_view text = CharactersOf(entry->value, kMaxTextLength);
    auto* bytes = static_cast<char*>(out);
    bytes[kValueSize - 1] = '\0';
    std::copy(text.begin(), text.end(), bytes);
    bytes[text.size()] = '\0';
  } else if (type == LStPT) {
    const ParamValue padded = StoredValue(type, entry->value.data());
    std::memcpy(out, padded.data(), padded.size());
  } else {
    std::memcpy(out, entry->value.data(), ValueSize(type));
  }
  return kOk;
}

Status ParamTable::SetParam(ParamKey key, ValueType type, const void* value,
                            bool check_permission) {
  ParamEntry* entry = FindMutable(key);
  if (entry == nullptr) {
    return kKeyNotFound;
  }
  if (entry->type != type || type > LStPT) {
    return kTypeMismatch;
  }
  const ParamValue stored = StoredValue(type, value);
  const Status status = check_permission ? CheckWritePermission(entry) : kOk;
  if (status == kOk) {
    entry->value = stored;
  }
  return status;
}

Status ParamTable::SetStoredValue(ParamKey key, const ParamValue& value) {
  ParamEntry* entry = FindMutable(key);
  if (entry == nullptr) {
    return kKeyNotFound;
  }
  entry->value = value;
  return kOk;
}

Status ParamTable::GetParamEntry(ParamKey key, ParamEntry* out) const {
  const ParamEntry* entry = FindParam(key);
  if (entry == nullptr) {
    return kKeyNotFound;
  }
  *out = *entry;
  return kOk;
}

Status ParamTable::GetParamKey(int position, ParamKey* out) const {
  if (position < 0 || static_cast<std::size_t>(position) + 1 >= entries_.size()) {
    return kKeyNotFound;
  }
  *out = ParamKey(entries_[static_cast<std::size_t>(position)].key);
  return kOk;
}

Status ParamTable::CheckWritePermission(const ParamEntry* entry) const {
  if (mode_position_ == kNowhere) {
    return kKeyNotFound;
  }
  const ParamEntry& mode = entries_[mode_position_];
  if (mode.type != IntPT) {
    return kTypeMismatch;
  }
  if (entry == nullptr) {
    return kKeyNotFound;
  }
  return IsModeInMask(IntOf(mode.value), entry->write_mask) ? kOk : kWriteNotPermitted;
}

Status ParamTable::CheckModePermission(ParamKey key, int mode) const {
  const ParamEntry* entry = FindParam(key);
  if (entry == nullptr) {
    return kKeyNotFound;
  }
  return IsModeInMask(mode, entry->write_mask) ? kOk : kWriteNotPermitted;
}

Status ParamTable::CheckParamWritable(ParamKey key) const {
  return CheckWritePermission(FindParam(key));
}

ParamTable& DocumentTable() {
  static ParamTable table;
  return table;
}

}  // namespace orvane
