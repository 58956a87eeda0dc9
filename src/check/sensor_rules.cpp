// SPDX-License-Identifier: GPL-3.0-or-later
// Current sensor, coils, loops, and their calibrations.
#include <filesystem>
#include <optional>

#include "base/latin1.h"
#include "base/number_text.h"
#include "calibration/cal_reader.h"
#include "check/check_memory.h"
#include "check/rule.h"
#include "files/file_io.h"
#include "files/find_file.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr std::array<std::string_view, 3> kAxisNames = {"Hx", "Hy", "Hz"};

const CheckedBox* Monitor(const Situation& situation) {
  return situation.HasMonitor() ? &situation.boxes.front() : nullptr;
}

void MonitorNone(const Situation& situation, const Teller& tell) {
  if (!situation.IsMt() && !situation.HasMonitor()) {
    tell({"SNTX"}, "Without a transmitter monitor the current is not recorded");
  }
}

void MonitorSensor(const Situation& situation, const Teller& tell) {
  const CheckedBox* monitor = Monitor(situation);
  if (monitor == nullptr) {
    return;
  }
  std::vector<ParamKey> keys;
  std::vector<std::string> missing;
  if (situation.Text("CSSN").empty()) {
    keys.emplace_back("CSSN");
    missing.emplace_back("serial number");
  }
  if (situation.Real("CNOM") == 0) {
    keys.emplace_back("CNOM");
    missing.emplace_back("nominal gain");
  }
  if (!keys.empty()) {
    tell(std::move(keys), "The current sensor has no " + Listed(missing), monitor->name);
  }
}

void CoilGain(const Situation& situation, const Teller& tell) {
  if (situation.coils.is_any && !(situation.Real("HNOM") > 0)) {
    tell({"HNOM"}, "The coils' nominal gain is " + FormatReal(situation.Real("HNOM")) + " mV/nT",
         situation.LocalBox().name);
  }
}

std::optional<std::int32_t> CoilNumber(const Situation& situation, std::size_t axis) {
  return situation.coils.axes[axis] ? ParseIntAtEnd(situation.Text(kCoilSerialKeys[axis]))
                                    : std::nullopt;
}

void TellUnnumberedCoils(const Situation& situation, const Teller& tell) {
  std::vector<ParamKey> keys;
  std::vector<std::string> names;
  for (std::size_t axis = 0; axis < kAxisNames.size(); ++axis) {
    if (situation.coils.axes[axis] && !CoilNumber(situation, axis)) {
      keys.emplace_back(kCoilSerialKeys[axis]);
      names.emplace_back(kAxisNames[axis]);
    }
  }
  if (!keys.empty()) {
    tell(std::move(keys), "No serial number of a coil at its end: " + Listed(names),
         situation.LocalBox().name);
  }
}

// True, and told, where two axes have one coil.
bool TellTwinCoils(const Situation& situation, const Teller& tell) {
  for (std::size_t axis = 1; axis < kAxisNames.size(); ++axis) {
    const auto number = CoilNumber(situation, axis);
    for (std::size_t before = 0; before < axis && number; ++before) {
      if (CoilNumber(situation, before) == number) {
        tell.As(Severity::kError, {kCoilSerialKeys[axis], kCoilSerialKeys[before]},
                std::string(kAxisNames[axis]) + " and " + std::string(kAxisNames[before]) +
                    " have one coil, " + FormatInt(*number),
                situation.LocalBox().name);
        return true;
      }
    }
  }
  return false;
}

void CoilSerial(const Situation& situation, const Teller& tell) {
  if (!TellTwinCoils(situation, tell)) {
    TellUnnumberedCoils(situation, tell);
  }
}

void LoopArea(const Situation& situation, const Teller& tell) {
  for (const CheckedBox& box : situation.boxes) {
    const NamedChannels named = ChannelsWhere(box, kSensorSize, [&](const CheckedChannel& channel) {
      return channel.is_recorded && channel.letter == 'B' &&
             situation.Real(box.Key(channel, kSensorSize)) == 0;
    });
    if (!named.IsEmpty()) {
      tell(named.keys, "The loop's area is 0, and so will be all spectra: " + named.Text(),
           box.name);
    }
  }
}

// A calibration that there should be.
struct WantedCal {
  std::int32_t serial;
  std::string extension;
  int kind;          // a `CalKind`; a box's is not looked at
  int channels = 0;  // 0: any

  std::string Name() const { return FormatInt(serial) + extension; }
};

std::optional<CalHeader> ReadCalHeader(const std::filesystem::path& path) {
  CalReader reader;
  CalHeader header;
  if (!reader.Open(path) || !reader.TakeHeader(&header)) {
    return std::nullopt;
  }
  return header;
}

// Why the file does not serve; empty where it does.
std::string CalFault(const Places& places, const WantedCal& wanted) {
  const auto path = FindInAnyCase(places.calibrations / PathOf(wanted.Name()));
  if (!path) {
    return "cannot be looked for (" + path.Message() + ")";
  }
  if (Exists(*path) == Existence::kNotThere) {
    return "is missing";
  }
  const std::optional<CalHeader> read =
      places.memory->calibrations.Get(*path, [&path] { return ReadCalHeader(*path); });
  if (!read) {
    return "cannot be read";
  }
  const CalHeader& header = *read;
  if (wanted.kind != kBoxCal && header.ctyp != wanted.kind) {
    return wanted.kind == kSensorCal ? "is not of a coil" : "is not of a current sensor";
  }
  if (wanted.channels != 0 && header.nchn != wanted.channels) {
    return "has " + FormatInt(int{header.nchn}) + " channels, the box " +
           FormatInt(wanted.channels);
  }
  const auto serial = static_cast<std::uint16_t>(std::int16_t{header.snum});
  return serial == wanted.serial ? "" : "is of serial " + FormatInt(serial);
}

void TellCal(const Situation& situation, const Teller& tell, const std::vector<ParamKey>& keys,
             const std::vector<WantedCal>& wanted, const std::string& box) {
  std::vector<ParamKey> concerned;
  std::vector<std::string> faults;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (std::string fault = CalFault(situation.places, wanted[i]); !fault.empty()) {
      concerned.push_back(keys[i]);
      faults.push_back(wanted[i].Name() + " " + PrintableUtf8(fault));
    }
  }
  if (!faults.empty()) {
    tell(std::move(concerned), "Among the calibrations " + Listed(faults), box);
  }
}

void Calibration(const Situation& situation, const Teller& tell) {
  if (situation.places.calibrations.empty()) {
    return;
  }
  const CheckedBox& local = situation.LocalBox();
  if (!IsFolder(situation.places.calibrations)) {
    tell({"SNUM"}, "There is no folder " + PrintableUtf8(PathText(situation.places.calibrations)) +
                       " of calibrations");
    return;
  }
  std::vector<ParamKey> keys;
  std::vector<WantedCal> wanted;
  if (local.serial != 0) {
    keys.emplace_back("SNUM");
    wanted.push_back({local.serial, ".CLB", kBoxCal, static_cast<int>(local.channels.size())});
  }
  for (std::size_t axis = 0; axis < kAxisNames.size(); ++axis) {
    if (const auto number = CoilNumber(situation, axis)) {
      keys.emplace_back(kCoilSerialKeys[axis]);
      wanted.push_back({*number, ".CLC", kSensorCal, 0});
    }
  }
  TellCal(situation, tell, keys, wanted, local.name);
  const CheckedBox* monitor = Monitor(situation);
  const auto sensor = ParseIntAtEnd(situation.Text("CSSN"));
  if (monitor != nullptr && sensor) {
    TellCal(situation, tell, {"CSSN"}, {{*sensor, ".CLC", kCurrentSensorCal, 0}}, monitor->name);
  }
}

constexpr auto kRules = std::to_array<Rule>({
    {"monitor-none", Severity::kHint, "Every method but MT/AMT: SNTX is 0.", MonitorNone},
    {"monitor-sensor", Severity::kWarning,
     "There is a transmitter monitor, and its current sensor has no serial number (CSSN) or no "
     "nominal gain (CNOM).",
     MonitorSensor},
    {"coil-gain", Severity::kWarning,
     "Coils are used (MT/AMT, a recorded channel of letter H, or CHHX to CHHZ from 1 to 12) and "
     "HNOM is not above 0.",
     CoilGain},
    {"coil-serial", Severity::kWarning,
     "A coil that is used, by CHHX to CHHZ or by a recorded channel such as Hx, has no serial "
     "number or none at the end of its text; as an error, two of them have one serial number. "
     "MT/AMT alone does not say which coils there are: two may be enough.",
     CoilSerial, Needs::kNothing, "warning or error"},
    {"loop-area", Severity::kError, "A recorded channel of letter B has the sensor size 0.",
     LoopArea},
    {"calibration", Severity::kWarning,
     "With a folder of calibrations: there is none; that of the local box (SNUM.CLB) is missing or "
     "has another "
     "number of channels; that of a coil that is used (N.CLC) is missing or of no coil; that of "
     "the monitor's current sensor is missing or of none; or the header has another serial number "
     "than the name.",
     Calibration, Needs::kFiles},
});

}  // namespace

std::span<const Rule> SensorRules() { return kRules; }

}  // namespace orvane
