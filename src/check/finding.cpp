// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/finding.h"

namespace orvane {

std::string_view SeverityName(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return "error";
    case Severity::kWarning:
      return "warning";
    case Severity::kHint:
      break;
  }
  return "hint";
}

FindingCounts CountFindings(std::span<const Finding> findings) {
  FindingCounts counts;
  for (const Finding& finding : findings) {
    ++(finding.severity == Severity::kError     ? counts.errors
       : finding.severity == Severity::kWarning ? counts.warnings
                                                : counts.hints);
  }
  return counts;
}

}  // namespace orvane
