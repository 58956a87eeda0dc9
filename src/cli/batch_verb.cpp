// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/batch_verb.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <thread>

#include "base/latin1.h"
#include "base/number_text.h"
#include "cli/commands.h"
#include "cli/interrupt_watch.h"
#include "cli/terminal.h"
#include "files/path_text.h"

namespace orvane {
namespace {

constexpr std::chrono::milliseconds kLook{100};  // between two looks at the batch

std::atomic<bool> is_asking = false;

std::string Megabytes(std::uint64_t bytes) {
  const std::uint64_t tenths = bytes / 100000;
  return FormatReal(static_cast<double>(tenths) / 10);
}

// One line on the terminal that is written again and again.
class ProgressLine {
 public:
  void Show(const BatchProgress& progress) const {
    if (!is_terminal_ || is_asking) {
      return;
    }
    std::string line = FormatInt(progress.files_done) + " of " + FormatInt(progress.files_total) +
                       " files, " + Megabytes(progress.bytes_done) + " of " +
                       Megabytes(progress.bytes_total) + " MB";
    if (const auto left = progress.TimeLeft()) {
      line += ", " + FormatInt(left->count()) + " s left";
    }
    line += ": " + PrintableUtf8(PathText(progress.current.filename()));
    Put(line.substr(0, kWidth));
  }
  void Clear() const {
    if (is_terminal_) {
      Put({});
    }
  }

 private:
  static constexpr std::size_t kWidth = 78;

  static void Put(const std::string& line) {
    const std::string text = "\r" + line + "\x1B[K";  // and clears the rest of the line
    std::fwrite(text.data(), 1, text.size(), stderr);
  }

  bool is_terminal_ = AreMessagesOnATerminal();
};

// Everything that was written; what failed or is noted goes to stderr, in the order of the list.
ExitCode PrintResults(const Batch& batch) {
  ExitCode exit_code = kAllDone;
  std::string written;
  std::size_t cancelled = 0;
  for (std::size_t i = 0; i < batch.Count(); ++i) {
    const BatchResult& result = *batch.Result(i);
    for (const auto& path : result.outputs) {
      written += PathLine(path);
    }
    exit_code = result.IsDone() ? exit_code : kSomeFailed;
    if (result.status == BatchStatus::kCancelled) {
      ++cancelled;
    } else if (!result.text.empty()) {
      std::string line = FileMessage(batch.Input(i), "");
      line += result.status == BatchStatus::kLeftAlone ? "left alone: " : "";
      line += result.text;
      line += result.code != 0 ? " (" + FormatInt(result.code) + ")" : "";
      PrintMessage(line);
    }
  }
  if (cancelled > 0) {
    PrintMessage("interrupted: " + FormatInt(cancelled) + " files are not converted");
  }
  return PrintResult(written) ? exit_code : kSomeFailed;
}

}  // namespace

ExitCode RunBatch(BatchPlan plan) {
  if (const Result<> made = MakeFolders(plan.out_folder); !made) {
    PrintMessage(made.Message());
    return kSomeFailed;
  }
  const InterruptWatch watch;
  const ProgressLine line;
  Batch batch(std::move(plan));
  batch.Start();
  while (!batch.WaitFor(kLook)) {
    line.Show(batch.Progress());
    if (InterruptWatch::IsInterrupted()) {
      batch.Stop();
    }
  }
  line.Clear();
  return PrintResults(batch);
}

bool AskOnTerminal(const std::string& question, const BatchTask& task) {
  if (!IsInputATerminal() || !AreMessagesOnATerminal()) {
    return false;
  }
  is_asking = true;
  const std::string text = "\r\x1B[K" + PrintableUtf8(question) + " [y/N] ";
  std::fwrite(text.data(), 1, text.size(), stderr);
  std::string line;
  while (!task.Stopped() && WaitForLine(kLook, &line) == Typed::kNothing) {
  }
  is_asking = false;
  return line.starts_with('y') || line.starts_with('Y');
}

namespace {

struct Arguments {
  std::vector<std::string> files;
  unsigned jobs = 0;
  std::filesystem::path out;
};

ExitCode RunConversion(const Arguments& arguments, Conversion conversion) {
  BatchPlan plan{std::move(conversion), {}, arguments.out, arguments.jobs};
  std::transform(arguments.files.begin(), arguments.files.end(), std::back_inserter(plan.inputs),
                 PathOf);
  return RunBatch(std::move(plan));
}

// One file to standard output.
ExitCode PrintListing(const Arguments& arguments, const TsListing& listing) {
  const InterruptWatch watch;
  const auto path = PathOf(arguments.files.front());
  bool is_printed = true;
  ListingWork work;
  work.pass.threads =
      arguments.jobs > 0 ? arguments.jobs : std::max(1U, std::thread::hardware_concurrency());
  work.pass.stopped = [] { return InterruptWatch::IsInterrupted(); };
  work.put = [&](std::string_view piece) { is_printed = is_printed && PrintResult(piece); };
  const auto note = listing(path, work);
  if (InterruptWatch::IsInterrupted()) {
    PrintMessage("interrupted");
    return kSomeFailed;
  }
  if (!note || !note->empty()) {
    PrintMessage(FileMessage(path, note ? *note : note.Message()));
  }
  return note && is_printed ? kAllDone : kSomeFailed;
}

// The verb with the arguments that all have; `run` is called once they are read.
CLI::App* AddVerb(CLI::App* noun, const std::string& name, const std::string& what,
                  const std::function<ExitCode(const Arguments&)>& run, ExitCode* exit_code) {
  const auto arguments = std::make_shared<Arguments>();
  CLI::App* verb = noun->add_subcommand(name, what);
  verb->add_option("FILE", arguments->files, "the files to convert")->required()->check(NotEmpty());
  verb->add_option("--jobs", arguments->jobs, "files converted at a time (default: one per core)")
      ->check(CLI::Range(1, 1024));
  AddPath(verb, "--out", &arguments->out, "folder for the new files (default: beside each file)")
      ->check(NotEmpty());
  verb->callback([=] { *exit_code = run(*arguments); });
  return verb;
}

}  // namespace

CLI::App* AddBatchVerb(CLI::App* noun, const std::string& name, const std::string& what,
                       const std::function<Conversion()>& conversion, ExitCode* exit_code) {
  return AddVerb(
      noun, name, what,
      [=](const Arguments& arguments) { return RunConversion(arguments, conversion()); },
      exit_code);
}

CLI::App* AddListingVerb(CLI::App* noun, const std::string& name, const std::string& what,
                         const std::string& suffix, const std::function<TsListing()>& listing,
                         ExitCode* exit_code) {
  return AddVerb(
      noun, name, what,
      [=](const Arguments& arguments) {
        return arguments.files.size() == 1 && arguments.out.empty()
                   ? PrintListing(arguments, listing())
                   : RunConversion(arguments, ListingFiles(suffix, listing()));
      },
      exit_code);
}

}  // namespace orvane
