// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_STACK_VIEW_H_
#define ORVANE_TIMESERIES_STACK_VIEW_H_

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "base/result.h"
#include "timeseries/robust.h"
#include "timeseries/stack_csv.h"

namespace orvane {

/// What a logarithmic axis draws of a value: its magnitude, negative ones as hollow marks.
struct LogValue {
  double magnitude = 0;
  bool is_hollow = false;
};
inline LogValue LogValueOf(double value) { return {value < 0 ? -value : value, value < 0}; }

/// Stack results on display, all but the drawing. The format names no channel, window, voltage or
/// phase: records are grouped by their label, and a curve is the value of each item over the item's
/// number. Items are 8 bytes apart in the time domain and 4 in the frequency domain, whatever
/// size the file gives them, as in its text. Reads a file whole: memory is a few times its size.
class StackView {
 public:
  /// Fails, with a reason that does not name the file, where it cannot be read or has no record.
  Result<> Open(const std::filesystem::path& path);

  /// A byte offset where the file has a record that is cut; 0: there is none.
  std::uint64_t CutAt() const { return cut_at_; }

  /// The one whose size most records' items have, 8 or 4 bytes; the frequency domain where neither
  /// is. Taken when a file is opened; the user's choice lasts until then.
  StackDomain Guess() const { return guess_; }
  StackDomain Domain() const { return domain_; }
  void SetDomain(StackDomain domain) { domain_ = domain; }
  /// Records whose items have not the size of the domain's.
  std::size_t OtherSizes() const;
  /// Of an item: 0 the first float, 1 the second. The frequency domain has the first alone.
  void SetPart(std::size_t part) { part_ = part; }
  std::size_t Part() const { return domain_ == StackDomain::kTime ? part_ : 0; }

  struct Record {
    ParamTime time;
    double value26 = 0;         ///< the 64-bit float at offset 26
    float extension_value = 0;  ///< the 32-bit float at offset 16 of the extension
    std::uint8_t item_size = 0;
    std::uint8_t item_count = 0;
    std::uint64_t first = 0;  ///< of its floats
    std::size_t floats = 0;   ///< whole ones
  };
  struct Group {
    std::string label;                 ///< as `PrintableLatin1()`
    std::vector<std::size_t> records;  ///< positions in the file, from 0
  };
  /// In the order in which their labels come first.
  const std::vector<Group>& Groups() const { return groups_; }
  const Record& At(std::size_t record) const { return records_[record]; }
  std::size_t Count() const { return records_.size(); }

  /// Items of a record, of a group the most that a record of it has.
  std::size_t Items(std::size_t record) const;
  std::size_t ItemsOfGroup(const Group& group) const;
  /// The value of an item, from 0; not a number where the record has no such item.
  double Value(std::size_t record, std::size_t item) const;
  /// Of each item, over the records of a group: median and 1.48 MAD of the finite values.
  std::vector<RobustStats> Summary(const Group& group) const;

  /// One item against a number of its record.
  enum class Against { kValue26, kExtension };
  struct Point {
    double x = 0;
    double y = 0;
    std::size_t record = 0;
  };
  /// Finite points of the records of a group that have the item.
  std::vector<Point> Points(const Group& group, std::size_t item, Against against) const;

  /// Where items stand on the axis: their numbers from 1, or the centres of windows, in ms, as far
  /// as they go. The caller makes them by the rule for windows; the file has none.
  void SetWindowCentres(std::vector<double> centres) { centres_ = std::move(centres); }
  /// Not a number where an item has no window.
  double ItemPlace(std::size_t item) const;
  /// "Item", or the axis in ms with "windows by Orvane's rule, not the box's".
  std::string AxisText() const;

 private:
  void Read(const StackRecord& record);
  std::size_t ItemFloats() const { return domain_ == StackDomain::kTime ? 2 : 1; }

  std::vector<Record> records_;
  std::vector<float> floats_;
  std::vector<Group> groups_;
  std::uint64_t cut_at_ = 0;
  StackDomain guess_ = StackDomain::kFrequency;
  StackDomain domain_ = StackDomain::kFrequency;
  std::size_t part_ = 0;
  std::vector<double> centres_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_STACK_VIEW_H_
