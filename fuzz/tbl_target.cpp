// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/tbl_file.h"
#include "core/tbl_listing.h"
#include "support.h"

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

void RequireSameValues(const ParamTable& a, const ParamTable& b) {
  ParamKey key;
  for (int position = 0; a.GetParamKey(position, &key) == kOk; ++position) {
    Require(*a.FindParam(key) == *b.FindParam(key), "a value comes back as it was saved");
  }
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
  static_cast<void>(Convert(TblListing(), path, PathOf("a.txt")));
}

void FuzzTblRoundTrip(Bytes input) {
  ParamTable table = Defaults();
  if (LoadParamFile(&table, PutFile("a.tbl", input)) != kOk) {
    return;
  }
  const auto saved = PathOf("b.tbl");
  Require(SaveParamFile(&table, saved, {}) == kOk, "a table can be saved");
  RequireSameValues(table, Loaded(saved));
  // Version 1 has room for less; what it kept once it keeps for good.
  const auto image = TblImage(table, {1, false, 2});
  ParamTable older = Loaded(PutFile("b.tbl", image));
  const Le<std::int32_t> version(2);  // as the table that the image was made of has it
  Require(older.SetParam("TBVI", IntPT, &version) == kOk, "there is TBVI");
  Require(TblImage(older, {1, false, 2}) == image, "version 1 comes back as it was saved");
}

}  // namespace orvane::fuzz
