// SPDX-License-Identifier: GPL-3.0-or-later
#include "check/set_rows.h"

#include "base/number_text.h"
#include "editors/box_list.h"
#include "files/file_system.h"
#include "files/path_text.h"
#include "table/param_access.h"
#include "table/table_diff.h"

namespace orvane {
namespace {

constexpr std::string_view kSame = "same";

std::string RadioText(const ParamTable& meant) {
  const std::string role = IntParam(meant, "MSTR") == 1 ? "master" : "slave";
  return role + ", address " + FormatInt(IntParam(meant, "NADR"));
}

std::string ChannelsText(const ParamTable& table, std::int32_t serial) {
  BoxRows rows;
  const int count = LoadBoxList(table, &rows);
  for (int i = 0; i < count; ++i) {
    const BoxRow& row = rows[static_cast<std::size_t>(i)];
    if (row.serial == static_cast<std::uint32_t>(serial)) {
      return FormatInt(row.channels);
    }
  }
  return {};
}

bool IsOlder(const std::filesystem::path& file, const std::filesystem::path& than) {
  FileInfo info;
  FileInfo other;
  return !than.empty() && ReadInfo(file, &info) && ReadInfo(than, &other) &&
         info.written < other.written;
}

std::string ThereText(const SetFile& file, const std::filesystem::path& main) {
  if (!file.recording.empty()) {
    return "the table of " + file.recording;
  }
  if (!file.is_there) {
    return "nothing";
  }
  if (!file.table) {
    return "not a table";
  }
  if (const std::int32_t serial = IntParam(*file.table, "SNUM"); serial != file.serial) {
    return "serial " + FormatInt(serial);
  }
  const std::size_t count = DifferingKeys(file.meant, *file.table).size();
  if (count == 0) {
    return std::string(kSame);
  }
  return std::string(IsOlder(file.target, main) ? "older, " : "") + FormatInt(count) +
         (count == 1 ? " value differs" : " values differ");
}

std::string LeftOutText(const SetFile& file) {
  return file.is_there ? "gets no file, yet one is there" : "gets no file";
}

}  // namespace

std::vector<SetRow> SetRowsOf(const ParamTable& table, const std::filesystem::path& folder,
                              const std::filesystem::path& main, CheckMemory* memory) {
  std::vector<SetRow> rows;
  for (const SetFile& file : SetFilesOf(table, folder, memory)) {
    rows.push_back({file.box_name, FormatInt(file.serial), ChannelsText(table, file.serial),
                    RadioText(file.meant), PathText(file.target), ThereText(file, main),
                    file.target, file.is_there});
    rows.back().is_same = rows.back().there == kSame;
  }
  for (const SetFile& file : LeftOutFilesOf(table, folder, memory)) {
    rows.push_back({file.box_name,
                    FormatInt(file.serial),
                    ChannelsText(table, file.serial),
                    {},
                    {},
                    LeftOutText(file)});
  }
  return rows;
}

}  // namespace orvane
