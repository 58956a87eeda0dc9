// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_EXAMPLE_SURVEY_H_
#define ORVANE_TESTS_SUPPORT_EXAMPLE_SURVEY_H_

#include <cstdlib>
#include <filesystem>
#include <string>

namespace orvane::testing {

/// Writes the example survey, or with "--evening" a day's recordings of many boxes, into `folder`;
/// false where the program that does it failed.
inline bool MakeExampleSurvey(const std::filesystem::path& folder, const std::string& option = "") {
#ifdef _WIN32
  // Its shell takes the outermost quotation marks away.
  constexpr auto kOpening = "\"\"";
  constexpr auto kClosing = "\" >NUL\"";
#else
  constexpr auto kOpening = "\"";
  constexpr auto kClosing = "\" >/dev/null";
#endif
  return std::system(std::string(kOpening)
                         .append(ORVANE_EXAMPLE_SURVEY)
                         .append("\" ")
                         .append(option)
                         .append(" \"")
                         .append(folder.string())
                         .append(kClosing)
                         .c_str()) == 0;
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_EXAMPLE_SURVEY_H_
