// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the command-line tool with the fault shim: one call of the system fails, the first of its
// kind, then the second and so on until a run makes no more of them. After each run every file has
// its old bytes or those of a good run and nothing is left over; the tool ends with 0 where all is
// as after a good run, else with 1 and the reason. And the tool is killed at each of its calls:
// then every file is whole too, and the next run makes all that a good one makes and leaves nothing
// else. So it shall be where a library ends the tool: netCDF-C and those that it brings do so for
// want of memory, and where closing its file fails, which is once in a run. Memory that is wanting
// only once is not tried there: netCDF-C loses attributes then and does not say so.
//
//   orvane_fault_test [ALLOCATIONS [SEED]]
//
// Those of which the system gives no more once it has failed, memory and room on the disk, are
// tried so too. Of the allocations of a command from its first file on so many fail (40), evenly
// spread from a random one on, and a few of all. 0: all from the first file on.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <map>
#include <mutex>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "support/example_survey.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using orvane::testing::ReadAll;
using orvane::testing::TempDir;
using orvane::testing::WriteAll;
using Clock = std::chrono::steady_clock;
using Files = std::map<std::string, std::string>;  // bytes by path within a folder
using Strings = std::vector<std::string>;

constexpr const char* kStale = "what was there before";
constexpr int kCounts = 500;         // the descriptor that the shim counts in, above all others
constexpr unsigned kSeconds = 60;    // longer no run takes
constexpr unsigned kMostFound = 20;  // findings that are told

[[noreturn]] void Stop(const std::string& reason) {
  std::fprintf(stderr, "fault test: %s\n", reason.c_str());
  std::exit(1);
}

// A kind of call, how it fails, and whether that must not matter.
struct Fault {
  const char* kind;
  int error;
  enum Kind { kOnce, kRetried, kLasting, kKilled } way = kOnce;  // retried: it must not matter
};

constexpr auto kFaults = std::to_array<Fault>({
    {"open", EIO},
    {"read", EIO},
    {"read", EINTR, Fault::kRetried},
    {"write", EIO},
    {"write", EINTR, Fault::kRetried},
    {"sync", EIO},
    {"sync", EINTR, Fault::kRetried},
    {"write", ENOSPC},
    {"stat", EIO},
    {"lock", EIO},
    {"lock", EINTR, Fault::kRetried},
    {"mkdir", EIO},
    {"list", EIO},
    {"rename", EIO},
    {"remove", EIO},
    {"resize", EIO},
    {"close", EIO},
    {"dup", EMFILE},
    {"rights", EIO},
    {"late memory", ENOMEM},
    {"write", ENOSPC, Fault::kLasting},
    {"late memory", ENOMEM, Fault::kLasting},
    {"memory", ENOMEM},
    {"memory", ENOMEM, Fault::kLasting},
    {"any", 0, Fault::kKilled},  // the last
});

struct Work {
  Strings command;
  Strings inputs;  // files of the example survey
  Strings stale;   // files that are there before, and made anew
  enum Place {
    kOwn,
    kShared,   // a folder that others may write to, with what a killed program left
    kInPlace,  // the files may not be replaced
    kIndexed,  // what a scan of a survey found is kept beside, and what it finds is its result
    kNetcdf,   // the library may end the tool
  } place = kOwn;

  // How often: of memory it asks all the time.
  unsigned MostEnded(const Fault& fault) const {
    const std::string_view kind = fault.kind;
    const bool is_at_close = kind == "write" || kind == "close";
    return place != kNetcdf        ? 0
           : fault.error == ENOMEM ? std::numeric_limits<unsigned>::max()
           : is_at_close           ? 1
                                   : 0;
  }
};

// By a signal, or by a library, which leaves with a code of its own.
bool IsEnded(int status) { return !WIFEXITED(status) || WEXITSTATUS(status) > 1; }

// All in the folder of the files.
const std::vector<Work>& AllWork() {
  static const std::vector<Work> all = {
      {{"table", "set", "SIP/Startup.tbl", "SITE=S1"}, {"SIP/Startup.tbl"}, {}},
      {{"table", "set", "SIP/Startup.tbl", "SITE=S1", "--to", "new.tbl"}, {"SIP/Startup.tbl"}, {}},
      {{"table", "set", "SIP/Startup.tbl", "SITE=S1"}, {"SIP/Startup.tbl"}, {}, Work::kShared},
      {{"table", "set", "SIP/Startup.tbl", "SITE=S1"}, {"SIP/Startup.tbl"}, {}, Work::kInPlace},
      {{"table", "to-v1", "SIP/Startup.tbl", "MT/2417.TBL"},
       {"SIP/Startup.tbl", "MT/2417.TBL"},
       {"MT/2417.TB2"}},
      {{"table", "text", "SIP/Startup.tbl", "MT/2417.TBL", "--out", "new/texts"},
       {"SIP/Startup.tbl", "MT/2417.TBL"},
       {}},
      {{"table", "startup", "SIP/Startup.tbl", "--out", "boxes"},
       {"SIP/Startup.tbl"},
       {"boxes/1203.tbl"}},
      {{"table", "size", "SIP/Startup.tbl"}, {"SIP/Startup.tbl"}, {}},
      {{"schedule", "preset", "SIP/Startup.tbl", "SIP", "--to", "new.tbl"},
       {"SIP/Startup.tbl"},
       {"new.tbl"}},
      {{"schedule", "make", "SIP/Startup.tbl", "--to", "2.TFS"}, {"SIP/Startup.tbl"}, {"2.TFS"}},
      {{"schedule", "text", "FDEM/2.TFS"}, {"FDEM/2.TFS"}, {"FDEM/2.txt"}},
      {{"stack", "csv", "--time-domain", "TDIP/2417.trs"}, {"TDIP/2417.trs"}, {"TDIP/2417.csv"}},
      {{"stack", "csv", "--time-domain", "TDIP/2417.trs"},
       {"TDIP/2417.trs"},
       {"TDIP/2417.csv"},
       Work::kInPlace},
      {{"waveform", "info", "MT/2417.TS2"}, {"MT/2417.TS2", "MT/2417.TBL"}, {}},
      {{"waveform", "text", "MT/2417.TS2"}, {"MT/2417.TS2", "MT/2417.TBL"}, {"MT/2417_TS2.txt"}},
      {{"waveform", "restack", "SIP/2417.TSS", "--out", "new"},
       {"SIP/2417.TSS", "SIP/2417.TBL"},
       {"new/2417.TSK"}},
      {{"waveform", "harmonics", "SIP/2417.TSS", "--calibration-folder", "Calibration", "--yes"},
       {"SIP/2417.TSS", "SIP/2417.TBL", "Calibration/2417.CLB"},
       {"SIP/2417_cal.txt"}},
#ifdef ORVANE_NETCDF
      {{"waveform", "netcdf", "MT/2417.TS2"},
       {"MT/2417.TS2", "MT/2417.TBL"},
       {"MT/2417_TS2.nc"},
       Work::kNetcdf},
      {{"waveform", "netcdf", "MT/2417.TS2", "--deflate", "1", "--out", "new"},
       {"MT/2417.TS2", "MT/2417.TBL"},
       {},
       Work::kNetcdf},
#endif
#ifdef ORVANE_MSEED
      {{"waveform", "mseed", "MT/2417.TS2", "--stationxml", "--calibrations", "Calibration"},
       {"MT/2417.TS2", "MT/2417.TBL"},
       {"MT/2417_TS2.mseed"}},
#endif
      {{"calibration", "text", "Calibration/2041.CLC", "Calibration/2417.CLB"},
       {"Calibration/2041.CLC", "Calibration/2417.CLB"},
       {"Calibration/2041.txt"}},
      {{"survey", "scan", "MT", "--deep"}, {"MT/2417.TS2"}, {}, Work::kIndexed},
      {{"survey", "scan", "Calibration", "--format", "html", "--checksums"},
       {"Calibration/2041.CLC"},
       {},
       Work::kIndexed},
      {{"calibration", "curves", "Calibration/2041.CLC"}, {"Calibration/2041.CLC"}, {}}};
  return all;
}

Files Snapshot(const fs::path& folder) {
  Files files;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().lexically_relative(folder).string();
    if (!entry.is_directory() && !name.starts_with("cache/")) {
      files[name] = ReadAll(entry.path());
    }
  }
  return files;
}

constexpr const char* kLeftover = ".orvane-0123456789ABCDEF.tmp";

void Lay(const Files& files, const fs::path& folder) {
  fs::remove_all(folder);
  fs::create_directory(folder);
  for (const auto& [name, bytes] : files) {
    fs::create_directories((folder / name).parent_path());
    WriteAll(folder / name, bytes);
    // What is just written an index does not trust.
    fs::last_write_time(folder / name, fs::last_write_time(folder / name) - std::chrono::hours(1));
    if (fs::path(name).filename() == kLeftover) {
      fs::permissions((folder / name).parent_path(), fs::perms::all);
    }
  }
}

/// A file in memory alone.
class Memory {
 public:
  Memory() : handle_(memfd_create("fault test", MFD_CLOEXEC)) {}
  Memory(const Memory&) = delete;
  Memory& operator=(const Memory&) = delete;
  ~Memory() { close(handle_); }

  int Handle() const { return handle_; }
  std::string Text() const {
    std::string text(static_cast<std::size_t>(lseek(handle_, 0, SEEK_END)), '\0');
    const ssize_t size = pread(handle_, text.data(), text.size(), 0);
    return text.substr(0, static_cast<std::size_t>(size));
  }

 private:
  int handle_;
};

struct Outcome {
  int status = 0;
  std::string out;
  std::string told;
  unsigned calls = 0;  // of the kind that fails
};

std::vector<char*> Pointers(Strings* texts) {
  std::vector<char*> pointers;
  for (std::string& text : *texts) {
    pointers.push_back(text.data());
  }
  pointers.push_back(nullptr);
  return pointers;
}

Strings Environment(const Work& work, const fs::path& folder, const Fault& fault, unsigned number) {
  return {"LD_PRELOAD=" ORVANE_FAULT_SHIM,
          std::string("ORVANE_FAULT_KIND=") + fault.kind,
          "ORVANE_FAULT_NUMBER=" + std::to_string(number),
          std::string("ORVANE_FAULT_LASTS=") + (fault.way == Fault::kLasting ? "1" : ""),
          "ORVANE_FAULT_ERROR=" + std::to_string(fault.error),
          "ORVANE_FAULT_FOLDER=" + folder.string(),
          std::string("ORVANE_FAULT_RIGHTS=") + (work.place == Work::kInPlace ? "1" : ""),
          "XDG_CACHE_HOME=" + (work.place == Work::kIndexed ? (folder / "cache").string() : ""),
          "ORVANE_FAULT_COUNTS=" + std::to_string(kCounts)};
}

Outcome Run(const Work& work, const fs::path& folder, const Fault& fault, unsigned number) {
  Strings arguments = work.command;
  arguments.insert(arguments.begin(), ORVANE_CLI);
  Strings environment = Environment(work, folder, fault, number);
  const std::vector<char*> argv = Pointers(&arguments);
  const std::vector<char*> envp = Pointers(&environment);
  const std::string place = folder.string();
  const Memory out;
  const Memory told;
  const Memory counts;
  unsigned calls = 0;
  if (pwrite(counts.Handle(), &calls, sizeof calls, 0) != sizeof calls) {
    Stop("no memory for what the tool says");
  }
  const pid_t child = fork();
  if (child == 0) {
    alarm(kSeconds);
    if (chdir(place.c_str()) == 0 && dup2(out.Handle(), STDOUT_FILENO) >= 0 &&
        dup2(told.Handle(), STDERR_FILENO) >= 0 && dup2(counts.Handle(), kCounts) >= 0) {
      execve(argv[0], argv.data(), envp.data());
    }
    _exit(127);
  }
  Outcome outcome;
  waitpid(child, &outcome.status, 0);
  std::memcpy(&calls, counts.Text().data(), sizeof calls);
  outcome.out = out.Text();
  outcome.told = told.Text().append(work.place == Work::kIndexed ? outcome.out : "");
  outcome.calls = calls;
  return outcome;
}

struct Good {
  Files before;
  Files after;
  std::string out;
};

Good RunWhole(const Work& work, const fs::path& survey, const fs::path& folder) {
  Good good;
  for (const std::string& name : work.inputs) {
    good.before[name] = ReadAll(survey / name);
  }
  for (const std::string& name : work.stale) {
    good.before[name] = kStale;
  }
  if (work.place == Work::kShared) {
    good.before[(fs::path(work.inputs[0]).parent_path() / kLeftover).string()] = kStale;
  }
  for (int i = 0; i < 2; ++i) {
    Lay(good.before, folder);
    const Outcome outcome = Run(work, folder, kFaults[0], 0);
    const Files after = Snapshot(folder);
    if (outcome.status != 0 || (i == 1 && (after != good.after || outcome.out != good.out))) {
      Stop(work.command[0] + " " + work.command[1] +
           " fails or gives something else each time: " + outcome.told);
    }
    good.after = after;
    good.out = outcome.out;
  }
  for (const std::string& name : work.stale) {
    if (good.after[name] == kStale) {
      Stop(work.command[0] + " " + work.command[1] + " does not make " + name);
    }
  }
  return good;
}

bool IsTemporary(const std::string& name) {
  return fs::path(name).filename().string().starts_with(".orvane-");
}

// What is wrong with the files; empty: nothing. `is_done` tells whether all are as they should be.
std::string FaultOfFiles(const Good& good, Files found, const Fault& fault, bool* is_done) {
  const auto has = [](const Files& files, const std::string& name, const std::string& bytes) {
    const auto at = files.find(name);
    return at != files.end() && at->second == bytes;
  };
  // What may not be removed stays, and what was left before may stay: a later run removes it.
  const bool may_stay = std::string_view(fault.kind) == "remove" || fault.way == Fault::kKilled;
  std::erase_if(found, [&](const auto& file) {
    return IsTemporary(file.first) && (may_stay || has(good.before, file.first, file.second));
  });
  for (const auto& [name, bytes] : found) {
    if (!has(good.before, name, bytes) && !has(good.after, name, bytes)) {
      return name + " is neither old nor new: " + std::to_string(bytes.size()) + " bytes";
    }
  }
  for (const auto& [name, bytes] : good.before) {
    if (found.count(name) == 0 && good.after.count(name) != 0) {
      return name + " is gone";
    }
  }
  *is_done = found == good.after;
  return {};
}

// In the system's words, or in those that a command has for it.
bool TellsOf(const Fault& fault, const std::string& told) {
  const auto has = [&told](const char* text) { return told.find(text) != std::string::npos; };
  return has(strerror(fault.error)) || has("Failed to ") || has("only a new file in a folder") ||
         (fault.error == ENOMEM && (has("no memory") || has("Memory allocation error") ||
                                    has("NetCDF: ") || has("netCDF-C cannot be loaded: ")));
}

// What is wrong with a run; empty: nothing.
std::string Judge(const Work& work, const Good& good, const Outcome& outcome, const Fault& fault,
                  Files found) {
  if (!WIFEXITED(outcome.status)) {
    return "ended by signal " + std::to_string(WTERMSIG(outcome.status));
  }
  bool is_done = false;
  if (std::string wrong = FaultOfFiles(good, std::move(found), fault, &is_done); !wrong.empty()) {
    return wrong;
  }
  const int code = WEXITSTATUS(outcome.status);
  const bool tells = TellsOf(fault, outcome.told);
  if (code == 0) {  // what is left out beside the result is told
    return tells || (is_done && outcome.out == good.out) ? "" : "exit code 0, but not all is done";
  }
  const bool is_no_scan = work.place == Work::kIndexed && code == 2;  // 1: it found something
  if ((code != 1 && !is_no_scan) || fault.way == Fault::kRetried) {
    return "exit code " + std::to_string(code);
  }
  return tells ? "" : "another reason";
}

class Tester {
 public:
  Tester(unsigned allocations, unsigned seed) : allocations_(allocations), seed_(seed) {
    if (!orvane::testing::MakeExampleSurvey(dir_ / "survey")) {
      Stop("there is no example survey");
    }
    for (const Work& work : AllWork()) {
      good_.push_back(RunWhole(work, dir_ / "survey", dir_ / "good"));
    }
  }

  bool TestAll() {
    std::vector<std::jthread> helpers;
    for (unsigned i = 0; i < std::max(2U, std::thread::hardware_concurrency()); ++i) {
      helpers.emplace_back([this, i] { Help(dir_ / ("work" + std::to_string(i))); });
    }
    helpers.clear();
    for (std::size_t i = 0; i < kFaults.size(); ++i) {
      std::printf("%s, %s%s: %u failed, %u of them did not matter\n", kFaults[i].kind,
                  strerror(kFaults[i].error), kFaults[i].way == Fault::kLasting ? ", lasting" : "",
                  failed_[i].load(), harmless_[i].load());
      if (failed_[i] == 0) {
        Stop(std::string("no call of the kind ") + kFaults[i].kind);
      }
    }
    return found_ == 0;
  }

 private:
  void Help(const fs::path& folder) {
    const std::size_t all = AllWork().size() * kFaults.size();
    for (std::size_t i = next_++; i < all; i = next_++) {
      Sweep(i / kFaults.size(), i % kFaults.size(), folder);
    }
  }

  // Each call in turn until there are no more, of allocations only some, and so of what loads the
  // many libraries of NetCDF: others than those of the last run with another seed.
  void Sweep(std::size_t which, std::size_t of_fault, const fs::path& folder) {
    unsigned first = 1;
    unsigned step = 1;
    if (kFaults[of_fault].way == Fault::kKilled && AllWork()[which].place == Work::kInPlace) {
      return;  // written in place nothing can be whole
    }
    if (kFaults[of_fault].way == Fault::kOnce && kFaults[of_fault].error == ENOMEM &&
        AllWork()[which].place == Work::kNetcdf) {
      return;
    }
    const bool is_late = std::string_view(kFaults[of_fault].kind) == "late memory";
    const bool is_early = std::string_view(kFaults[of_fault].kind) == "memory";
    const bool is_slow = AllWork()[which].place == Work::kNetcdf;
    if (is_early || is_slow || (is_late && allocations_ > 0)) {
      Lay(good_[which].before, folder);
      const unsigned most = is_late ? allocations_ / (is_slow ? 4 : 1) : is_early ? 5 : 12;
      step += Run(AllWork()[which], folder, kFaults[of_fault], 0).calls / std::max(most, 1U);
      first += static_cast<unsigned>(std::mt19937(seed_ + static_cast<unsigned>(which))() % step);
    }
    unsigned ended = 0;
    for (unsigned number = first; FailOnce(which, of_fault, number, folder, &ended);
         number += step) {
    }
  }

  // What is wrong with the files of a killed run, and after the next one; empty: nothing.
  static std::string JudgeKilled(const Work& work, const Good& good, const fs::path& folder) {
    const Fault& killed = kFaults.back();
    const Files left = Snapshot(folder);
    bool is_done = false;
    if (std::string wrong = FaultOfFiles(good, left, killed, &is_done); !wrong.empty()) {
      return wrong;
    }
    const Outcome next = Run(work, folder, killed, 0);
    Files found = Snapshot(folder);
    const auto is_temporary = [](const auto& file) { return IsTemporary(file.first); };
    if (next.status != 0 || std::any_of(found.begin(), found.end(), is_temporary)) {
      return "the next run fails or leaves something";
    }
    // Of what a command writes over it keeps one copy more each time.
    std::erase_if(found, [&](const auto& file) {
      return file.first.find(".bak") != std::string::npos && good.after.count(file.first) == 0;
    });
    const auto is_unchanged = [&](const std::string& name) {
      return left.at(name) == good.before.at(name);
    };
    const bool has_its_inputs = std::all_of(work.inputs.begin(), work.inputs.end(), is_unchanged);
    return !has_its_inputs || found == good.after ? "" : "the next run differs";
  }

  // False where the run made fewer calls.
  bool FailOnce(std::size_t which, std::size_t of_fault, unsigned number, const fs::path& folder,
                unsigned* ended) {
    const Fault& fault = kFaults[of_fault];
    const Good& good = good_[which];
    Lay(good.before, folder);
    const Outcome outcome = Run(AllWork()[which], folder, fault, number);
    const bool has_failed = outcome.calls >= number;
    const bool is_ended =
        has_failed && IsEnded(outcome.status) && ++*ended <= AllWork()[which].MostEnded(fault);
    const bool is_killed = is_ended || (has_failed && fault.way == Fault::kKilled);
    std::string wrong = is_killed ? JudgeKilled(AllWork()[which], good, folder)
                                  : Judge(AllWork()[which], good, outcome, fault, Snapshot(folder));
    if (!has_failed && wrong.empty() && outcome.status != 0) {
      wrong = "fails without a fault";
    }
    if (!wrong.empty()) {
      Tell(AllWork()[which], fault, number, wrong, outcome.told);
    }
    if (has_failed) {
      ++failed_[of_fault];
      harmless_[of_fault] += outcome.status == 0 ? 1U : 0U;
    }
    return has_failed;
  }

  void Tell(const Work& work, const Fault& fault, unsigned number, const std::string& wrong,
            const std::string& told) {
    const std::lock_guard lock(telling_);
    if (++found_ > kMostFound) {
      return;
    }
    std::string command;
    for (const std::string& argument : work.command) {
      command.append(" ").append(argument);
    }
    std::fprintf(stderr, "%s number %u (%s%s) of%s: %s; told: %s\n", fault.kind, number,
                 strerror(fault.error), fault.way == Fault::kLasting ? ", lasting" : "",
                 command.c_str(), wrong.c_str(), told.c_str());
  }

  const unsigned allocations_;
  const unsigned seed_;
  TempDir dir_;
  std::vector<Good> good_;
  std::atomic<std::size_t> next_ = 0;
  std::array<std::atomic<unsigned>, kFaults.size()> failed_{};
  std::array<std::atomic<unsigned>, kFaults.size()> harmless_{};
  std::mutex telling_;
  unsigned found_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
  const auto start = Clock::now();
  Tester tester(argc > 1 ? static_cast<unsigned>(std::atoi(argv[1])) : 40,
                argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1);
  const bool is_clean = tester.TestAll();
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start);
  std::printf("%d s: %s\n", static_cast<int>(seconds.count()),
              is_clean ? "every file whole, every reason told" : "FAULTS");
  return is_clean ? 0 : 1;
}
