// SPDX-License-Identifier: GPL-3.0-or-later
// The serial numbers of the boxes.
#include <algorithm>

#include "base/number_text.h"
#include "check/rule.h"
#include "editors/startup_files.h"
#include "table/box_keys.h"

namespace orvane {
namespace {

constexpr std::uint32_t kLargestInRecords = 65535;
constexpr std::uint32_t kLargestInCalibrations = 32767;
constexpr std::uint32_t kLargestInRadioDialog = 9999;

ParamKey AuxiliaryKey(int number) {
  return kAuxiliaryKeys[static_cast<std::size_t>(number) - 1].serial;
}

// The place before box `number` that is empty.
int EmptyPlaceBefore(const Situation& situation, int number) {
  int place = number - 1;
  while (place > 1 && situation.Int(AuxiliaryKey(place)) != 0) {
    --place;
  }
  return place;
}

void SerialGap(const Situation& situation, const Teller& tell) {
  std::vector<StartupBox> left_out;
  static_cast<void>(StartupBoxes(situation.table, &left_out));
  for (const CheckedBox& box : situation.boxes) {
    const bool is_left_out = std::any_of(left_out.begin(), left_out.end(), [&box](StartupBox left) {
      return box.kind == kAuxiliaryBox && left.number == box.slot;
    });
    if (is_left_out) {
      const int place = EmptyPlaceBefore(situation, box.slot);
      tell({AuxiliaryKey(place), box.serial_key},
           FormatInt(box.serial) + " gets no file: place " + FormatInt(place) +
               " of the auxiliary boxes, before it, is empty",
           box.name);
    }
  }
}

void SerialNone(const Situation& situation, const Teller& tell) {
  if (situation.LocalBox().serial == 0) {
    tell({"SNUM"}, "The local box has no serial number");
  }
}

void SerialTwice(const Situation& situation, const Teller& tell) {
  const std::vector<CheckedBox>& boxes = situation.boxes;
  for (auto box = boxes.begin(); box != boxes.end(); ++box) {
    const auto twin = std::find_if(boxes.begin(), box, [box](const CheckedBox& before) {
      return box->serial != 0 && before.serial == box->serial;
    });
    if (twin != box) {
      tell({box->serial_key, twin->serial_key},
           "The serial number is also that of \"" + twin->name + "\" (" + twin->serial_key.Text() +
               ")",
           box->name);
    }
  }
}

void SerialSize(const Situation& situation, const Teller& tell) {
  for (const CheckedBox& box : situation.boxes) {
    const auto serial = static_cast<std::uint32_t>(box.serial);
    if (box.serial < 0) {
      tell.As(Severity::kError, {box.serial_key}, "No box has a serial number below 0", box.name);
    } else if (serial > kLargestInRecords) {
      tell({box.serial_key}, "The serial number does not fit into records, which end at 65535",
           box.name);
    } else if (serial > kLargestInCalibrations) {
      tell.As(Severity::kHint, {box.serial_key},
              "Calibration files know no serial numbers above 32767", box.name);
    } else if (serial > kLargestInRadioDialog) {
      tell.As(Severity::kHint, {box.serial_key},
              "The radio's dialog takes no serial numbers above 9999", box.name);
    }
  }
}

void ReferenceNoFile(const Situation& situation, const Teller& tell) {
  for (const CheckedBox& box : situation.boxes) {
    if (box.kind == kReferenceBox) {
      tell({box.serial_key}, "The reference box is listed, but gets no start-up file", box.name);
    }
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"serial-gap", Severity::kError,
     "An auxiliary box after an empty place: the boxes after that place get no start-up file.",
     SerialGap},
    {"serial-none", Severity::kError, "SNUM is 0.", SerialNone},
    {"serial-twice", Severity::kError,
     "Two boxes of the spread have one serial number. The monitor counts with every method but "
     "MT/AMT, the reference box with SIP and TDIP.",
     SerialTwice},
    {"serial-size", Severity::kWarning,
     "A serial number above 65535, which records cannot hold; as an error, one below 0; as a hint "
     "above 32767, which calibration files cannot hold, or above 9999, which the radio's dialog "
     "refuses.",
     SerialSize, Needs::kNothing, "error, warning or hint"},
    {"reference-no-file", Severity::kHint,
     "A reference box is listed: start-up files are made for all other boxes.", ReferenceNoFile},
});

}  // namespace

std::span<const Rule> SerialRules() { return kRules; }

}  // namespace orvane
