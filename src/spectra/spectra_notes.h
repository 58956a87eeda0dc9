// SPDX-License-Identifier: GPL-3.0-or-later
// What a reader of calibrated spectra has to know: what is 0, guessed or taken from elsewhere.
#ifndef ORVANE_SPECTRA_SPECTRA_NOTES_H_
#define ORVANE_SPECTRA_SPECTRA_NOTES_H_

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "spectra/harmonics.h"
#include "spectra/spectra_source.h"

namespace orvane {

/// On the recording as a whole: columns that are all 0, calibrations whose header names another
/// unit, contact resistances of another box, models that fit badly.
std::vector<std::string> RecordingNotes(const SpectraSource& source);

/// How well the responses are known in the recording's own settings, and what the verdicts on the
/// calibrations of box and sensors say of these.
std::vector<std::string> AccuracyNotes(const SpectraSource& source);

/// On harmonics that lie between two bins: the first of them, and the one that lies farthest off.
/// Empty where all are on theirs.
std::string BinNote(double base_frequency, double sample_rate, std::size_t samples,
                    std::span<const Harmonic> harmonics);

/// On so many lines of a channel, from 1, that lie beyond the records of its sensor.
std::string BeyondNote(int number, const CalibratedChannel& channel, std::uint64_t lines);
/// Whether a frequency does, apart from the rounding of the stored ones.
bool IsBeyondRecords(const CalibratedChannel& channel, double frequency);

/// On digital filters of rates that no band has. `rates` is not empty.
std::string OwnRateNote(const std::set<double>& rates);

}  // namespace orvane

#endif  // ORVANE_SPECTRA_SPECTRA_NOTES_H_
