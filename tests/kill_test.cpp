// SPDX-License-Identifier: GPL-3.0-or-later
// Ends the command-line tool with SIGKILL in the middle of saves, runs for several boxes and
// conversions. Every file under its final name must be whole, and the next run must leave nothing
// but its results. Then pairs of programs change the same table at once: both changes must be in
// it.
//
//   orvane_kill_test [KILLS [SEED [PAIRS]]]
//
// Without a number 500 kills, or as many as 35 seconds allow, and 100 pairs.
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;
using orvane::testing::ReadAll;
using orvane::testing::TempDir;
using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;
using Files = std::map<std::string, std::string>;
using Arguments = std::vector<std::string>;

[[noreturn]] void Stop(const std::string& reason) {
  std::fprintf(stderr, "kill test: %s\n", reason.c_str());
  std::exit(1);
}

pid_t Start(Arguments arguments) {
  arguments.insert(arguments.begin(), ORVANE_CLI);
  std::vector<char*> texts;
  for (std::string& argument : arguments) {
    texts.push_back(argument.data());
  }
  texts.push_back(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    const int nowhere = open("/dev/null", O_WRONLY);
    dup2(nowhere, STDOUT_FILENO);
    dup2(nowhere, STDERR_FILENO);
    execv(texts[0], texts.data());
    _exit(127);
  }
  return child;
}

int Wait(pid_t child) {
  int status = -1;
  waitpid(child, &status, 0);
  return status;
}

void RunWhole(const Arguments& arguments) {
  if (Wait(Start(arguments)) != 0) {
    Stop(arguments[0] + " " + arguments[1] + " failed");
  }
}

bool IsTemporary(const std::string& name) { return name.starts_with(".orvane-"); }

Files Snapshot(const fs::path& folder) {
  Files files;
  for (const auto& entry : fs::directory_iterator(folder)) {
    files[entry.path().filename()] = ReadAll(entry.path());
  }
  return files;
}

// One kind of work: two commands that write the same files with different bytes.
struct Work {
  const char* name;
  fs::path folder;  // of the results only
  std::array<Arguments, 2> commands;
  std::array<Files, 2> results = {};
  microseconds duration = {};
  int kills = 0;
  int temporaries = 0;  // kills that left one
  int mixed = 0;        // kills between two files
};

// What the files of a killed run may hold.
void CheckWhole(Work* work) {
  std::array<std::size_t, 2> of{};
  bool left = false;
  std::size_t finals = 0;
  for (const auto& [name, bytes] : Snapshot(work->folder)) {
    if (IsTemporary(name)) {
      left = true;
      continue;
    }
    ++finals;
    const bool is_first = work->results[0].count(name) != 0 && work->results[0][name] == bytes;
    const bool is_second = work->results[1].count(name) != 0 && work->results[1][name] == bytes;
    if (!is_first && !is_second) {
      Stop(std::string(work->name) + ": " + name +
           " is not whole: " + std::to_string(bytes.size()) + " bytes");
    }
    of[0] += is_first ? 1 : 0;
    of[1] += is_second ? 1 : 0;
  }
  if (finals != work->results[0].size()) {
    Stop(std::string(work->name) + ": a file is gone");
  }
  work->temporaries += left ? 1 : 0;
  work->mixed += of[0] != finals && of[1] != finals ? 1 : 0;
}

void CheckNextRun(Work* work, std::size_t which) {
  RunWhole(work->commands[which]);
  if (Snapshot(work->folder) != work->results[which]) {
    Stop(std::string(work->name) + ": the next run left something else than its results");
  }
}

class Killer {
 public:
  explicit Killer(unsigned seed) : random_(seed) {}

  unsigned Below(unsigned end) { return static_cast<unsigned>(random_() % end); }

  // Half of the kills come at any time of the run, the others shortly after something happened in
  // the folder: the moments in which files are made are short.
  void KillSomeTime(pid_t child, const Work& work) {
    if (Below(2) == 0) {
      std::this_thread::sleep_for(
          microseconds(Below(static_cast<unsigned>(work.duration.count()) + 1)));
    } else {
      WaitForEvents(child, 1 + Below(6 * static_cast<unsigned>(work.results[0].size())));
      const auto until = Clock::now() + microseconds(Below(150));
      while (Clock::now() < until) {
      }
    }
    kill(child, SIGKILL);
    Wait(child);
  }

  void Watch(const fs::path& folder) {
    if (events_ >= 0) {
      close(events_);
    }
    events_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    inotify_add_watch(events_, folder.c_str(), IN_ALL_EVENTS);
  }

 private:
  void WaitForEvents(pid_t child, unsigned count) {
    pollfd waiting{events_, POLLIN, 0};
    std::array<char, 4096> buffer{};
    for (unsigned seen = 0; seen < count;) {
      siginfo_t ended{};
      if (poll(&waiting, 1, 1) == 0 &&
          waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 &&
          ended.si_pid == child) {
        return;
      }
      ssize_t size = 0;
      while (seen < count && (size = read(events_, buffer.data(), buffer.size())) > 0) {
        for (ssize_t at = 0; at < size; ++seen) {
          inotify_event event{};
          std::copy_n(buffer.data() + at, sizeof event, reinterpret_cast<char*>(&event));
          at += static_cast<ssize_t>(sizeof event + event.len);
        }
      }
    }
  }

  std::mt19937 random_;
  int events_ = -1;
};

void Prepare(Work* work) {
  for (const std::size_t which : {0U, 1U}) {
    const auto start = Clock::now();
    RunWhole(work->commands[which]);
    work->duration = std::chrono::duration_cast<microseconds>(Clock::now() - start);
    work->results[which] = Snapshot(work->folder);
  }
  for (const auto& [name, bytes] : work->results[0]) {
    if (IsTemporary(name) || bytes == work->results[1][name]) {
      Stop(std::string(work->name) + ": the commands do not differ in " + name);
    }
  }
}

void KillOnce(Work* work, Killer* killer) {
  killer->Watch(work->folder);
  const std::size_t which = killer->Below(2);
  // Now and then a second program saves the same files, and must not be disturbed.
  const pid_t other = killer->Below(8) == 0 ? Start(work->commands[1 - which]) : -1;
  killer->KillSomeTime(Start(work->commands[which]), *work);
  if (other >= 0 && Wait(other) != 0) {
    Stop(std::string(work->name) + ": the program beside the killed one failed");
  }
  ++work->kills;
  CheckWhole(work);
  CheckNextRun(work, killer->Below(2));
}

// A table with boxes, so that there is a start-up file for each.
void MakeTable(const TempDir& dir, const char* name, const char* tech) {
  std::string empty("\x03\0.TBL2%", 8);
  empty.resize(64);
  orvane::testing::WriteAll(dir / name, empty);
  RunWhole(
      {"table", "set", dir / name, std::string("TECH=") + tech, "SNTX=31", "SNUM=24", "SN01=1203"});
}

// A limit on the size of files is an error to tell, not the end of the program.
void CheckSizeLimit(const TempDir& dir) {
  const rlimit most{4096, RLIM_INFINITY};
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  setrlimit(RLIMIT_FSIZE, &most);
  const int status = Wait(Start({"table", "set", dir / "1.tbl", "TECH=2"}));
  setrlimit(RLIMIT_FSIZE, &before);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 1) {
    Stop("a limit on the size of files is not told");
  }
}

std::vector<Work> AllWork(const TempDir& dir) {
  std::vector<Work> all;
  fs::create_directory(dir / "set");
  const fs::path table = dir / "set/a.tbl";
  fs::copy(dir / "1.tbl", table);
  all.push_back({"table set",
                 dir / "set",
                 {Arguments{"table", "set", table, "TECH=1"}, {"table", "set", table, "TECH=3"}}});
  const auto startup = [&dir](const char* from) {
    return Arguments{"table", "startup", dir / from, "--out", dir / "boxes"};
  };
  fs::create_directory(dir / "boxes");
  all.push_back({"table startup", dir / "boxes", {startup("1.tbl"), startup("2.tbl")}});
  const auto text = [&dir](const char* from) {
    Arguments arguments = {"table", "text", "--jobs", "2", "--out", dir / "texts"};
    fs::create_directory(dir / from);
    for (const char* name : {"a.tbl", "b.tbl", "c.tbl"}) {
      const fs::path input = dir / from / name;
      fs::copy(dir / (std::string(from) + ".tbl"), input);
      arguments.push_back(input);
    }
    return arguments;
  };
  fs::create_directory(dir / "texts");
  all.push_back({"table text", dir / "texts", {text("1"), text("2")}});
  return all;
}

// Two programs that change different keys of a table, in a folder of the user's own and in one that
// others may write to, where no lock keeps them apart.
void ChangeAtOnce(const TempDir& dir, int pairs) {
  for (int i = 0; i < pairs; ++i) {
    const fs::path folder = dir / (i % 2 == 0 ? "own" : "shared");
    fs::create_directory(folder);
    fs::permissions(folder, i % 2 == 0 ? fs::perms::owner_all : fs::perms::all);
    const fs::path table = folder / "a.tbl";
    if (i < 2) {
      fs::copy(dir / "1.tbl", table);
    }
    const std::string value = std::to_string(1000 + i);
    const pid_t one = Start({"table", "set", table, "SITE=" + value});
    const pid_t other = i % 5 == 4 ? Start({"table", "to-v1", table})
                                   : Start({"table", "set", table, "LINE=" + value});
    if (Wait(one) != 0 || Wait(other) != 0) {
      Stop("a program beside another failed");
    }
    const std::string bytes = ReadAll(table);
    const auto count = [&bytes, &value] {
      std::size_t found = 0;
      for (std::size_t at = bytes.find(value); at != std::string::npos;
           at = bytes.find(value, at + 1)) {
        ++found;
      }
      return found;
    };
    if (count() < (i % 5 == 4 ? 1U : 2U)) {
      Stop("a change is lost in " + folder.string());
    }
    for (const auto& [name, content] : Snapshot(folder)) {
      if (IsTemporary(name)) {
        Stop("a temporary file is left in " + folder.string());
      }
    }
  }
}

}  // namespace

int main(int argc, char** argv) {
  const int kills = argc > 1 ? std::atoi(argv[1]) : 500;
  Killer killer(argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 1);
  const auto start = Clock::now();
  const TempDir dir;
  MakeTable(dir, "1.tbl", "1");
  MakeTable(dir, "2.tbl", "3");
  CheckSizeLimit(dir);
  std::vector<Work> all = AllWork(dir);
  for (Work& work : all) {
    Prepare(&work);
  }
  int done = 0;
  for (; done < kills; ++done) {
    if (argc == 1 && Clock::now() - start > std::chrono::seconds(35)) {
      break;
    }
    KillOnce(&all[static_cast<std::size_t>(done) % all.size()], &killer);
  }
  for (const Work& work : all) {
    std::printf("%s: %d kills, %d left a temporary file, %d came between two files\n", work.name,
                work.kills, work.temporaries, work.mixed);
  }
  const int pairs = argc > 3 ? std::atoi(argv[3]) : 100;
  ChangeAtOnce(dir, pairs);
  std::printf("%d pairs of changes at once: none lost\n", pairs);
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start);
  std::printf("%d kills in %d s: every file whole, every next run clean\n", done,
              static_cast<int>(seconds.count()));
  return 0;
}
