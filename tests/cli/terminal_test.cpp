// SPDX-License-Identifier: GPL-3.0-or-later
// The tool on a terminal, interrupted, and beside another one.
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <vector>

#include "support/cli_run.h"
#include "support/tbl_bytes.h"

namespace orvane::testing {
namespace {

using Arguments = std::vector<std::string>;

// Terminals, signals and pipes are those of this system.
class Here : public ::testing::Test {
 protected:
  void SetUp() override {
    if (WindowsTool() != nullptr) {
      GTEST_SKIP();
    }
  }
};
class Terminal : public Here {};
class Interrupts : public Here {};
class Changes : public Here {};
class Pipes : public Here {};

[[noreturn]] void Become(const TempDir& dir, Arguments arguments) {
  arguments.insert(arguments.begin(), ToolPath());
  std::vector<char*> texts;
  for (std::string& argument : arguments) {
    texts.push_back(argument.data());
  }
  texts.push_back(nullptr);
  if (chdir(dir.Path().c_str()) == 0) {
    execv(texts[0], texts.data());
  }
  _exit(127);
}

// Everything that the terminal shows.
std::string OnTerminal(const TempDir& dir, const Arguments& arguments) {
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) {
    Become(dir, arguments);
  }
  std::string shown;
  std::array<char, 4096> piece{};
  for (ssize_t size = 0; (size = read(terminal, piece.data(), piece.size())) > 0;) {
    shown.append(piece.data(), static_cast<std::size_t>(size));
  }
  close(terminal);
  waitpid(child, nullptr, 0);
  return shown;
}

TEST_F(Terminal, GetsNoControlCharactersOfNamesAndValues) {
  const TempDir dir;
  const std::string evil = "a\x1B]0;x\a\xC2\x9B\xFFz";
  const std::string shown = R"(a\x1B]0;x\x07\xC2\x9B\xFFz)";
  WriteAll(dir / (evil + ".tbl"), HeaderV2() + RecordV2("SITN", 0, 2, "1\x1B[2J"));
  WriteAll(dir / (evil + ".trs"), std::string(70, '\0'));
  struct Case {
    Arguments arguments;
    std::string shown;
  };
  for (const auto& [arguments, expected] :
       {Case{{"table", "get", "no" + evil, "SITN"}, "no" + shown + ": No such file"},
        Case{{"table", "get", evil + ".tbl", "SITN"}, R"(SITN=1\x1B[2J)"},
        Case{{"stack", "csv", "--time-domain", evil + ".trs"}, shown + ".csv\r\n"},
        Case{{"stack", "csv", "--time-domain", "b", "--" + evil}, "--" + shown}}) {
    const std::string text = OnTerminal(dir, arguments);
    EXPECT_NE(text.find(expected), std::string::npos) << text;
    EXPECT_EQ(text.find("\x1B]"), std::string::npos) << text;
  }
  // Elsewhere names are what they are: other programs read them.
  EXPECT_EQ(RunCli(dir, "stack csv --time-domain '" + evil + ".trs'").out, evil + ".csv\n");
}

TEST_F(Interrupts, EndWaitingForAPipeAtOnceAndByTheSignal) {
  const TempDir dir;
  WriteAll(dir / "a.tbl", HeaderV2() + RecordV2("SITN", 0, 2, "1"));
  ASSERT_EQ(mkfifo((dir / "pipe").c_str(), 0600), 0);
  // Without a reader it waits for one; with one that does not read, for room.
  for (const bool has_reader : {false, true}) {
    const int reader =
        has_reader ? open((dir / "pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC) : -1;
    const pid_t child = fork();
    if (child == 0) {
      Become(dir, {"table", "set", "a.tbl", "SITN=2", "--to", "pipe"});
    }
    if (has_reader) {
      fcntl(reader, F_SETPIPE_SZ, 4096);
    }
    poll(nullptr, 0, 300);
    kill(child, SIGINT);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    close(reader);
  }
}

// In a folder of the user's own, and in one for others too, where no lock keeps programs apart.
TEST_F(Changes, OfTwoProgramsAtOnceAreBothInTheTable) {
  for (int i = 0; i < 40; ++i) {
    const TempDir dir;
    ASSERT_EQ(chmod(dir.Path().c_str(), i % 2 == 0 ? 0700 : 0777), 0);
    WriteAll(dir / "a.tbl", HeaderV2() + RecordV2("SITN", 0, 2, "1"));
    const bool converts = i % 5 == 4;
    const std::string tool = "'" + ToolPath() + "' table ";
    const std::string quietly = " a.tbl SITE=Eight >/dev/null 2>&1 & ";
    const std::string other = converts ? "to-v1 a.tbl" : "set a.tbl LINE=Seven";
    EXPECT_EQ(std::system(("cd '" + dir.Path().string() + "' || exit; " + tool + "set" + quietly +
                           tool + other + " >/dev/null 2>&1 && wait $!")
                              .c_str()),
              0);
    const std::string bytes = ReadAll(dir / "a.tbl");
    EXPECT_NE(bytes.find("Eight"), std::string::npos) << i;
    EXPECT_TRUE(converts || bytes.find("Seven") != std::string::npos) << i;
    for (const auto& entry : std::filesystem::directory_iterator(dir.Path())) {
      EXPECT_FALSE(entry.path().filename().string().starts_with(".orvane-")) << entry;
    }
  }
}

// What comes through a pipe is read before the pipe is opened for writing.
TEST_F(Pipes, CarryATableInAndOut) {
  const TempDir dir;
  WriteAll(dir / "a.tbl", HeaderV2() + RecordV2("SITN", 0, 2, "1"));
  ASSERT_EQ(mkfifo((dir / "pipe").c_str(), 0600), 0);
  const std::string tool = "cd '" + dir.Path().string() + "' && ('" + ToolPath() + "' table set ";
  const std::string others = "cat a.tbl >pipe; timeout 5 cat pipe >copy)";
  EXPECT_EQ(std::system((tool + "pipe SITN=2 2>err & " + others).c_str()), 0);
  EXPECT_EQ(ReadAll(dir / "copy").size(), 32U + 719 * 32);
}

}  // namespace
}  // namespace orvane::testing
