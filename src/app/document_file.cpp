// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/document_file.h"

#include <algorithm>

#include "app/key_labels.h"
#include "base/number_text.h"
#include "files/path_text.h"
#include "table/table_diff.h"
#include "table/tbl_file.h"

namespace orvane {
namespace {

constexpr std::size_t kMostNamed = 10;  // three groups of them fit on a small screen

std::string Group(const std::string& title, const std::vector<ParamKey>& keys) {
  std::vector<std::string> named;
  for (const ParamKey key : keys) {
    // The version of the file is not a value that the user set.
    if (key != ParamKey("TBVI")) {
      named.push_back(key.Text());
    }
  }
  if (named.empty()) {
    return {};
  }
  const std::size_t shown = std::min(named.size(), kMostNamed);
  const std::size_t rest = named.size() - shown;
  named.resize(shown);
  return "\n\n" + title + ": " + LabelledKeys(named) +
         (rest == 0 ? "" : " and " + FormatInt(rest) + " more");
}

}  // namespace

void DocumentFile::Take(const RememberedFile& memory, const ParamTable& table,
                        LeftOutRecords left_out) {
  memory_ = memory;
  table_ = table;
  knows_table_ = true;
  left_out_ = std::move(left_out);
  may_lose_left_out_ = false;
}

void DocumentFile::TakeFromDisk(const RememberedFile& memory, const std::filesystem::path& path,
                                const ParamTable& table, int* version) {
  memory_ = memory;
  table_ = table;
  TblReport report;
  RememberedFile read;
  knows_table_ = LoadParamFile(&table_, path, &report, &read) == kOk && read.HasBytes() &&
                 read.Size() == memory.Size() && read.Sum() == memory.Sum();
  left_out_ = knows_table_ ? std::move(report.left_out) : LeftOutRecords();
  may_lose_left_out_ = false;
  if (knows_table_ && version != nullptr) {
    *version = report.version;
  }
}

std::string DocumentFile::Differences(const ParamTable& mine, const ParamTable& theirs) const {
  std::string text;
  if (knows_table_) {
    const TwoChanges changes = ChangesOfBoth(table_, mine, theirs);
    text = Group("Changed here", changes.mine) + Group("Changed there", changes.theirs) +
           Group("Changed in both", changes.both);
  } else {
    text = Group("Different", DifferingKeys(mine, theirs));
  }
  return text.empty() ? "\n\nIts values are the same as here." : text;
}

std::string DocumentFile::Question(const std::filesystem::path& path, const ParamTable& mine,
                                   DocumentFile* seen) const {
  ParamTable theirs = knows_table_ ? table_ : mine;
  TblReport report;
  RememberedFile memory;
  std::string text = PathText(path.filename()) + " was changed on disk by another program.";
  if (LoadParamFile(&theirs, path, &report, &memory) == kOk) {
    text += Differences(mine, theirs);
    if (report.left_out.count > 0) {
      text += "\n\nRecords there that Orvane cannot keep: " + report.left_out.Names();
    }
    seen->Take(memory, theirs, std::move(report.left_out));
    return text;
  }
  *seen = *this;
  if (!seen->memory_.Read(path)) {
    seen->Forget();
  }
  return text + "\n\nThe file there is not a readable table: " + report.message;
}

}  // namespace orvane
