// SPDX-License-Identifier: GPL-3.0-or-later
// Which records a result leaves out: what the user chose for any file, and what that means for one.
#ifndef ORVANE_TIMESERIES_LEAVE_OUT_H_
#define ORVANE_TIMESERIES_LEAVE_OUT_H_

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "timeseries/record_numbers.h"
#include "timeseries/ts_walker.h"

namespace orvane {

/// What to leave out, before it is known of which file.
struct LeaveOutChoice {
  enum class Kind {
    kNothing,
    kBad,      ///< records that their box marked bad
    kBeside,   ///< what the list beside the data file names
    kNumbers,  ///< `numbers`
    kList,     ///< what the list `file` names
  };
  Kind kind = Kind::kNothing;
  RecordNumbers numbers = {};
  std::filesystem::path file = {};
};

/// "bad", "beside", numbers such as "3,7-9", else the path of a list. Fails where numbers are
/// wrong.
Result<LeaveOutChoice> LeaveOutChoiceOf(std::string_view text);

/// The records of one file that are left out.
struct LeaveOut {
  bool bad = false;  ///< those that their box marked bad
  RecordNumbers numbers = {};
  /// What the user should know of the choice: a list that is not used, numbers that the file has
  /// not. Mostly empty.
  std::string note = {};

  bool Has(const TsPlace& place) const {
    return (bad && place.header.IsBad()) || numbers.Has(place.number);
  }
};

/// What a choice means for a data file with these headers. A list beside it that was made for
/// another size or count of records is not used, and the note says so; one that is there and was
/// not chosen is named too. Fails, with the list's name, where a list cannot be read, and where one
/// that was chosen by its name is for another file. Records that are not known yet are counted, by
/// a walk over the file.
Result<LeaveOut> LeaveOutOf(const LeaveOutChoice& choice, const std::filesystem::path& data,
                            const RandomFile& file, TsHeaderSize header_size,
                            std::optional<std::uint64_t> known_records = std::nullopt);

/// "7 records left out" and the note, with "; " between them; `count` is of those really left out.
std::string LeaveOutNote(const LeaveOut& leave_out, std::uint64_t count);

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_LEAVE_OUT_H_
