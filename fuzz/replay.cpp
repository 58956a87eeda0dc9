// SPDX-License-Identifier: GPL-3.0-or-later
// Runs inputs that are kept through the targets, with any compiler.
//
//   orvane-fuzz-replay CORPUS           every file of CORPUS/TARGET/
//   orvane-fuzz-replay TARGET FILE...   these files
//   orvane-fuzz-replay --list           the targets: name, largest input, least rate
#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "support.h"

namespace {

using namespace orvane::fuzz;  // NOLINT(google-build-using-namespace): the program is theirs

constexpr auto kTargets = std::to_array<Target>({
    {"tbl", FuzzTbl, 4096, 1000},
    {"tbl-round-trip", FuzzTblRoundTrip, 4096, 1000},
    {"tfs", FuzzTfs, 4800, 1000},
    {"tfs-round-trip", FuzzTfsRoundTrip, 4800, 1000},
    {"time-series", FuzzTimeSeries, 1280, 1000},
    {"time-series-text", FuzzTimeSeriesText, 2048, 1000},
    {"restack", FuzzRestack, 2048, 1000},
    {"leave-out", FuzzLeaveOut, 512, 1000},
    {"stack", FuzzStack, 2048, 1000},
    {"stack-view", FuzzStackView, 2048, 1000},
    {"decay", FuzzDecay, 2048, 1000},
    {"calibration", FuzzCalibration, 2180, 1000},
    {"calibration-view", FuzzCalibrationView, 1536, 100},
    {"calibration-fit", FuzzCalibrationFit, 2180, 100},
    {"spectra", FuzzSpectra, 4096, 100},
    {"unsaved", FuzzUnsaved, 1024, 1000},
    {"time-text", FuzzTimeText, 64, 1000},
    {"value-text", FuzzValueText, 128, 1000},
    {"assignment", FuzzAssignment, 128, 1000},
    {"json", FuzzJson, 1024, 1000},
    {"value-lines", FuzzValueLines, 1024, 1000},
    {"check", FuzzCheck, 2048, 1000},
    {"survey", FuzzSurvey, 4096, 100},
    {"survey-facts", FuzzSurveyFacts, 1024, 1000},
#ifdef ORVANE_FUZZ_ARCHIVE
    {"archive", FuzzArchive, 4096, 1000},
    {"grid-text", FuzzGridText, 512, 1000},
#endif
});

const Target* Find(std::string_view name) {
  const auto* found = std::find_if(kTargets.begin(), kTargets.end(),
                                   [name](const Target& target) { return target.name == name; });
  return found == kTargets.end() ? nullptr : &*found;
}

void Run(const Target& target, const std::filesystem::path& file) {
  const std::string text = FileText(file);
  // Told before, because an input that finds something ends the program.
  std::printf("%s: %s\n", std::string(target.name).c_str(), file.c_str());
  std::fflush(stdout);
  // Of exactly its size, so that a sanitizer sees what lies behind it.
  const std::vector<char> exact(text.begin(), text.end());
  target.run(std::as_bytes(std::span(exact)));
}

int RunCorpus(const std::filesystem::path& corpus) {
  for (const Target& target : kTargets) {
    std::vector<std::filesystem::path> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(corpus / target.name, error)) {
      files.push_back(entry.path());
    }
    if (files.empty()) {
      std::fprintf(stderr, "%s: no inputs\n", (corpus / target.name).c_str());
      return 1;
    }
    std::sort(files.begin(), files.end());
    for (const auto& file : files) {
      Run(target, file);
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<std::string_view> arguments(argv + 1, argv + argc);
  if (arguments.size() == 1 && arguments[0] == "--list") {
    for (const Target& target : kTargets) {
      std::printf("%s %zu %d\n", std::string(target.name).c_str(), target.largest_input,
                  target.least_rate);
    }
    return 0;
  }
  if (arguments.size() == 1) {
    return RunCorpus(arguments[0]);
  }
  const Target* target = arguments.empty() ? nullptr : Find(arguments[0]);
  if (target == nullptr) {
    std::fputs("usage: orvane-fuzz-replay CORPUS | TARGET FILE... | --list\n", stderr);
    return 2;
  }
  for (std::size_t i = 1; i < arguments.size(); ++i) {
    Run(*target, arguments[i]);
  }
  return 0;
}
