// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_SURVEY_SCAN_H_
#define ORVANE_SURVEY_SURVEY_SCAN_H_

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "survey/recording.h"
#include "survey/survey_findings.h"

namespace orvane {

/// How much of the files is read.
enum class ScanDepth : std::uint8_t {
  kNames,    ///< nothing: names, sizes and times
  kHeaders,  ///< tables whole, of waveforms and bands every record's header
  kDeep,     ///< samples too
};

struct SurveyOptions {
  ScanDepth depth = ScanDepth::kHeaders;
  /// Of calibrations, itself and not below it; empty: the folder of each recording, then any of the
  /// survey.
  std::filesystem::path calibrations = {};
  /// SHA-256 of each file, for which all bytes are read.
  bool has_checksums = false;
  /// The index; empty: none. None is made in the survey's folder.
  std::filesystem::path index = {};
  /// A scan that is not deep shows what earlier deep ones found in unchanged files.
  bool shows_known_samples = false;
  /// Recordings that end before it are left out, though findings of the others may need them;
  /// seconds since 1970, 0: none are.
  std::int64_t since = 0;
};

class SurveyIndex;

using SharedRow = std::shared_ptr<const SurveyRow>;

/// A survey's folder, looked through on a thread of its own. To be used from one thread; no call
/// waits for a file.
class SurveyScan {
 public:
  SurveyScan(std::filesystem::path root, SurveyOptions options);
  SurveyScan(const SurveyScan&) = delete;
  SurveyScan& operator=(const SurveyScan&) = delete;
  /// Stops, and waits for the end: at most the reading of a piece of a file.
  ~SurveyScan();

  /// To be done with it soon; what was found until then stays right.
  void Stop() { stop_ = true; }

  /// At most that many rows that came since the last call, in the order of folders and names.
  std::vector<SharedRow> Take(std::size_t most = 200);
  /// All is done, or stopped, or failed; `Take()` may still have some.
  bool IsDone() const { return is_done_; }
  bool WasStopped() const { return stop_; }
  std::uint64_t FilesDone() const { return done_; }
  std::uint64_t FilesInAll() const { return total_; }  ///< 0 while folders are listed

  /// Once it is done: the folder could not be listed at all, or that of calibrations is none.
  const Result<>& Outcome() const { return outcome_; }
  /// Once it is done and was not stopped.
  const std::vector<SurveyFinding>& Findings() const { return findings_; }
  /// The same, which are gone after it.
  std::vector<SurveyFinding> TakeFindings() { return std::move(findings_); }
  /// Once it is done: what could not be read.
  const std::vector<ScanNote>& Notes() const { return notes_; }
  /// Once it is done: files and folders that systems keep for themselves, which were not looked at.
  std::size_t Hidden() const { return hidden_; }
  /// Once it is done: why there was no index; empty: there was, or none was asked for.
  const std::string& IndexNote() const { return index_note_; }

 private:
  void Run();
  Result<> Work();
  void OpenIndex(SurveyIndex* index);

  std::filesystem::path root_;
  SurveyOptions options_;
  std::atomic<bool> stop_ = false;
  std::atomic<bool> is_done_ = false;
  std::atomic<std::uint64_t> done_ = 0;
  std::atomic<std::uint64_t> total_ = 0;
  std::mutex mutex_;
  std::vector<SharedRow> rows_;
  std::size_t taken_ = 0;
  std::vector<SurveyFinding> findings_;
  std::vector<ScanNote> notes_;
  std::size_t hidden_ = 0;
  std::string index_note_;
  Result<> outcome_;
  Result<> no_memory_;  // made while there is some
  std::thread thread_;  // the last: it uses the others
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_SURVEY_SCAN_H_
