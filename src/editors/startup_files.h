// SPDX-License-Identifier: GPL-3.0-or-later
// One start-up file for each box of a spread, derived from the table being edited.
#ifndef ORVANE_EDITORS_STARTUP_FILES_H_
#define ORVANE_EDITORS_STARTUP_FILES_H_

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "forms/form_model.h"
#include "table/param_table.h"
#include "table/tbl_file.h"
#include "table/tech.h"

namespace orvane {

/// Which box a file is for: the transmitter monitor, the main receiver (0) or auxiliary box 1 to 5.
struct StartupBox {
  static constexpr int kTransmitter = -1;
  static constexpr int kMain = 0;
  int number = kMain;

  bool IsTransmitter() const { return number == kTransmitter; }
  bool IsAuxiliary() const { return number > kMain; }
};

/// What a dialog hands on to the following ones.
struct StartupChoices {
  std::optional<bool> by_serial;  ///< "SerialNumber.tbl" chosen; nothing before the first OK
  std::string folder;
  /// The transmitter monitor's, as typed into its dialog: for the other boxes' files.
  std::optional<std::int32_t> monitor_serial;
};

/// The dialog for one box, numbers 167 and 168. Nothing is written into the edited table but what
/// lasts (`ApplyLasting`): the file is made from a copy.
class StartupForm {
 public:
  enum Control : int {
    kSetup = 1233,
    kRecord = 1054,
    kSlave = 1226,
    kFixedName = 1224,
    kSerialName = 1225,
    kLocation = 1229,
    kReceiverSerial = 1207,
    kMonitorSerial = 1009,
    kMonitorGain = 1208,
    kCurrentSensorSerial = 1012,
    kCurrentSensorGain = 1114,
    kCurrentSensorAmplitude = 1115,
    kCalibrationTime = 1016,
    kFileClose = 1044,
  };
  /// Most channels of an auxiliary box.
  static constexpr int kAuxiliaryChannels = 3;

  StartupForm(ParamTable* table, StartupBox box, const StartupChoices& choices);
  StartupForm(const StartupForm&) = delete;
  StartupForm& operator=(const StartupForm&) = delete;

  int DialogNumber() const { return box_.IsTransmitter() ? 167 : 168; }
  std::string Title() const;
  FormModel& Model() { return model_; }
  const FormModel& Model() const { return model_; }
  StartupBox Box() const { return box_; }

  bool IsBySerial() const;
  std::string Folder() const { return model_.Text(kLocation); }
  /// The serial number as typed.
  std::int32_t Serial() const;
  /// Folder (that of the document where none is given; one without a root is in it) and file name.
  std::filesystem::path Path(const std::filesystem::path& document_folder) const;

  /// The channels of the box: definition and gain correction factor, editable for auxiliary boxes.
  struct Channel {
    std::string definition;
    std::string gain;
    std::string definition_key;
    std::string gain_key;
  };
  const std::vector<Channel>& Channels() const { return channels_; }
  bool CanEditGains() const { return box_.IsAuxiliary(); }
  /// Why the text is refused; empty once it is taken.
  std::string EditGain(int channel, const std::string& text);

  /// The table of the box: a copy with what the dialog overrides.
  ParamTable Derive() const;

  /// A transmitter monitor without a serial number is none: it gets no file.
  bool HasFile() const { return !box_.IsTransmitter() || Serial() != 0; }

  /// What stays in the edited table: settings of the current sensor, "CHDEFTX", and "LIFESTN" and
  /// "LIFESTK", which only the transmitter monitor's dialog changes; without a file only what was
  /// typed. Whether a value changed.
  bool ApplyLasting(ParamTable* table) const;

 private:
  void ReadChannels();
  bool ApplyLastingBeforeFile(ParamTable* table) const;
  void OverrideForMonitor(ParamTable* table) const;
  void OverrideForReceiver(ParamTable* table) const;

  ParamTable* table_;
  StartupBox box_;
  std::optional<std::int32_t> monitor_serial_;
  Tech tech_;
  std::vector<Choice> request_choices_;
  std::vector<Field> fields_;
  FormModel model_;
  std::vector<Channel> channels_;
  std::array<std::optional<double>, kAuxiliaryChannels> gains_;  // as edited
};

/// The boxes of the table that get a file, in order. Auxiliary boxes end at the first empty slot;
/// those after it are named in `left_out`.
std::vector<StartupBox> StartupBoxes(const ParamTable& table,
                                     std::vector<StartupBox>* left_out = nullptr);

/// The serial number that the table has for a box.
std::int32_t StoredSerial(const ParamTable& table, StartupBox box);

/// Contact resistances of 0 become 200 before files are made. Whether a value changed.
bool SetDefaultResistances(ParamTable* table);

/// Version of the files: that of "TBVO" where it is 1 and the answer is yes, else 2.
std::uint32_t StartupVersion(const ParamTable& table, bool answer_is_yes);

}  // namespace orvane

#endif  // ORVANE_EDITORS_STARTUP_FILES_H_
