// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EXAMPLES_EVENING_SURVEY_H_
#define ORVANE_EXAMPLES_EVENING_SURVEY_H_

#include <filesystem>

namespace orvane::examples {

/// Writes what a crew brings home after three days with five boxes: a folder for each day, and the
/// calibrations. Each fault that a look at a survey finds is in it once, and no other. False, with
/// a message, where that fails.
bool WriteEveningSurvey(const std::filesystem::path& root);

}  // namespace orvane::examples

#endif  // ORVANE_EXAMPLES_EVENING_SURVEY_H_
