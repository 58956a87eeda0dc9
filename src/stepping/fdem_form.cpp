// SPDX-License-Identifier: GPL-3.0-or-later
#include "stepping/fdem_form.h"

#include <array>
#include <filesystem>
#include <limits>
#include <system_error>

#include "base/ascii.h"
#include "base/number_text.h"
#include "files/file_io.h"
#include "files/path_text.h"
#include "stepping/fdem_schedule.h"
#include "stepping/tfs_file.h"

namespace orvane {
namespace {

constexpr auto kSets =
    std::to_array<Choice>({{"Whole Frequency Set", 1536}, {"Reduced Frequency Set", 1537}});
constexpr Limits kAmount = {0, std::numeric_limits<double>::infinity()};

constexpr auto kFields = std::to_array<Field>({
    {FdemForm::kSeconds, Widget::kInteger, "Seconds Per Freq.:", {}, IntPT, Unbound(), kAmount},
    {FdemForm::kCycles, Widget::kInteger, "Cycles Per Freq.:", {}, IntPT, Unbound(), kAmount},
    {FdemForm::kCurrent, Widget::kReal, "Transimitting Current(A):", {}, FltPT, Unbound(), kAmount},
    {FdemForm::kSet, Widget::kRadios, "Frequency set", {}, IntPT, Unbound(), {}, kSets},
    {FdemForm::kPath, Widget::kPath, "File To Be Save", {}, StrPT, Unbound()},
});

}  // namespace

FdemForm::FdemForm(Prompts* prompts, std::filesystem::path folder)
    : prompts_(prompts), folder_(std::move(folder)), model_(nullptr, kFields) {}

void FdemForm::Open() {
  model_.SetText(kSeconds, "60");
  model_.SetText(kCycles, "60");
  model_.SetText(kCurrent, "5");
  model_.SetIndex(kSet, 0);
}

void FdemForm::Choose(const std::string& path) {
  chosen_ = path;
  model_.SetText(kPath, path);
}

std::filesystem::path FdemForm::Path() const {
  const std::string typed(Trimmed(model_.Text(kPath)));
  if (typed.empty()) {
    return {};
  }
  std::filesystem::path path = (folder_ / PathOf(typed)).lexically_normal();
  if (path.has_filename() && !EndsWithoutCase(PathText(path), ".TFS")) {
    path += ".TFS";
  }
  return path;
}

bool FdemForm::MayReplace(const std::filesystem::path& path) const {
  return model_.Text(kPath) == chosen_ || IsTaken(path) == Existence::kNotThere ||
         prompts_->AskToLose("Orvane", PathText(path) + " exists already. Replace it?") ==
             Answer::kYes;
}

bool FdemForm::Save() {
  const std::filesystem::path path = Path();
  const std::string name = PathText(path);
  if (name.empty()) {
    prompts_->ShowWarning("Orvane", "Enter the file to be saved.");
    return false;
  }
  const FdemRequest request{.seconds = ParseInt(model_.Text(kSeconds)).value_or(0),
                            .cycles = ParseInt(model_.Text(kCycles)).value_or(0),
                            .current = ParseReal(model_.Text(kCurrent)).value_or(0),
                            .is_reduced = model_.Index(kSet) == 1};
  std::vector<ScheduleRow> rows;
  if (!BuildFdemSchedule(request, &rows)) {
    prompts_->ShowWarning(
        "Orvane", "The schedule lasts more seconds than 32 bits can hold; nothing was written.");
    return false;
  }
  if (!MayReplace(path)) {
    return false;
  }
  if (const Result<> written = WriteScheduleFile(path, rows); !written) {
    prompts_->ShowWarning("File Open Error",
                          "Failed to open file " + name + " to export schedule file!");
    note_ = FileMessage(path, written.Message());
    return false;
  }
  note_ = FormatInt(rows.size()) + " steps, " + FormatInt(rows.back().end_time) +
          " s, written to " + name;
  if (const std::string reason = WhyUnreadable(rows); !reason.empty()) {
    prompts_->ShowWarning("Orvane", name + " is written, but cannot be read back: " + reason);
  }
  return true;
}

}  // namespace orvane
