// SPDX-License-Identifier: GPL-3.0-or-later
// How a box talks to the others and to the outside.
#ifndef ORVANE_EDITORS_COMM_FORMS_H_
#define ORVANE_EDITORS_COMM_FORMS_H_

#include <string>
#include <string_view>
#include <vector>

#include "forms/early_writes.h"
#include "forms/form_model.h"
#include "forms/plain_form.h"

namespace orvane {

/// The radio modems of the boxes, and who is who among them.
class RadioForm {
 public:
  static constexpr std::string_view kTitle = "MHX Wireless Network Settings";
  enum Control : int {
    kType = 1002,
    kFrequency = 1004,
    kPower = 1006,
    kNetworkAddress = 1007,
    kEncryptionKey = 1008,
    kTxSerial = 1009,
    kRefSerial = 1010,
    kAux1Serial = 1011,
    kAux2Serial = 1012,
    kAux3Serial = 1013,
    kAux4Serial = 1014,
    kAux5Serial = 1015,
    kLocalSerial = 1266,
  };

  /// Reads the hardware text of the table, which says what radio there is. An empty one becomes
  /// "K36W2" in the table at once.
  explicit RadioForm(ParamTable* table);

  FormModel& Model() { return model_; }
  void Open();
  void Commit();

  /// The hardware text as read, in upper case.
  const std::string& Hardware() const { return hardware_; }
  /// "Hardware K36W2", and where that is so that it is no known radio.
  std::string HardwareText() const;
  /// Keys written before OK whose values really changed; Cancel does not undo them.
  std::vector<std::string> EarlyChanges() const { return early_.Changes(); }

 private:
  std::string ReadHardware();

  ParamTable* table_;
  EarlyWrites early_;
  std::string hardware_;
  int band_;  // index of the radio frequency
  std::vector<Field> fields_;
  FormModel model_;
};

/// The controls of the dial-up connection's dialog.
namespace gsm {
inline constexpr std::string_view kTitle = "GSM Modem Settings";
enum Control : int {
  kAccessNumber = 1239,
  kUser,
  kPassword,
  kAccessPoint,
  kServer,
  kFtpUser = 1289,
  kFtpPassword,
};
}  // namespace gsm

/// The dial-up data connection.
std::span<const Field> GsmFields();

/// The upload of data and calibration files.
class FtpForm : public PlainForm {
 public:
  static constexpr std::string_view kTitle = "FTP Client Setup";
  static constexpr int kLargestPort = 65535;  ///< beyond it there is a caution
  enum Control : int {
    kSchedule = 1281,
    kMinutes = 1283,
    kServer = 1284,
    kUploadsData = 1285,
    kDeletesData = 1286,
    kDataFolder = 1287,
    kUploadsCalibration = 1288,
    kCalibrationFolder = 1289,
    kPort = 1290,
    kUser = 1291,
    kPassword = 1292,
  };

  explicit FtpForm(ParamTable* table);
  /// Minutes and port show 0 where the table lacks them.
  void Open();
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_COMM_FORMS_H_
