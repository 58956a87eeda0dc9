// SPDX-License-Identifier: GPL-3.0-or-later
// Which rows of the raw parameters a user wants to see.
#include "base/ascii.h"
#include "editors/raw_table.h"

namespace orvane {
namespace {

// Every parameter as it is built in.
const ParamTable& Defaults() {
  static const ParamTable kDefaults = [] {
    ParamTable table;
    static_cast<void>(table.BuildParamIndex());  // without it every row differs, and is shown
    return table;
  }();
  return kDefaults;
}

}  // namespace

bool RawTable::DiffersFrom(const ParamTable& other, int ordinal) const {
  const ParamEntry* here = table_->FindParam(Row(ordinal).key);
  const ParamEntry* there = other.FindParam(Row(ordinal).key);
  return here != nullptr && (there == nullptr || here->value != there->value);
}

bool RawTable::IsChanged(int ordinal) const { return DiffersFrom(opened_, ordinal); }

bool RawTable::Has(int ordinal, RawSwitch what) const {
  switch (what) {
    case kChangedSinceFile:
      return file_ != nullptr && DiffersFrom(*file_, ordinal);
    case kNotDefault:
      return DiffersFrom(Defaults(), ordinal);
    case kOwnChanges:
      return IsChanged(ordinal);
    case kInNoDialog:
      return !Row(ordinal).meaning.is_in_dialog;
    case kFavourites:
      return IsFavourite(ordinal);
  }
  return true;
}

bool RawTable::Matches(int ordinal, std::string_view filter, unsigned switches) const {
  for (const RawSwitch what :
       {kChangedSinceFile, kNotDefault, kOwnChanges, kInNoDialog, kFavourites}) {
    if ((switches & what) != 0 && !Has(ordinal, what)) {
      return false;
    }
  }
  const RawRow& row = Row(ordinal);
  return ContainsWithoutCase(row.key.Text(), filter) || ContainsWithoutCase(row.value, filter) ||
         ContainsWithoutCase(Cell(ordinal, kMeaningColumn), filter);
}

void RawTable::SetFavourite(int ordinal, bool is_favourite) {
  if (is_favourite) {
    favourites_.insert(Row(ordinal).key.Text());
  } else {
    favourites_.erase(Row(ordinal).key.Text());
  }
}

}  // namespace orvane
