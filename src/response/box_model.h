// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_RESPONSE_BOX_MODEL_H_
#define ORVANE_RESPONSE_BOX_MODEL_H_

#include <array>
#include <complex>
#include <cstdint>
#include <vector>

#include "calibration/cal_records.h"
#include "response/channel_flags.h"
#include "response/front_end.h"

namespace orvane {

/// The model of a box's analog front end, fitted to the passes of its calibration.
struct BoxModel {
  static constexpr std::size_t kParameters = 20;
  static constexpr std::size_t kSlotEntries = 1200;

  /// How well the circuit of one channel fits. The errors are relative to the measured response.
  struct FitReport {
    std::size_t points = 0;    ///< measured points that took part
    std::size_t rejected = 0;  ///< others, which hardly count because they lie far from the model
    int iterations = 0;
    double rms = 0;
    double max = 0;
    double offset = 0;          ///< of the points' weights while they were fitted
    double weighted_noise = 0;  ///< as `noise`, of the points so weighted
    double noise = 0;  ///< of real and of imaginary part, from the median of the circuit's errors
    double prior_weight = 0;  ///< of a deviation from paper by a part's tolerance
    bool is_kept = false;     ///< else the parameters are those that the fit started from

    /// Above this rms the circuit does not describe the channel well.
    static constexpr double kDoubtfulRms = 0.01;
    bool IsDoubtful() const { return !is_kept || rms > kDoubtfulRms; }
  };

  std::size_t parameter_count = 0;  ///< 0 without a model, else 20
  /// Parameter k of channel c is at k x channels + c.
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

/// The values that the parts of a channel's circuit are meant to have, by its flags.
FrontEndParameters NominalParameters(std::uint32_t flags);

/// Whether the model has a setting for a pass of the calibration, counted from 0.
bool IsModelPass(std::size_t pass);
/// How a box was switched while it swept such a pass; docs/response.md lists them. `drive`: the
/// resistors that some passes are driven through, ohms for both legs.
FrontEndSetting PassSetting(std::size_t pass, double drive);

/// The passes in the order in which they are copied into the buffers, one for each slot.
inline constexpr auto kSlotPasses =
    std::to_array<std::size_t>({4, 5, 6, 3, 7, 8, 13, 14, 3, 9, 10, 11, 12, 5, 6, 3});

/// The front-end model of a box calibration of three passes or more, whose channels have these
/// flags: buffers, parameters, reports. It cannot fail: a channel that no circuit fits keeps the
/// parameters that the fit starts from.
BoxModel FitBoxModel(const CalRecords& cal, const ChannelModelFlags& flags);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_BOX_MODEL_H_
