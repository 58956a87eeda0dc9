// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/stepping_fields.h"

#include <array>

#include "stepping/schedule_row.h"

namespace orvane {
namespace {

constexpr auto kControls = std::to_array<Choice>({{"No Step"},
                                                  {"Auto Step"},
                                                  {"2.TFS"},
                                                  {"3.TFS"},
                                                  {"4.TFS"},
                                                  {"5.TFS"},
                                                  {"6.TFS"},
                                                  {"7.TFS"},
                                                  {"8.TFS"},
                                                  {"9.TFS"},
                                                  {"10.TFS"}});

constexpr std::array<Choice, kWaveforms.size()> WaveformChoices() {
  std::array<Choice, kWaveforms.size()> choices{};
  for (std::size_t code = 0; code < choices.size(); ++code) {
    choices[code].label = kWaveforms[code];
  }
  return choices;
}
constexpr auto kWaveformChoices = WaveformChoices();

// kept: "Requested  frequency" with two blanks.
constexpr auto kFields = std::to_array<Field>({
    {stepping::kAuto, Widget::kCombo, "Stepping control", "AUTO", IntPT, Offset(0), {}, kControls},
    RealField(stepping::kRequested, "Requested  frequency (Hz)", "CREQ"),
    RealField(stepping::kCurrent, "Maximum current (A)", "CRMX"),
    RealField(stepping::kCorner, "Rolloff corner frequency (Hz)", "FCMX"),
    RealField(stepping::kLowest, "Lowest frequency (Hz)", "FEND"),
    RealField(stepping::kRepeat, "Repeat frequency (Hz)", "FREQ"),
    IntegerField(stepping::kCycles, "Cycles per frequency", "CPFR"),
    IntegerField(stepping::kPerOctave, "Frequencies per octave", "FPOC"),
    IntegerField(stepping::kSeconds, "Time per frequency (sec)", "TPFR"),
    IntegerField(stepping::kTotal, "Total time (sec)", "TTOT"),
    IntegerField(stepping::kItems, "Windows or harmonics", "NUMITEM"),
    RealField(stepping::kDrift, "Highest drift correction freq.", "FDRIFT"),
    {stepping::kWaveform,
     Widget::kCombo,
     "Waveform type",
     "WFRM",
     IntPT,
     Offset(0),
     {},
     kWaveformChoices},
});

}  // namespace

std::span<const Field> SteppingFields() { return kFields; }

}  // namespace orvane
