// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/comm_forms.h"

#include <algorithm>
#include <array>

#include "base/ascii.h"
#include "base/number_text.h"
#include "editors/serial_cautions.h"
#include "table/box_keys.h"
#include "table/param_text.h"

namespace orvane {
namespace {

constexpr int kLongTextLength = 320;
constexpr std::string_view kDefaultHardware = "K36W2";

constexpr std::array<Choice, 2> kRadioTypes = {{{"Slave", 1002}, {"Master", 1003}}};
constexpr std::array<Choice, 2> kRadioFrequencies = {{{"2.4 GHz", 1004}, {"900 MHz", 1005}}};
constexpr auto kPowers24 =
    std::to_array<Choice>({{"10mW"}, {"50mW"}, {"100mW"}, {"250mW"}, {"500mW"}, {"750mW"}, {"1W"}});
constexpr auto kPowers900 = std::to_array<Choice>({{"1mW"}, {"10mW"}, {"100mW"}, {"1W"}});
// kept: "sessons" and "sucessful", as users know the labels.
constexpr std::array<Choice, 2> kSchedules = {
    {{"Run the client at this many minutes past every UTC hour", 1281},
     {"Wait this many minutes between sessons", 1282}}};

constexpr Field Ranged(int control, std::string_view label, std::string_view key, double max) {
  return {control, Widget::kInteger, label, key, IntPT, {}, {0, max}};
}
constexpr Field BoxText(int control, std::string_view label, std::string_view key,
                        Widget widget = Widget::kText) {
  return {control, widget, label, key, PosPT};
}
constexpr Field LongTextField(int control, std::string_view label, std::string_view key,
                              std::string_view group = {}) {
  return {control, Widget::kText, label, key, LStPT, LongText(), {.max_length = kLongTextLength},
          {},      group};
}
constexpr Field FlagField(int control, std::string_view label, std::string_view key) {
  return {control, Widget::kCheck, label, key, IntPT, Flag()};
}

// Stored radio powers that the list lacks show as the strongest.
constexpr Codec kPowerCodec = Offset(0, Unlisted::kLast);
constexpr int kLargestSerial = 9999;
constexpr int kLargestWord = 65535;

constexpr auto kRadioFields = std::to_array<Field>({
    {RadioForm::kType, Widget::kRadios, "Radio Type", "MSTR", IntPT, Offset(0), {}, kRadioTypes},
    {RadioForm::kFrequency,
     Widget::kRadios,
     "Radio Frequency",
     {},
     IntPT,
     Unbound(),
     {},
     kRadioFrequencies},
    {RadioForm::kPower, Widget::kCombo, "Radio power", "RPWR", IntPT, kPowerCodec},
    Ranged(RadioForm::kNetworkAddress, "Network address", "NADR", kLargestWord),
    Ranged(RadioForm::kEncryptionKey, "Encryption key", "EKEY", kLargestWord),
    IntegerField(RadioForm::kLocalSerial, "Local Box S/N", "SNUM"),
    Meaning("Serial number of the reference box",
            Ranged(RadioForm::kRefSerial, "Ref. box S/N", "SNNR", kLargestSerial)),
    Ranged(RadioForm::kAux1Serial, "Aux1 Box S/N", kAuxiliaryKeys[0].serial, kLargestSerial),
    Ranged(RadioForm::kAux2Serial, "Aux2 Box S/N", kAuxiliaryKeys[1].serial, kLargestSerial),
    Ranged(RadioForm::kAux3Serial, "Aux3 Box S/N", kAuxiliaryKeys[2].serial, kLargestSerial),
    Ranged(RadioForm::kAux4Serial, "Aux4 Box S/N", kAuxiliaryKeys[3].serial, kLargestSerial),
    Ranged(RadioForm::kAux5Serial, "Aux5 Box S/N", kAuxiliaryKeys[4].serial, kLargestSerial),
    Ranged(RadioForm::kTxSerial, "Tx box S/N", "SNTX", kLargestSerial),
});

constexpr auto kGsmFields = std::to_array<Field>({
    BoxText(gsm::kAccessNumber, "GSM Access Number", "PHNE"),
    BoxText(gsm::kUser, "GSM User Name", "PPPNAME"),
    BoxText(gsm::kPassword, "GSM Password", "PPPPSWD", Widget::kPassword),
    LongTextField(gsm::kAccessPoint, "GSM Access Point Name", "GNETAP0"),
    LongTextField(gsm::kServer, "IP Address Server", "IPSRV0"),
    BoxText(gsm::kFtpUser, "FTP Server User Name", "FTPSUSR"),
    BoxText(gsm::kFtpPassword, "FTP Server Password", "FTPSPWD", Widget::kPassword),
});

constexpr auto kFtpFields = std::to_array<Field>({
    Meaning("When the FTP client runs", {FtpForm::kSchedule,
                                         Widget::kRadios,
                                         "Schedule",
                                         "FTPCTIM",
                                         IntPT,
                                         Offset(0),
                                         {},
                                         kSchedules}),
    StoredIn("min", Meaning("Minutes past the hour or between sessions of the FTP client",
                            Ranged(FtpForm::kMinutes, "Minutes", "FTPCMIN", 10000000))),
    LongTextField(FtpForm::kServer, "FTP server IP address or domain name", "FTPCSR0"),
    Meaning("FTP server port",
            IntegerField(FtpForm::kPort, "Use FTP server port (default port 21 )", "FTPCPRT")),
    Meaning("FTP client: user name for server login",
            BoxText(FtpForm::kUser, "User name for server login", "FTPCUSR")),
    Meaning("FTP client: password for server login",
            BoxText(FtpForm::kPassword, "Password for server login", "FTPCPWD", Widget::kPassword)),
    FlagField(FtpForm::kUploadsData, "Enable data file upload to FTP server", "FTPC1EN"),
    FlagField(FtpForm::kDeletesData, "Delete file after sucessful upload", "FTPC1DL"),
    LongTextField(FtpForm::kDataFolder, "Upload to FTP server directory", "FTPC1P0", "Data files"),
    FlagField(FtpForm::kUploadsCalibration, "Enable calibration file upload to FTP server",
              "FTPC2EN"),
    LongTextField(FtpForm::kCalibrationFolder, "Upload to FTP server directory", "FTPC2P0",
                  "Calibration files"),
});

enum Band : int { k24GHz, k900MHz };

int BandOf(std::string_view hardware) {
  return hardware.find("W2") != std::string_view::npos   ? k24GHz
         : hardware.find("W9") != std::string_view::npos ? k900MHz
                                                         : kNothingChosen;
}

std::vector<Field> RadioFieldsOf(int band) {
  std::vector<Field> fields(kRadioFields.begin(), kRadioFields.end());
  for (Field& field : fields) {
    if (field.control == RadioForm::kPower && band != kNothingChosen) {
      field.choices = band == k24GHz ? std::span<const Choice>(kPowers24) : kPowers900;
    }
  }
  return fields;
}

}  // namespace

RadioForm::RadioForm(ParamTable* table)
    : table_(table),
      early_(table),
      hardware_(ReadHardware()),
      band_(BandOf(hardware_)),
      fields_(RadioFieldsOf(band_)),
      model_(table, fields_) {
  model_.SetCautionRule([](FormModel* model) {
    CautionSerials(
        std::array<int, 5>{kAux1Serial, kAux2Serial, kAux3Serial, kAux4Serial, kAux5Serial},
        std::array<int, 3>{kLocalSerial, kRefSerial, kTxSerial}, model);
  });
}

std::string RadioForm::ReadHardware() {
  ParamValue stored{};
  // A key that is missing or no text counts as empty.
  std::string text = table_->GetParam("HW", StrPT, stored.data()) == kOk
                         ? std::string(CharactersOf(stored, kMaxTextLength))
                         : std::string();
  if (text.empty()) {
    text = kDefaultHardware;
    ParamValue value{};
    std::copy(text.begin(), text.end(), value.begin());
    early_.Put("HW", StrPT, value);
  }
  for (char& c : text) {
    c = UpperCased(c);
  }
  return text;
}

void RadioForm::Open() {
  model_.ReadAll();
  model_.SetIndex(kFrequency, band_);
  model_.EnableGroup(kFrequency, false);
  model_.Enable(kPower, band_ != kNothingChosen);
}

std::string RadioForm::HardwareText() const {
  const bool is_known = model_.Index(kFrequency) != kNothingChosen;
  return "Hardware " + hardware_ + (is_known ? "" : " is not a known radio");
}

void RadioForm::Commit() {
  model_.Write(std::array<int, 12>{kPower, kLocalSerial, kAux1Serial, kAux2Serial, kAux3Serial,
                                   kAux4Serial, kAux5Serial, kTxSerial, kRefSerial, kType,
                                   kEncryptionKey, kNetworkAddress});
}

std::span<const Field> GsmFields() { return kGsmFields; }

FtpForm::FtpForm(ParamTable* table) : PlainForm(table, kFtpFields) {
  Model().SetCautionRule([](FormModel* model) {
    const std::int32_t port = ParseInt(model->Text(kPort)).value_or(0);
    model->SetCaution(
        kPort, port < 0 || port > kLargestPort ? "No server has this port: they end at 65535" : "");
  });
}

void FtpForm::Open() {
  PlainForm::Open();
  for (const int control : {kMinutes, kPort}) {
    if (Model().Stored(control).empty()) {
      Model().SetText(control, "0");
    }
  }
}

}  // namespace orvane
