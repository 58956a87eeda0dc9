// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/spread.h"

#include <algorithm>

#include "base/number_text.h"
#include "table/box_keys.h"
#include "table/param_access.h"
#include "table/tech.h"

namespace orvane {
namespace {

// Which auxiliary slots have a box, in the order of the list.
std::vector<int> OccupiedSlots(const ParamTable& table) {
  std::vector<int> occupied;
  int slot = 0;
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    ++slot;
    if (IntParam(table, keys.serial) != 0) {
      occupied.push_back(slot);
    }
  }
  return occupied;
}

std::string NumberFault(bool is_integer) {
  return is_integer ? "Enter an integer." : "Enter a number.";
}

std::string CellText(const ParamValue& stored, const ChannelColumnInfo& info) {
  if (info.to_shown != 1) {
    return FormatReal(RealOf(stored) * info.to_shown);
  }
  std::string text;
  FormatParamValue(info.type, stored, &text);
  return text;
}

}  // namespace

Spread::Spread(ParamTable* table) : table_(table) {
  BoxRows rows;
  const int count = LoadBoxList(*table_, &rows);
  const std::vector<int> occupied = OccupiedSlots(*table_);
  std::size_t auxiliary = 0;
  for (int i = 0; i < count; ++i) {
    BoxState box;
    box.row = rows[static_cast<std::size_t>(i)];
    if (box.row.kind == kAuxiliaryBox && auxiliary < occupied.size()) {
      box.slot = occupied[auxiliary++];
    }
    box.channels = ReadChannels(KindOf(box), box.slot);
    boxes_.push_back(std::move(box));
  }
}

std::string Spread::BoxName(int box) const {
  return std::string(Trimmed(LabelOf(KindOf(At(box))))) + " " + FormatInt(Box(box).serial);
}

std::string Spread::ChannelsTitle(int box) const {
  if (box < 0) {
    return "Channels";
  }
  return "Channels of the box in row " + FormatInt(box + 1) + " (" +
         std::string(Trimmed(LabelOf(KindOf(At(box))))) + ")";
}

std::string Spread::ChannelCountNote() const {
  return !HasCountedChannels(*table_)
             ? ""
             : "From \"TCHN\", which the box counted; a change is stored in \"NCHN\"";
}

std::string_view Spread::LabelOf(BoxKind kind) {
  switch (kind) {
    case kTransmitterBox:
      return "Transmitter";
    case kLocalBox:
      return " Local Box";
    case kReferenceBox:
      return " Ref. Box";
    case kAuxiliaryBox:
      break;
  }
  return " Aux. Box";
}

std::vector<Spread::ChannelCells> Spread::ReadChannels(BoxKind kind, int slot) const {
  std::vector<ChannelCells> channels(static_cast<std::size_t>(MaxChannels(kind)));
  if (kind == kAuxiliaryBox && slot == 0) {
    return channels;  // a new box has none yet
  }
  for (std::size_t channel = 0; channel < channels.size(); ++channel) {
    for (int column = 0; column < kChannelColumns; ++column) {
      const auto key =
          ChannelKey(kind, slot, static_cast<int>(channel) + 1, static_cast<ChannelColumn>(column));
      const ParamEntry* entry = key.IsEmpty() ? nullptr : table_->FindParam(key);
      if (entry != nullptr && entry->type == InfoOf(static_cast<ChannelColumn>(column)).type) {
        Cell& cell = channels[channel][static_cast<std::size_t>(column)];
        cell.stored = entry->value;
        cell.is_read = true;
      }
    }
  }
  return channels;
}

std::string Spread::BoxCell(int box, BoxColumn column) const {
  const BoxRow& row = Box(box);
  switch (column) {
    case kBoxType:
      return std::string(LabelOf(KindOf(At(box))));
    case kBoxSerial:
      return FormatInt(static_cast<std::int32_t>(row.serial));
    case kBoxChannels:
      return FormatInt(static_cast<std::int32_t>(row.channels));
    default:
      return row.kind == kLocalBox ? std::string()
                                   : FormatInt(static_cast<std::int32_t>(row.control));
  }
}

bool Spread::CanEditBox(int box, BoxColumn column) const {
  const std::uint32_t kind = Box(box).kind;
  switch (column) {
    case kBoxSerial:
      return true;
    case kBoxChannels:
      return kind == kLocalBox || kind == kAuxiliaryBox;  // the others have a fixed number
    case kBoxControl:
      return kind != kLocalBox;
    default:
      return false;
  }
}

std::string Spread::EditBox(int box, BoxColumn column, std::string_view text) {
  const auto number = ParseInt(Trimmed(text));
  if (!CanEditBox(box, column) || !number) {
    return NumberFault(true);
  }
  BoxRow& row = At(box).row;
  const int most = MaxChannels(KindOf(At(box)));
  if (column == kBoxChannels && (*number < 0 || *number > most)) {
    return "Enter an integer between 0 and " + FormatInt(most) + ".";
  }
  const auto word = static_cast<std::uint32_t>(*number);
  (column == kBoxSerial ? row.serial : (column == kBoxChannels ? row.channels : row.control)) =
      word;
  return {};
}

bool Spread::CanInsert(BoxKind kind) const {
  const auto count = std::count_if(boxes_.begin(), boxes_.end(),
                                   [kind](const BoxState& box) { return box.row.kind == kind; });
  return (kind == kAuxiliaryBox && count < static_cast<int>(kAuxiliaryKeys.size())) ||
         (kind == kReferenceBox && count == 0 && HasReferenceBox(TechOf(*table_)));
}

std::vector<Spread::InsertChoice> Spread::InsertChoices() const {
  const auto choice = [this](BoxKind kind) {
    return InsertChoice{kind, Trimmed(LabelOf(kind)), CanInsert(kind)};
  };
  const InsertChoice auxiliary = choice(kAuxiliaryBox);
  if (CanInsert(kReferenceBox)) {
    return {auxiliary, choice(kReferenceBox)};
  }
  return auxiliary.is_enabled ? std::vector{auxiliary} : std::vector<InsertChoice>();
}

int Spread::InsertBox(BoxKind kind) {
  BoxState box;
  box.row.kind = kind;
  box.row.channels = kind == kReferenceBox ? 2 : 0;  // a reference box always has two
  box.channels = ReadChannels(kind, 0);
  const auto behind = std::find_if(boxes_.begin(), boxes_.end(), [kind](const BoxState& other) {
    return kind == kAuxiliaryBox && other.row.kind == kReferenceBox;
  });
  return static_cast<int>(boxes_.insert(behind, std::move(box)) - boxes_.begin());
}

bool Spread::CanDeleteBox(int box) const {
  return box >= 0 && box < BoxCount() &&
         (Box(box).kind == kAuxiliaryBox || Box(box).kind == kReferenceBox);
}

void Spread::DeleteBox(int box) {
  if (CanDeleteBox(box)) {
    boxes_.erase(boxes_.begin() + box);
  }
}

int Spread::ChannelCount(int box) const {
  const auto most = static_cast<std::uint32_t>(MaxChannels(KindOf(At(box))));
  return static_cast<int>(std::min(Box(box).channels, most));
}

std::string Spread::ChannelCell(int box, int channel, ChannelColumn column) const {
  if (!CanEditChannel(box, column)) {
    return {};
  }
  const Cell& cell =
      At(box).channels[static_cast<std::size_t>(channel)][static_cast<std::size_t>(column)];
  return CellText(cell.stored, InfoOf(column));
}

std::optional<double> Spread::ChannelReal(int box, int channel, ChannelColumn column) const {
  if (!CanEditChannel(box, column)) {
    return std::nullopt;
  }
  return RealOf(
      At(box).channels[static_cast<std::size_t>(channel)][static_cast<std::size_t>(column)].stored);
}

bool Spread::CanEditChannel(int box, ChannelColumn column) const {
  return !ChannelKey(KindOf(At(box)), 1, 1, column).IsEmpty();
}

void Spread::SetCell(int box, int channel, ChannelColumn column, const ParamValue& value) {
  Cell& cell =
      At(box).channels[static_cast<std::size_t>(channel)][static_cast<std::size_t>(column)];
  cell.stored = value;
  cell.is_edited = true;
}

std::string Spread::EditChannel(int box, int channel, ChannelColumn column, std::string_view text) {
  const ChannelColumnInfo& info = InfoOf(column);
  const std::string_view entered = info.type == StrPT ? text : Trimmed(text);
  auto value = ParseParamValueStrictly(entered, info.type);
  if (!value) {
    return info.type == StrPT ? "Enter no more than 15 characters."
                              : NumberFault(info.type == IntPT);
  }
  if (info.to_stored != 1) {
    PutReal(RealOf(*value) * info.to_stored, &*value);
  }
  SetCell(box, channel, column, *value);
  return {};
}

bool Spread::CanInsertChannel(int box) const {
  return (Box(box).kind == kLocalBox || Box(box).kind == kAuxiliaryBox) &&
         ChannelCount(box) < MaxChannels(KindOf(At(box)));
}

void Spread::InsertChannel(int box, int channel) {
  if (!CanInsertChannel(box)) {
    return;
  }
  const int count = ChannelCount(box);
  auto& channels = At(box).channels;
  const int at = std::clamp(channel, 0, count);
  for (int i = count; i > at; --i) {
    channels[static_cast<std::size_t>(i)] = channels[static_cast<std::size_t>(i) - 1];
  }
  channels[static_cast<std::size_t>(at)] = {};
  PutReal(1.0, &channels[static_cast<std::size_t>(at)][kGainFactor].stored);
  if (Box(box).kind == kLocalBox) {
    PutInt(1, &channels[static_cast<std::size_t>(at)][kFlagColumn].stored);  // to be recorded
  }
  for (int i = at; i <= count; ++i) {
    for (Cell& cell : channels[static_cast<std::size_t>(i)]) {
      cell.is_edited = true;  // all of these have other keys now
    }
  }
  At(box).row.channels = static_cast<std::uint32_t>(count + 1);
}

bool Spread::CanDeleteChannel(int box) const {
  return (Box(box).kind == kLocalBox || Box(box).kind == kAuxiliaryBox) && ChannelCount(box) > 0;
}

void Spread::DeleteChannel(int box, int channel) {
  const int count = ChannelCount(box);
  if (!CanDeleteChannel(box) || channel < 0 || channel >= count) {
    return;
  }
  auto& channels = At(box).channels;
  for (int i = channel; i + 1 < count; ++i) {
    channels[static_cast<std::size_t>(i)] = channels[static_cast<std::size_t>(i) + 1];
    for (Cell& cell : channels[static_cast<std::size_t>(i)]) {
      cell.is_edited = true;
    }
  }
  At(box).row.channels = static_cast<std::uint32_t>(count - 1);
}

void Spread::PlaceElectrode(int box, int channel, Electrode electrode, double north, double east) {
  const bool is_positive = electrode == kPositive;
  ParamValue value{};
  PutReal(north, &value);
  SetCell(box, channel, is_positive ? kPositiveNorth : kNegativeNorth, value);
  PutReal(east, &value);
  SetCell(box, channel, is_positive ? kPositiveEast : kNegativeEast, value);
}

void Spread::WriteChannels(const BoxState& box, int slot) {
  const bool has_moved = box.row.kind == kAuxiliaryBox && box.slot != slot;
  for (std::size_t channel = 0; channel < box.channels.size(); ++channel) {
    for (int column = 0; column < kChannelColumns; ++column) {
      const Cell& cell = box.channels[channel][static_cast<std::size_t>(column)];
      const auto key = ChannelKey(KindOf(box), slot, static_cast<int>(channel) + 1,
                                  static_cast<ChannelColumn>(column));
      if (!key.IsEmpty() && (cell.is_edited || has_moved)) {
        PutValue(table_, key, InfoOf(static_cast<ChannelColumn>(column)).type, cell.stored);
      }
    }
  }
}

int Spread::SlotOf(int box) const {
  if (At(box).row.kind != kAuxiliaryBox) {
    return 0;
  }
  return static_cast<int>(
      std::count_if(boxes_.begin(), boxes_.begin() + box + 1,
                    [](const BoxState& one) { return one.row.kind == kAuxiliaryBox; }));
}

ParamKey Spread::KeyOfBox(int box, BoxColumn column) const {
  const BoxKind kind = KindOf(At(box));
  const auto choose = [column](ParamKey serial, ParamKey channels, ParamKey control) {
    return column == kBoxSerial     ? serial
           : column == kBoxChannels ? channels
           : column == kBoxControl  ? control
                                    : ParamKey();
  };
  if (kind == kAuxiliaryBox) {
    const auto slot = static_cast<std::size_t>(SlotOf(box)) - 1;
    if (slot >= kAuxiliaryKeys.size()) {
      return {};
    }
    const AuxiliaryKeys& keys = kAuxiliaryKeys[slot];
    return choose(keys.serial, keys.channels, keys.control);
  }
  return kind == kLocalBox       ? choose("SNUM", kSetChannels, {})
         : kind == kReferenceBox ? choose("SNNR", {}, "REFCTL")
                                 : choose("SNTX", {}, "TXCTL");
}

ParamKey Spread::KeyOfChannel(int box, int channel, ChannelColumn column) const {
  return ChannelKey(KindOf(At(box)), SlotOf(box), channel + 1, column);
}

std::optional<Spread::ChannelPlace> Spread::PlaceOf(ParamKey key) const {
  for (int box = 0; box < BoxCount(); ++box) {
    for (int channel = 0; channel < ChannelCount(box); ++channel) {
      for (int at = 0; at < kChannelColumns; ++at) {
        const auto column = static_cast<ChannelColumn>(at);
        if (KeyOfChannel(box, channel, column) == key) {
          return ChannelPlace{box, channel, column};
        }
      }
    }
  }
  return std::nullopt;
}

void Spread::Save() {
  std::vector<BoxRow> rows;
  for (const BoxState& box : boxes_) {
    rows.push_back(box.row);
  }
  // The list reports only its last write, and nothing can be done about that one alone.
  static_cast<void>(SaveBoxList(rows, table_));
  int slot = 0;
  for (BoxState& box : boxes_) {
    const int now = box.row.kind == kAuxiliaryBox ? ++slot : 0;
    WriteChannels(box, now);
    box.slot = now;
  }
}

void Spread::SaveTo(ParamTable* copy) const {
  Spread other = *this;
  other.table_ = copy;
  other.Save();
}

}  // namespace orvane
