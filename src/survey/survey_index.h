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
  SurveyIndex();
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
  /// Writes what is kept.
  void Write();

  /// Number of the layout and of what is kept; others are made again.
  static constexpr int kVersion = 2;

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
  std::vector<Kept> kept_;
  std::string failure_;
};

/// "survey-index.db" in the program's part of the user's cache folder; empty where there is none.
std::filesystem::path UsualIndexFile();

}  // namespace orvane

#endif  // ORVANE_SURVEY_SURVEY_INDEX_H_
