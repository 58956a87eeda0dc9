// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a calibration may be trusted, and why not.
#ifndef ORVANE_RESPONSE_VERDICT_H_
#define ORVANE_RESPONSE_VERDICT_H_

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "response/cal_file.h"

namespace orvane {

enum class Usability { kWell, kWithCare, kNotUsable };

/// Something that speaks against a channel's model.
struct VerdictReason {
  std::string text;
  std::optional<std::size_t> pass;  ///< counted from 0
  std::optional<std::size_t> part;  ///< a `FrontEndPart`
};

/// What a channel's model is good for.
struct ChannelVerdict {
  Usability usability = Usability::kWell;
  std::vector<VerdictReason> reasons;  ///< none: well
  std::vector<std::string> notes;      ///< what speaks against nothing, as frequencies not covered
  std::set<int> gains;                 ///< codes of the settings that the reasons concern
  std::set<int> filters;               ///< likewise, "LPFR" codes: 0, 16 to 20, 80 to 84
  bool is_ac = false;                  ///< likewise AC coupling
  bool is_all = false;                 ///< every setting is concerned

  /// Whether a recording with these settings is concerned.
  bool Concerns(int gain, int low_pass, int coupling) const;
  /// "usable with care (filters 3, 4 with and without VLF trap)"; "well".
  std::string Summary() const;
  /// "usable with care (filter 3): pass 14 (x 1, filter 3) is missing"; "well" without reasons.
  std::string Text() const;
};

/// That of one channel of a box. The calibration needs its model.
ChannelVerdict JudgeChannel(const CalData& cal, std::size_t channel);

/// That of a sensor's calibration, or of one of the older family, which records of a kind serve
/// without a model. `unit`: the serial number that the file is named by; empty: unknown.
ChannelVerdict JudgeRecords(const CalRecords& cal, int kind, std::size_t channel,
                            const std::string& unit);

/// "no filter", "filter 2", "filter 2, VLF trap"
std::string FilterText(int low_pass);
/// "x 0.25, filter 2, VLF trap, AC" of a pass counted from 0 that the model has a setting for.
std::string PassSettingText(std::size_t pass);

}  // namespace orvane

#endif  // ORVANE_RESPONSE_VERDICT_H_
