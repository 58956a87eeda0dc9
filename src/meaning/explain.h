// SPDX-License-Identifier: GPL-3.0-or-later
// Meanings as texts, for a column each.
#ifndef ORVANE_MEANING_EXPLAIN_H_
#define ORVANE_MEANING_EXPLAIN_H_

#include <string>
#include <string_view>

#include "editors/raw_meaning.h"
#include "meaning/key_meaning.h"
#include "meaning/meanings.h"

namespace orvane {

inline constexpr std::string_view kNotUsed = "not used by Orvane";
inline constexpr std::string_view kNotListed = "not a listed value";
inline constexpr std::string_view kNo = "no";
inline constexpr std::string_view kYes = "yes";

/// The coded values: "1: SIP; 2: TDIP".
std::string CodedValuesText(const KeyMeaning& meaning);

/// What the raw parameters show of an entry.
RawMeaning RawMeaningOf(const Meanings& meanings, const ParamEntry& entry);

/// Where it is seen: "Acquisition Parameters: Function; Box Status: Latitude (shown)".
std::string PlacesText(const KeyMeaning& meaning);

}  // namespace orvane

#endif  // ORVANE_MEANING_EXPLAIN_H_
