// SPDX-License-Identifier: GPL-3.0-or-later
// Reads box and sensor calibration files for computing with them.
#ifndef ORVANE_CALIBRATION_CAL_FILE_H_
#define ORVANE_CALIBRATION_CAL_FILE_H_

#include <array>
#include <complex>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "calibration/cal_header.h"
#include "calibration/channel_flags.h"

namespace orvane {

inline constexpr std::size_t kMaxCalPasses = 30;
inline constexpr std::size_t kMaxPassRecords = 100;

/// The model of a box's analog front end, fitted to the passes of its calibration.
struct BoxModel {
  static constexpr std::size_t kParameters = 20;
  static constexpr std::size_t kSlotEntries = 1200;

  /// How well the circuit of one channel fits. The errors are relative to the measured response.
  struct FitReport {
    std::size_t points = 0;    ///< measured points that took part
    std::size_t rejected = 0;  ///< points left out because they lie far from all others
    int iterations = 0;
    double rms = 0;
    double max = 0;
    bool is_kept = false;  ///< else the parameters are those that the fit started from

    /// Above this rms the circuit does not describe the channel well.
    static constexpr double kDoubtfulRms = 0.01;
    bool IsDoubtful() const { return !is_kept || rms > kDoubtfulRms; }
  };

  std::size_t parameter_count = 0;  ///< 0 without a model, else 20
  /// Parameter k of channel c stands at k x channels + c.
  std::array<double, kParameters * kMaxCalChannels> parameters{};
  /// Where each filled slot of the two buffers begins.
  std::vector<std::size_t> slot_starts;
  std::vector<double> frequencies;              ///< 1200 entries in Hz; empty without a model
  std::vector<std::complex<double>> responses;  ///< 1200 entries for each channel; likewise
  std::size_t entries = 0;                      ///< filled ones of the 1200
  std::array<FitReport, kMaxCalChannels> fits{};

  std::size_t SlotEnd(std::size_t slot) const {
    return slot + 1 < slot_starts.size() ? slot_starts[slot + 1] : entries;
  }
};

/// A calibration in memory. Whoever read it owns it; it does not change any more.
struct CalData {
  CalHeader header;                       ///< with "HW" in upper case
  std::vector<CalFileRecord> records;     ///< 1 to 500
  std::vector<std::uint32_t> pass_table;  ///< first record of each pass, then the record count
  ChannelModelFlags channel_flags{};      ///< of a box with a model, else zero
  BoxModel model;

  std::size_t Channels() const { return header.Channels(); }
  std::size_t PassCount() const { return pass_table.size() - 1; }
  std::span<const CalFileRecord> Pass(std::size_t pass) const {
    return std::span(records).subspan(pass_table[pass], pass_table[pass + 1] - pass_table[pass]);
  }
};

/// What a reading came to. The status is for programs; the message names file, place and reason.
struct CalReport {
  Status status = kOk;
  std::string message;
};

/// Reads the calibration of a unit: the path without its extension, "DIRECTORY/SERIAL", which
/// becomes ".CLB" for a box and ".CLC" for a sensor; a file whose name differs in case only will
/// do. Null, with a status, where the file is not wholly right; a cut last record is left out.
std::unique_ptr<CalData> ReadCalFile(int kind, const std::string& base_path,
                                     CalReport* report = nullptr);

/// The same for a file by its whole name.
std::unique_ptr<CalData> ReadCalFileAt(int kind, const std::filesystem::path& path,
                                       CalReport* report = nullptr);

/// The same without the front-end model of a box, which is most of the work.
std::unique_ptr<CalData> ReadCalRecordsAt(int kind, const std::filesystem::path& path,
                                          CalReport* report = nullptr);

/// The "CTYP" in a file's header; none where that cannot be read.
std::optional<int> CalKindIn(const std::filesystem::path& path);

inline Status GetCalField(const CalData* cal, std::string_view key, ValueType type, void* out) {
  return GetCalField(cal == nullptr ? nullptr : &cal->header, key, type, out);
}

}  // namespace orvane

#endif  // ORVANE_CALIBRATION_CAL_FILE_H_
