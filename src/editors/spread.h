// SPDX-License-Identifier: GPL-3.0-or-later
// The boxes of a spread and their channels, as the site setup dialogs edit them.
#ifndef ORVANE_EDITORS_SPREAD_H_
#define ORVANE_EDITORS_SPREAD_H_

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "editors/box_list.h"
#include "editors/channel_keys.h"
#include "table/param_table.h"

namespace orvane {

/// Columns of the box grid.
enum BoxColumn : int { kBoxType, kBoxSerial, kBoxChannels, kBoxControl, kBoxColumns };
inline constexpr std::array<std::string_view, kBoxColumns> kBoxColumnNames = {
    "Box Type", "Box SN", "Channels", "Mode Control"};

/// A working copy of the spread. Boxes and channels are counted from 0. Cells are texts as shown;
/// only edited cells, and those of boxes and channels that moved to other keys, are written: the
/// bytes of all others stay.
class Spread {
 public:
  explicit Spread(ParamTable* table);

  int BoxCount() const { return static_cast<int>(boxes_.size()); }
  const BoxRow& Box(int box) const { return At(box).row; }
  /// " Aux. Box" and the like.
  static std::string_view LabelOf(BoxKind kind);
  /// "Local Box 2417": kind and serial number.
  std::string BoxName(int box) const;
  /// The title above the channels of a box: "Channels of the box in row 2 (Local Box)"; without a
  /// box "Channels".
  std::string ChannelsTitle(int box) const;
  /// Where the local box's channel count comes from, if not from the key that a change is stored
  /// in.
  std::string ChannelCountNote() const;
  std::string BoxCell(int box, BoxColumn column) const;
  /// The key that a cell is kept under; empty where it is under none.
  ParamKey KeyOfBox(int box, BoxColumn column) const;
  ParamKey KeyOfChannel(int box, int channel, ChannelColumn column) const;
  /// Where a channel's key is kept; none where no box of the spread has it.
  struct ChannelPlace {
    int box;
    int channel;
    ChannelColumn column;
  };
  std::optional<ChannelPlace> PlaceOf(ParamKey key) const;
  bool CanEditBox(int box, BoxColumn column) const;
  /// Why the text is refused; empty once it is taken.
  std::string EditBox(int box, BoxColumn column, std::string_view text);

  /// A kind of box that a row can be inserted for.
  struct InsertChoice {
    BoxKind kind;
    std::string_view label;
    bool is_enabled;
  };
  /// What to choose from where a row is inserted; of one nothing is asked, without any nothing can
  /// be inserted.
  std::vector<InsertChoice> InsertChoices() const;
  /// Adds an auxiliary box after the others, or the reference box at the end. The new row.
  int InsertBox(BoxKind kind);
  bool CanDeleteBox(int box) const;
  void DeleteBox(int box);

  int ChannelCount(int box) const;
  std::string ChannelCell(int box, int channel, ChannelColumn column) const;
  /// A number as it is stored, with all its digits; none where the box has no such column.
  std::optional<double> ChannelReal(int box, int channel, ChannelColumn column) const;
  bool CanEditChannel(int box, ChannelColumn column) const;
  std::string EditChannel(int box, int channel, ChannelColumn column, std::string_view text);
  bool CanInsertChannel(int box) const;
  /// An empty channel before `channel`, or at the end; the main box records it.
  void InsertChannel(int box, int channel);
  bool CanDeleteChannel(int box) const;
  void DeleteChannel(int box, int channel);

  enum Electrode { kPositive, kNegative };
  /// Fills the position cells of an electrode, in metres.
  void PlaceElectrode(int box, int channel, Electrode electrode, double north, double east);

  /// Runs `SaveBoxList`, then writes the channels.
  void Save();
  /// The same into a copy of its table; all is to be saved later still.
  void SaveTo(ParamTable* copy) const;

 private:
  struct Cell {
    ParamValue stored{};
    bool is_read = false;    // the key exists
    bool is_edited = false;  // or moved: to be written
  };
  using ChannelCells = std::array<Cell, kChannelColumns>;
  struct BoxState {
    BoxRow row;
    int slot = 0;                        // of an auxiliary box as loaded, 1 to 5; 0: new
    std::vector<ChannelCells> channels;  // as many as the keys of the kind hold
  };

  /// Of an auxiliary box, as it is saved: 1 to 5; else 0.
  int SlotOf(int box) const;
  bool CanInsert(BoxKind kind) const;
  const BoxState& At(int box) const { return boxes_[static_cast<std::size_t>(box)]; }
  BoxState& At(int box) { return boxes_[static_cast<std::size_t>(box)]; }
  static BoxKind KindOf(const BoxState& box) { return static_cast<BoxKind>(box.row.kind); }
  std::vector<ChannelCells> ReadChannels(BoxKind kind, int slot) const;
  void SetCell(int box, int channel, ChannelColumn column, const ParamValue& value);
  void WriteChannels(const BoxState& box, int slot);

  ParamTable* table_;
  std::vector<BoxState> boxes_;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_SPREAD_H_
