// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/leave_out.h"

#include <optional>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/file_io.h"
#include "files/path_text.h"
#include "timeseries/leave_out_file.h"

namespace orvane {
namespace {

using Kind = LeaveOutChoice::Kind;

void Append(const std::string& note, std::string* notes) {
  notes->append(notes->empty() || note.empty() ? "" : "; ").append(note);
}

Result<std::uint64_t> CountRecords(const RandomFile& file, TsHeaderSize header_size) {
  TsWalker walker(&file, header_size);
  TsPlace place;
  std::uint64_t count = 0;
  while (walker.Next(&place)) {
    ++count;
  }
  return walker.Outcome() ? Result<std::uint64_t>(count) : Failure(walker.Outcome().Message());
}

// What kept a list from being used; empty: it fits.
Result<std::string> Mismatch(const LeaveOutList& list, const RandomFile& file,
                             std::uint64_t records) {
  const auto size = file.Size();
  if (!size) {
    return Failure(size.Message());
  }
  if (list.size == *size && list.records == records) {
    return std::string();
  }
  return "is for a file of " + FormatInt(list.size) + " bytes and " + FormatInt(list.records) +
         " records, this one has " + FormatInt(*size) + " and " + FormatInt(records);
}

Result<> TakeList(const std::filesystem::path& path, bool must_fit, const RandomFile& file,
                  std::uint64_t records, LeaveOut* leave_out) {
  const auto list = LoadLeaveOut(path);
  const auto mismatch = list ? Mismatch(*list, file, records) : Failure(list.Message());
  if (!mismatch) {
    return Failure(mismatch.Message());
  }
  if (mismatch->empty()) {
    leave_out->numbers = list->numbers;
  } else if (must_fit) {
    return Failure(FileMessage(path, *mismatch));
  } else {
    Append(PathText(path.filename()) + " is not used: it " + *mismatch, &leave_out->note);
  }
  return {};
}

void NoteBeyond(std::uint64_t records, LeaveOut* leave_out) {
  const RecordNumbers beyond = leave_out->numbers.Above(records);
  if (!beyond.IsEmpty()) {
    const bool is_one = beyond.Ranges().size() == 1 && beyond.Count() == 1;
    Append(std::string(is_one ? "there is no record " : "there are no records ") + beyond.Text(),
           &leave_out->note);
  }
}

}  // namespace

Result<LeaveOutChoice> LeaveOutChoiceOf(std::string_view text) {
  if (text == "bad" || text == "beside") {
    return LeaveOutChoice{.kind = text == "bad" ? Kind::kBad : Kind::kBeside};
  }
  const bool is_list = !text.empty() && IsDigit(text.front()) &&
                       text.find_first_not_of("0123456789,-") == std::string_view::npos;
  if (!is_list) {
    return LeaveOutChoice{.kind = Kind::kList, .file = PathOf(text)};
  }
  const auto numbers = RecordNumbersOf(text);
  if (!numbers) {
    return Failure(numbers.Message());
  }
  return LeaveOutChoice{.kind = Kind::kNumbers, .numbers = *numbers};
}

Result<LeaveOut> LeaveOutOf(const LeaveOutChoice& choice, const std::filesystem::path& data,
                            const RandomFile& file, TsHeaderSize header_size,
                            std::optional<std::uint64_t> known_records) {
  LeaveOut leave_out;
  leave_out.bad = choice.kind == Kind::kBad && header_size != TsHeaderSize::kBand;
  leave_out.numbers = choice.numbers;
  const std::filesystem::path beside = LeaveOutPath(data);
  const bool is_there = Exists(beside) != Existence::kNotThere;
  if (is_there && choice.kind != Kind::kBeside && choice.file != beside) {
    leave_out.note = PathText(beside.filename()) + " is there and not used (--leave-out beside)";
  }
  const bool takes_beside = is_there && choice.kind == Kind::kBeside;
  if (choice.kind != Kind::kNumbers && choice.kind != Kind::kList && !takes_beside) {
    return leave_out;
  }
  const auto records =
      known_records ? Result<std::uint64_t>(*known_records) : CountRecords(file, header_size);
  if (!records) {
    return Failure(records.Message());
  }
  if (choice.kind != Kind::kNumbers) {
    const Result<> taken =
        TakeList(takes_beside ? beside : choice.file, !takes_beside, file, *records, &leave_out);
    if (!taken) {
      return Failure(taken.Message());
    }
  }
  NoteBeyond(*records, &leave_out);
  return leave_out;
}

std::string LeaveOutNote(const LeaveOut& leave_out, std::uint64_t count) {
  std::string note;
  if (count > 0) {
    note = FormatInt(count) + (count == 1 ? " record" : " records") + " left out";
  }
  Append(leave_out.note, &note);
  return note;
}

}  // namespace orvane
