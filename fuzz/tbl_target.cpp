// SPDX-License-Identifier: GPL-3.0-or-later
#include "support.h"
#include "table/table_text.h"
#include "table/tbl_file.h"

namespace orvane::fuzz {
namespace {

const ParamTable& Defaults() {
  static const ParamTable defaults = [] {
    ParamTable table;
    Require(table.BuildParamIndex() == kOk, "the dictionary has an index");
    return table;
  }();
  return defaults;
}

ParamTable Loaded(const std::filesystem::path& path) {
  ParamTable table = Defaults();
  Require(LoadParamFile(&table, path) == kOk, "what was saved can be loaded");
  return table;
}

}  // namespace

void FuzzTbl(Bytes input) {
  const auto path = PutFile("a.tbl", input);
  ParamTable table = Defaults();
  TblReport report;
  const Status status = LoadParamFile(&table, path, &report);
  Require(status == kOk || status == kTblUnreadable || status == kTblNotRecognised,
          "the status is 0, 173 or 174");
  Require((status == kTblUnreadable) == (input.size() < 32), "fewer than 32 bytes are unreadable");
  Require((status == kOk) == report.message.empty(), "a failure has a message");
  Require(report.loaded <= report.records && report.records <= input.size() / 25 &&
              report.cut_at < input.size() + 1,
          "no more records than the file holds");
  static_cast<void>(Convert(TableText(), path, PathOf("a.txt")));
}

void FuzzTblRoundTrip(Bytes input) {
  ParamTable table = Defaults();
  if (LoadParamFile(&table, PutFile("a.tbl", input)) != kOk) {
    return;
  }
  const bool is_version_1 = !input.empty() && (input.back() & std::byte{1}) != std::byte{0};
  const TblSaveOptions options{is_version_1 ? 1U : 2U, false, 2};
  const auto saved = PathOf("b.tbl");
  Require(SaveParamFile(&table, saved, options) == kOk, "a table can be saved");
  // Version 1 has room for less, but what it kept once it keeps for good.
  Require(TextOf(TblImage(Loaded(saved), options)) == FileText(saved),
          "a table comes back as it was saved");
}

}  // namespace orvane::fuzz
