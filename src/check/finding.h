// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHECK_FINDING_H_
#define ORVANE_CHECK_FINDING_H_

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "table/param_key.h"

namespace orvane {

/// The worst first.
enum class Severity : std::uint8_t {
  kError,    ///< the boxes would record nothing, or nothing usable
  kWarning,  ///< probably not what is meant
  kHint,     ///< worth a look; often right
};

/// "error", "warning" or "hint".
std::string_view SeverityName(Severity severity);

/// What a rule has to say of a table.
struct Finding {
  std::string_view id;  ///< of the rule, such as "serial-gap"
  Severity severity = Severity::kHint;
  std::string sentence;        ///< for the crew: UTF-8, printable, in one line
  std::vector<ParamKey> keys;  ///< those concerned; the first is where it is mended
  std::string box;             ///< as `Spread::BoxName()` has it; empty: the table as a whole

  friend bool operator==(const Finding&, const Finding&) = default;
};

struct FindingCounts {
  int errors = 0;
  int warnings = 0;
  int hints = 0;
};
FindingCounts CountFindings(std::span<const Finding> findings);

}  // namespace orvane

#endif  // ORVANE_CHECK_FINDING_H_
