// SPDX-License-Identifier: GPL-3.0-or-later
// Where the electrodes of a survey line are.
#ifndef ORVANE_EDITORS_LINE_LAYOUT_H_
#define ORVANE_EDITORS_LINE_LAYOUT_H_

#include <string>

#include "editors/site_forms.h"
#include "editors/spread.h"

namespace orvane {

/// Fills the electrode positions of a spread from what the form shows of an IP or CSAMT site,
/// in metres, and returns what was done, in words.
///
/// The line of receiver electrodes begins at the receiver station and runs on over the boxes in the
/// order of the list, the local one and then the auxiliary ones, a dipole length for each channel
/// whose definition begins with E or is empty. Coils have no electrodes and take no length. The
/// line leads along the profile's azimuth (CSAMT), else away from the transmitter station.
///
/// IP: the transmitter's near electrode is at its station and, with a dipole, the other one a
/// dipole length further from the receivers: for Dipole-Dipole, Pole-Dipole and Pole-Pole arrays.
/// Other arrays and the reference box keep what they have.
std::string CalculateCoordinates(const SiteForm& form, Spread* spread);

}  // namespace orvane

#endif  // ORVANE_EDITORS_LINE_LAYOUT_H_
