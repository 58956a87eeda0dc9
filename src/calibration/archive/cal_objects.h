// SPDX-License-Identifier: GPL-3.0-or-later
// A calibration as objects that can be copied, compared and archived.
#ifndef ORVANE_CALIBRATION_ARCHIVE_CAL_OBJECTS_H_
#define ORVANE_CALIBRATION_ARCHIVE_CAL_OBJECTS_H_

#include <array>
#include <complex>
#include <cstdint>
#include <string>
#include <vector>

#include "calibration/archive/archive.h"
#include "calibration/cal_header.h"

namespace orvane::calobj {

/// One point of a frequency response.
class CFreqResp : public Object {
 public:
  static constexpr std::int64_t kLeastBytes = 24;

  double frequency = 0;  ///< Hz
  std::complex<double> response;

  std::string_view ClassName() const override { return "CFreqResp"; }
  void Serialize(Archive& archive) override;
};

/// One response function.
class CalFunc : public Object {
 public:
  static constexpr std::int64_t kLeastBytes = 8;

  std::int32_t identifier = 0;  ///< which channel or sensor it describes
  std::vector<CFreqResp> points;

  std::string_view ClassName() const override { return "CalFunc"; }
  void Serialize(Archive& archive) override;
};

/// One channel at one frequency.
class CalRecord : public Object {
 public:
  static constexpr std::int64_t kLeastBytes = 60;

  CalRecord() = default;
  /// Of a file's record; channels count from 1 to 12.
  CalRecord(const CalFileRecord& record, int channel);

  std::int32_t step = 0;
  double frequency = 0;  ///< Hz
  double value3 = 0;
  double value4 = 0;
  std::complex<double> input;
  std::complex<double> response;

  std::string_view ClassName() const override { return "CalRecord"; }
  void Serialize(Archive& archive) override;
};

/// One sweep of frequencies made with one setting of the box.
class CalPass : public Object {
 public:
  static constexpr std::int64_t kLeastBytes = 32;

  std::int32_t number = 0;
  double frequency = 0;  ///< reference frequency in Hz
  std::array<std::int32_t, 4> settings{};
  std::vector<CalRecord> records;

  std::string_view ClassName() const override { return "CalPass"; }
  void Serialize(Archive& archive) override;

  /// Whatever the records.
  friend bool operator==(const CalPass& a, const CalPass& b) {
    return a.number == b.number && a.frequency == b.frequency && a.settings == b.settings;
  }
};

/// A whole calibration. Its integers and texts mirror header fields.
class CalData : public Object {
 public:
  std::array<std::int32_t, 5> header_numbers{};
  std::array<std::string, 2> header_texts;
  std::array<std::int32_t, 5> more_numbers{};
  std::string more_text;
  std::array<double, 3> header_values{};
  std::int32_t last_number = 0;
  std::vector<double> values;
  std::vector<CalPass> passes;
  std::vector<CalFunc> functions;

  std::string_view ClassName() const override { return "CalData"; }
  void Serialize(Archive& archive) override;

  /// kept: not symmetric. The second header number of both must be equal, and the third of `a`
  /// equal to them; nothing else counts.
  friend bool operator==(const CalData& a, const CalData& b) {
    return a.header_numbers[1] == b.header_numbers[1] && a.header_numbers[2] == b.header_numbers[1];
  }
};

}  // namespace orvane::calobj

#endif  // ORVANE_CALIBRATION_ARCHIVE_CAL_OBJECTS_H_
