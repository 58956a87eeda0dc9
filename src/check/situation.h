// SPDX-License-Identifier: GPL-3.0-or-later
// What rules look at: the table, and what several of them would read from it again and again.
#ifndef ORVANE_CHECK_SITUATION_H_
#define ORVANE_CHECK_SITUATION_H_

#include <array>
#include <string>
#include <vector>

#include "check/check.h"
#include "check/set_files.h"
#include "editors/channel_keys.h"
#include "stepping/schedule_row.h"
#include "table/clock.h"
#include "table/param_access.h"
#include "table/recording_size.h"
#include "table/tech.h"

namespace orvane {

/// A channel that a box of the spread has.
struct CheckedChannel {
  int number = 0;          ///< from 1
  std::string definition;  ///< without blanks around it
  char letter = '\0';      ///< its first, in upper case
  bool is_recorded = false;

  bool IsDefined() const { return !definition.empty(); }
};

/// A box of the spread. Only local and auxiliary boxes have channels here.
struct CheckedBox {
  BoxKind kind = kLocalBox;
  int slot = 0;  ///< of an auxiliary box, 1 to 5; else 0
  std::int32_t serial = 0;
  ParamKey serial_key;
  std::string name;  ///< "Local Box 2417"
  std::vector<CheckedChannel> channels;

  ParamKey Key(const CheckedChannel& channel, ChannelColumn column) const {
    return ChannelKey(kind, slot, channel.number, column);
  }
};

/// Which coils the recording needs.
struct CoilUse {
  bool is_any = false;
  std::array<bool, 3> axes{};  ///< x, y and z, as far as the table says
};

/// The steps of the schedule and where they come from.
struct CheckedSteps {
  std::vector<ScheduleRow> rows;
  ParamKey key = "AUTO";  ///< where they are mended
};

struct Situation {
  Situation(const ParamTable& checked, const ParamTime& time, const Places& where);

  std::int32_t Int(ParamKey key) const { return IntParam(table, key); }
  double Real(ParamKey key) const { return RealParam(table, key); }
  ParamTime Time(ParamKey key) const { return TimeParam(table, key); }
  /// Without blanks around it, as stored.
  std::string Text(ParamKey key) const;

  const ParamTable& table;
  FixedClock now;
  const Places& places;
  Tech tech;
  std::vector<CheckedBox> boxes;  ///< monitor, local, auxiliary and reference boxes with a serial
                                  ///< number; the local box always
  TimeSpan recording;
  CoilUse coils;
  CheckedSteps steps;
  std::vector<SetFile> set_files;  ///< for the rules that need files

  bool IsMt() const { return tech == kMtAmt; }
  /// TDIP and TDEM.
  bool IsTimeDomain() const { return tech == kTdip || tech == kTdem; }
  /// Methods whose E channels have electrodes with positions.
  bool HasDipoles() const { return tech == kSip || tech == kTdip || tech == kCsamt; }
  const CheckedBox& LocalBox() const;
  bool HasMonitor() const { return !IsMt() && Int("SNTX") != 0; }

  /// Calls `use(box, channel)` for each channel that is recorded.
  template <typename Use>
  void ForEachRecorded(const Use& use) const {
    for (const CheckedBox& box : boxes) {
      for (const CheckedChannel& channel : box.channels) {
        if (channel.is_recorded) {
          use(box, channel);
        }
      }
    }
  }
};

/// The channels of a box that a rule names, and the keys to go with them.
struct NamedChannels {
  std::vector<int> numbers;
  std::vector<ParamKey> keys;

  bool IsEmpty() const { return numbers.empty(); }
  /// "channel 2", "channels 1, 2 and 3".
  std::string Text() const;
};
/// Those that `is_named(channel)` picks, with the key of a column.
template <typename IsNamed>
NamedChannels ChannelsWhere(const CheckedBox& box, ChannelColumn column, const IsNamed& is_named) {
  NamedChannels named;
  for (const CheckedChannel& channel : box.channels) {
    if (is_named(channel)) {
      named.numbers.push_back(channel.number);
      named.keys.push_back(box.Key(channel, column));
    }
  }
  return named;
}

/// "a", "a and b", "a, b and c".
std::string Listed(const std::vector<std::string>& texts);

/// The axis of a magnetic channel by its definition's second letter: 0 to 2; -1 without one.
int AxisOf(const CheckedChannel& channel);

/// The keys of the three coils and of the channels that record them.
inline constexpr std::array<std::string_view, 3> kCoilSerialKeys = {"HXSN", "HYSN", "HZSN"};
inline constexpr std::array<std::string_view, 3> kCoilChannelKeys = {"CHHX", "CHHY", "CHHZ"};

}  // namespace orvane

#endif  // ORVANE_CHECK_SITUATION_H_
