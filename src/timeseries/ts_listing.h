// SPDX-License-Identifier: GPL-3.0-or-later
// Texts that list what was worked out of a time series file: into a file each by a batch, or
// wherever else the pieces are put.
#ifndef ORVANE_TIMESERIES_TS_LISTING_H_
#define ORVANE_TIMESERIES_TS_LISTING_H_

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "files/batch.h"
#include "timeseries/record_pass.h"
#include "timeseries/ts_file.h"

namespace orvane {

/// How a listing works, and where its text goes.
struct ListingWork {
  PassOptions pass = {};
  /// Gets the text piece by piece, from one thread at a time.
  std::function<void(std::string_view piece)> put;
  /// Gets the bytes of each record that is done; may be empty.
  std::function<void(std::uint64_t bytes)> advance = {};
};

/// Lists one file and returns what a user should know of it, mostly nothing. Fails with a reason
/// that does not name the file.
using TsListing =
    std::function<Result<std::string>(const std::filesystem::path& file, const ListingWork& work)>;

/// The path of a listing: without extension, with "_TS%d" for a band file and "_TSK" for a stacked
/// one, and a suffix such as "_stats.tsv".
std::string TsResultName(std::string_view path, std::string_view suffix);

/// A listing of each file, beside it or in a folder.
Conversion ListingFiles(const std::string& suffix, TsListing listing);

/// Opens a file for a listing, where it has no companion table as raw counts, which `note` then
/// says. A table that is there and cannot be read fails: another time the listing would be another.
Result<> OpenForListing(const std::filesystem::path& path, TsFile::Options options, TsFile* file,
                        std::string* note);

/// Adds a note to others, with "; " between them.
void AddNote(const std::string& note, std::string* notes);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_TS_LISTING_H_
