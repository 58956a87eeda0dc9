// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TABLE_PARAM_TABLE_H_
#define ORVANE_TABLE_PARAM_TABLE_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/status.h"
#include "table/param_entry.h"
#include "table/param_index.h"
#include "table/param_key.h"

namespace orvane {

/// Takes the few diagnostic lines of the table and its files; each begins with a newline.
using LogSink = std::function<void(std::string_view)>;

/// Gives `positions` (one for each slot) the size asked for; false when there is no memory.
using SlotAllocator = bool (*)(std::vector<std::uint16_t>* positions, std::size_t size);
bool AllocateSlots(std::vector<std::uint16_t>* positions, std::size_t size);

/// Longest text of a chain of `LStPT` entries with its NUL: 20 links of 16 bytes.
inline constexpr std::size_t kMaxLongText = 320;

/// The parameters of a box: a fixed list of entries and a hash index from key to position. Keys,
/// types, masks and order never change, values do. The index must be built before any lookup;
/// until then every key is unknown (11). A copy is a snapshot with an index of its own.
///
/// A key that is there twice is found at its first position only; the second copy is reachable by
/// position and is never read or written.
class ParamTable {
 public:
  /// The built-in dictionary with its defaults.
  ParamTable();
  /// Any list of entries. Those from the first key on that begins with a byte 0 or 3 are not
  /// indexed: they are reachable by position only.
  explicit ParamTable(std::span<const ParamEntry> entries);

  /// 0, or 999 when the index could not be allocated: then there is none. Releases the old one.
  Status BuildParamIndex(const LogSink& log = {}, SlotAllocator allocate = AllocateSlots);
  const IndexShape& Shape() const { return shape_; }

  const ParamEntry* FindParam(ParamKey key) const {
    const std::uint16_t position = Find(key);
    return position == kNowhere ? nullptr : &entries_[position];
  }

  /// Copies the value out by its type: 4 bytes (`IntPT`, `RawPT`), 8 (`FltPT`, `AmxPT`), up to 16
  /// for the others. Output byte 15 of a text is always set to 0, the bytes between its NUL and
  /// that are left alone. 0, 11, or 12 where the entry has another type.
  Status GetParam(ParamKey key, ValueType type, void* out) const;

  /// Replaces the whole value on status 0, else leaves it. Texts are cut to 15 characters (16 for
  /// `LStPT`); `IPAPT` reads 16 bytes. 0, 11, 12, or with `check_permission` 183.
  Status SetParam(ParamKey key, ValueType type, const void* value, bool check_permission = false);

  /// Stores the 16 bytes as they are, such as those of a snapshot: also what `SetParam` would cut,
  /// because a shortened long text leaves characters after its NULs. 0 or 11.
  Status SetStoredValue(ParamKey key, const ParamValue& value);

  Status GetParamEntry(ParamKey key, ParamEntry* out) const;
  /// The key at a position from 0; 11 outside the table and at its terminator.
  Status GetParamKey(int position, ParamKey* out) const;

  /// May the entry be changed while "MODE" is what it is? 0, 11, 12 ("MODE" is no integer), 183.
  Status CheckWritePermission(const ParamEntry* entry) const;
  Status CheckModePermission(ParamKey key, int mode) const;
  Status CheckParamWritable(ParamKey key) const;

  /// The text of a chain of `LStPT` entries by the key of its first link, NUL-terminated. 12 where
  /// the key is no chain's head, 188 where the text does not fit or `out` is empty.
  Status GetLongParam(ParamKey key, std::span<char> out) const;
  /// 188 where the text with its NUL is longer than the chain of links with the head's write mask.
  Status SetLongParam(ParamKey key, std::string_view text, bool check_permission = false);

  /// Bytes that `SetLongParam` can store under `key`, NUL included; 0 where it is no chain's head.
  std::size_t LongParamCapacity(ParamKey key) const;

 private:
  static constexpr std::uint16_t kNowhere = 0xFFFF;

  std::uint16_t Find(ParamKey key) const {
    if (shape_.size == 0) {
      return kNowhere;
    }
    std::uint32_t slot = hash_.Slot(key.Word());
    for (;;) {
      const std::uint16_t position = positions_[slot];
      if (position == kEmptySlot || WordAt(position) == key.Word()) {
        return position;  // an empty slot holds kNowhere
      }
      slot = hash_.Next(slot);
    }
  }
  std::uint64_t WordAt(std::size_t position) const {
    std::uint64_t word = 0;
    std::memcpy(&word, entries_[position].key.data(), sizeof word);
    return word;
  }
  ParamEntry* FindMutable(ParamKey key);
  bool IsChainHead(ParamKey key) const;
  /// Positions of at most `limit` links from the head on, all with `mask` where one is given.
  std::vector<std::uint16_t> ChainFrom(ParamKey head, std::size_t limit,
                                       const std::uint32_t* mask) const;

  std::vector<ParamEntry> entries_;  // the terminator last
  std::vector<std::uint16_t> positions_;
  IndexShape shape_;
  IndexHash hash_;
  std::uint16_t mode_position_ = kNowhere;
};
static_assert(std::endian::native == std::endian::little, "WordAt reads keys as words");

/// Steps the last character of a key up or down within its digits or letters, with carry or borrow
/// into the one before. 0, or 1 and the key unchanged where that is impossible.
int NextParamKey(std::string* key);
int PrevParamKey(std::string* key);

/// The process-wide table that the document and every editor work on.
ParamTable& DocumentTable();

}  // namespace orvane

#endif  // ORVANE_TABLE_PARAM_TABLE_H_
