// SPDX-License-Identifier: GPL-3.0-or-later
// For builds without the library of databases: every scan reads every file.
#include "survey/survey_index.h"

namespace orvane {

struct SurveyIndex::Database {};

SurveyIndex::SurveyIndex(std::int64_t today) : today_(today) {}
SurveyIndex::~SurveyIndex() = default;

Result<> SurveyIndex::Open(const std::filesystem::path& /*file*/) {
  failure_ = "this program was built without SQLite";
  return orvane::Failure(failure_);
}

bool SurveyIndex::IsUsable() const { return false; }
void SurveyIndex::Fail(const std::string& doing) { failure_ = doing; }
bool SurveyIndex::Find(const std::filesystem::path& /*path*/, const FileInfo& /*info*/,
                       FileFacts* /*facts*/) {
  return false;
}
void SurveyIndex::Put(const std::filesystem::path& /*path*/, const FileInfo& /*info*/,
                      const FileFacts& /*facts*/) {}
void SurveyIndex::Write() {}
void SurveyIndex::Prune(const std::filesystem::path& /*root*/, std::uint64_t /*most_bytes*/) {}

}  // namespace orvane
