// SPDX-License-Identifier: GPL-3.0-or-later
// The controls of "Frequency Stepping Parameters".
#ifndef ORVANE_STEPPING_STEPPING_FIELDS_H_
#define ORVANE_STEPPING_STEPPING_FIELDS_H_

#include <span>

#include "forms/form_field.h"

namespace orvane {

namespace stepping {
/// Of the dialog of a method that has no title of its own.
inline constexpr std::string_view kTitle = "Frequency Stepping Parameters";
enum Control : int {
  kAuto = 1501,
  kRequested,  // "CREQ"
  kCurrent,    // "CRMX"
  kCorner,     // "FCMX"
  kLowest,     // "FEND"
  kRepeat,     // "FREQ"
  kCycles,     // "CPFR"
  kPerOctave,  // "FPOC"
  kSeconds,    // "TPFR"
  kTotal,      // "TTOT"
  kItems,      // "NUMITEM"
  kDrift,      // "FDRIFT"
  kWaveform,   // "WFRM"
};
}  // namespace stepping

/// In the order in which they are written.
std::span<const Field> SteppingFields();

}  // namespace orvane

#endif  // ORVANE_STEPPING_STEPPING_FIELDS_H_
