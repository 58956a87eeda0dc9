// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_SURVEY_INDEX_H_
#define ORVANE_SURVEY_SURVEY_INDEX_H_

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "survey/file_facts.h"

namespace orvane {

/// What earlier scans found in files, so that unchanged ones are not read again: a database in the
/// user's cache folder, which may be deleted at any time. A file is known again by path, device,
/// number, size and times of its last changes. Several programs may use it at once; who would have
/// to wait for more than a second goes on without it. For one thread.
class SurveyIndex {
 public:
  /// `today` counts days since 1970.
  explicit SurveyIndex(std::int64_t today = Today());
  SurveyIndex(const SurveyIndex&) = delete;
  SurveyIndex& operator=(const SurveyIndex&) = delete;
  /// What was not written yet is lost.
  ~SurveyIndex();

  /// Makes the database where there is none; one of another version or a damaged one is made
  /// again. Fails where this program was built without databases, too.
  Result<> Open(const std::filesystem::path& file);

  /// Whether it can be used: it is open and nothing failed since.
  bool IsUsable() const;
  /// Why not; empty where nothing failed.
  const std::string& Failure() const { return failure_; }

  /// What is known of a file; false: nothing, or it was another one.
  [[nodiscard]] bool Find(const std::filesystem::path& path, const FileInfo& info,
                          FileFacts* facts);
  /// Keeps what a file says; written now and then, many at once.
  void Put(const std::filesystem::path& path, const FileInfo& info, const FileFacts& facts);
  /// Writes what is kept, and of files found again that they were seen.
  void Write();
  /// After a whole look at a folder: forgets files of it that were not seen today, others that
  /// nobody saw for half a year, and of more than `most_bytes` those that were not seen for the
  /// longest time. Who else is writing is not waited for: the next look does it.
  void Prune(const std::filesystem::path& root, std::uint64_t most_bytes = kMostBytes);

  static std::int64_t Today();

  /// Number of the layout and of what is kept; others are made again.
  static constexpr int kVersion = 5;
  static constexpr std::uint64_t kMostBytes = 256U << 20U;  ///< a million files
  static constexpr std::int64_t kLongUnseen = 183;          ///< days

 private:
  struct Database;
  struct Kept {
    std::string path;
    FileInfo info;
    std::string image;
  };
  void Fail(const std::string& doing);

  std::unique_ptr<Database> database_;
  std::filesystem::path file_;
  std::int64_t today_;
  std::vector<Kept> kept_;
  std::vector<std::string> seen_;  // paths found that were last seen before today
  std::string failure_;
};

/// "survey-index.db" in the program's part of the user's cache folder; empty where there is none.
std::filesystem::path UsualIndexFile();

}  // namespace orvane

#endif  // ORVANE_SURVEY_SURVEY_INDEX_H_
