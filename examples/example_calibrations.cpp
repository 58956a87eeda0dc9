// SPDX-License-Identifier: GPL-3.0-or-later
#include "example_calibrations.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/wire.h"
#include "calibration/cal_header.h"
#include "files/file_io.h"
#include "response/box_model.h"

namespace orvane::examples {
namespace {

Complex LowPass(double frequency, double corner) { return 1.0 / Complex(1, frequency / corner); }
Complex HighPass(double frequency, double corner) {
  return Complex(0, frequency / corner) * LowPass(frequency, corner);
}

template <std::size_t size>
void Put(std::string_view text, std::array<char, size>* field) {
  std::copy_n(text.begin(), std::min(text.size(), size), field->begin());
}

CalHeader HeaderOf(CalKind kind, int serial, int channels, std::string_view hardware) {
  CalHeader header;
  header.utc = {15, 40, 9, 12, 11, 26, 4, 20};
  header.snum = static_cast<std::int16_t>(serial);
  header.nchn = static_cast<std::int16_t>(channels);
  header.ctyp = static_cast<std::uint8_t>(kind);
  Put(hardware, &header.hw);
  Put("5.0", &header.ver);
  header.tcmb = 1;
  header.tals = 1;
  header.lfrq = 50;
  header.lpfr = 0;
  header.hatt = 1;
  return header;
}

class File {
 public:
  File(const CalHeader& header) : header_(header) { Append(BytesOf(header)); }  // NOLINT: implicit

  // A sweep from high to low frequencies, so many in a decade; the response of each channel.
  void AddPass(int kind, double from, int count, int per_decade, double value4,
               const std::function<Complex(double, int)>& response) {
    for (int step = 1; step <= count; ++step) {
      CalFileRecord record;
      record.kind = static_cast<std::uint8_t>(kind);
      const double frequency = from * std::pow(10, -(step - 1.0) / per_decade);
      record.frequency = static_cast<float>(frequency);
      record.step = static_cast<std::int16_t>(step);
      for (int c = 0; c < header_.nchn; ++c) {
        CalBlock& block = record.channels[static_cast<std::size_t>(c)];
        const Complex value = response(frequency, c);
        block.values = {1.0F, 0.0F, 0.25F, static_cast<float>(value4)};
        block.real = static_cast<float>(value.real());
        block.imaginary = static_cast<float>(value.imag());
      }
      Append(BytesOf(record).first(CalFileRecord::BytesFor(header_.Channels())));
    }
  }

  bool Write(const std::filesystem::path& path) const {
    if (const orvane::Result<> written = WriteFile(path, bytes_); !written) {
      std::fprintf(stderr, "%s\n", FileMessage(path, written.Message()).c_str());
      return false;
    }
    std::printf("%s\n", path.string().c_str());
    return true;
  }

 private:
  void Append(std::span<const std::byte> bytes) {
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  }

  CalHeader header_;
  std::vector<std::byte> bytes_;
};

// The parts of a channel as they came from the shelf: a few percent off, and older ones lower.
FrontEndParameters PartsOf(int channel, double age) {
  const auto flags = ChannelModelFlagsOf("MAIN6");
  FrontEndParameters parts = NominalParameters(flags[static_cast<std::size_t>(channel)]);
  for (std::size_t k = 0; k < parts.size(); ++k) {
    const double spread = 0.04 * std::sin(2.3 * static_cast<double>(k) + 1.7 * channel);
    parts[k] *= 1 + spread;
  }
  for (std::size_t k = kLowPass; k < kChokeA; ++k) {
    parts[k] *= 1 - 0.015 * age;
  }
  parts[kBaseGain] = 0.002 * (channel - 2.5);
  parts[kStageA] = 0.001 * std::cos(channel);
  parts[kStageB] = -0.001 * std::sin(channel);
  return parts;
}

// A box of six channels: three short passes, then a sweep in each setting that its model is made
// from.
bool WriteBox(const std::filesystem::path& path, double age) {
  File file(HeaderOf(kBoxCal, 2417, 6, "main6"));
  constexpr double kHighest = 20000;
  constexpr double kDriveResistors = 598.5;
  constexpr double kDelayMicroseconds = 2.01;
  constexpr std::size_t kPasses = 15;
  for (std::size_t pass = 0; pass < kPasses; ++pass) {
    const double value4 = pass == 0 ? kDelayMicroseconds : pass == 9 ? kDriveResistors : 1;
    const auto front_end = [=](double frequency, int channel) {
      FrontEndParameters parts = PartsOf(channel, age);
      parts[kDelay] = kDelayMicroseconds;
      const auto setting =
          IsModelPass(pass) ? PassSetting(pass, kDriveResistors) : FrontEndSetting{0, 16, 0, {}};
      // The noise of the measurement.
      const double noise = 1e-4 * std::sin(37 * frequency + 11 * channel);
      return FrontEnd(parts, setting).Response(frequency) * (1 + noise);
    };
    file.AddPass(1, kHighest, IsModelPass(pass) ? 33 : 12, 6, value4, front_end);
  }
  return file.Write(path);
}

// An induction coil with feedback: flat between its corners, with the resonance of its winding
// above.
bool WriteCoil(const std::filesystem::path& path, int serial, double low_corner, double resonance) {
  CalHeader header = HeaderOf(kSensorCal, serial, 1, "main6");
  Put("TARK" + std::to_string(serial), &header.hsn);
  header.hnom = 100;
  header.cphc = 0.5;
  File file(header);
  const auto coil = [=](double frequency, int /*channel*/) {
    constexpr double kDamping = 0.9;
    const double share = frequency / resonance;
    return 1.02 * HighPass(frequency, low_corner) /
           Complex(1 - share * share, 2 * kDamping * share);
  };
  file.AddPass(2, 9600, 45, 9, 1, coil);
  return file.Write(path);
}

bool WriteCurrentSensor(const std::filesystem::path& path) {
  CalHeader header = HeaderOf(kCurrentSensorCal, 1043, 1, "main6");
  Put("CS1043", &header.hsn);
  header.hnom = 100;
  File file(header);
  file.AddPass(3, 9600, 30, 6, 1, [](double frequency, int /*channel*/) {
    return -0.985 * LowPass(frequency, 60000);  // clamped on the other way round
  });
  return file.Write(path);
}

}  // namespace

bool WriteCalibrations(const std::filesystem::path& folder) {
  std::error_code error;  // told with the first file
  std::filesystem::create_directories(folder, error);
  return WriteBox(folder / "2417.CLB", 0) && WriteBox(folder / "2417-2024.CLB", 2) &&
         WriteCoil(folder / "2041.CLC", 2041, 0.4, 14000) &&
         WriteCoil(folder / "2042.CLC", 2042, 0.52, 12500) &&
         WriteCoil(folder / "2057.CLC", 2057, 0.45, 13200) &&
         WriteCurrentSensor(folder / "1043.CLC");
}

}  // namespace orvane::examples
