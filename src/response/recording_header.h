// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_RECORDING_HEADER_H_
#define ORVANE_RESPONSE_RECORDING_HEADER_H_

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/status.h"
#include "response/complex.h"
#include "table/box_keys.h"
#include "timeseries/ts_companion.h"

namespace orvane {

/// What a recording says of itself: the settings in its companion table and the number of its
/// channels.
struct RecordingHeader {
  TsCompanion settings;
  int channels = 0;
};

/// Reads a setting by its key, in any case. `out` gets 4 bytes for `IntPT`, 8 for `FltPT` and
/// `AmxPT`, up to 16 with a NUL for texts. 0, 201, 202, or 1222 without a header.
Status GetTsField(const RecordingHeader* header, std::string_view key, ValueType type, void* out);

/// A missing key, or one of another type, counts as 0 or as an empty text.
std::int32_t SettingInt(const RecordingHeader& header, std::string_view key);
double SettingReal(const RecordingHeader& header, std::string_view key);
std::string SettingText(const RecordingHeader& header, std::string_view key);

/// How a channel was recorded.
struct ChannelSettings {
  int gain = 0;            ///< code: the gain is 4 to this power
  int low_pass = 0;        ///< "LPFR" code
  int coupling = 0;        ///< 1: AC
  double half_value = 0;   ///< half of a dipole's contact resistance, ohms: that of one leg
  double extra_value = 0;  ///< ohms in front of the calibrated path
  Complex extra_complex;   ///< ohms; reserved for inductive sources
  bool is_mapped = false;  ///< the recording says what the channel measures

  Complex Source() const { return half_value + extra_value + extra_complex; }
};
inline constexpr int kMostChannels = kMostBoxChannels;
using AllChannelSettings = std::array<ChannelSettings, kMostChannels>;

/// The first letter of a channel's "CHDEF%d" as a capital, NUL where that is empty. Channels count
/// from 1.
char DefinitionLetter(const RecordingHeader& header, int channel);

/// Which component of its field an E or H channel measures, X, Y or Z: by the second letter of its
/// definition, else by "CHEX" to "CHHZ"; NUL where neither says it.
char ComponentAxis(const RecordingHeader& header, int channel);

/// The settings of each channel: those of the component that "CHEX" to "CHHZ" name it for, of two
/// the later; else those that its definition's letter means (E, H, B, T); else zero.
AllChannelSettings FillChannelSettings(const RecordingHeader& header);

/// Whether a channel's contact resistance is its own "RES%d" because no component names it.
bool HasOwnResistance(const RecordingHeader& header, int channel);

/// Whether an auxiliary box made the recording. Its table is a copy of the main box's: with its own
/// serial number, without the list of auxiliary boxes, and with the definitions of their channels;
/// so is that of a main box whose auxiliary boxes were deleted. `box`: the serial number in the
/// records.
enum class OfAuxiliaryBox { kNo, kMaybe, kYes };
OfAuxiliaryBox IsOfAuxiliaryBox(const RecordingHeader& header, int box);

/// Boxes that know a few sample rates only, and store which of them.
bool HasRateTable(const RecordingHeader& header);

/// The sample rate of a band in Hz, 0 where the recording stores none. 0, 1222, 1223 or 1233.
Status LookupSampleRate(const RecordingHeader* header, int band, double* rate);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_RECORDING_HEADER_H_
