// SPDX-License-Identifier: GPL-3.0-or-later
#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>

#include "cli/terminal.h"

namespace orvane {

void SetUpTerminal() {}

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return {argv + std::min(argc, 1), argv + argc};
}

bool IsInputATerminal() { return isatty(STDIN_FILENO) != 0; }
bool AreMessagesOnATerminal() { return isatty(STDERR_FILENO) != 0; }
bool AreResultsOnATerminal() { return isatty(STDOUT_FILENO) != 0; }

Typed WaitForLine(std::chrono::milliseconds time, std::string* line) {
  pollfd input{STDIN_FILENO, POLLIN, 0};
  if (poll(&input, 1, static_cast<int>(time.count())) <= 0) {
    return Typed::kNothing;
  }
  std::array<char, 256> bytes{};
  const auto count = read(STDIN_FILENO, bytes.data(), bytes.size());
  if (count <= 0) {
    return Typed::kEnd;  // the terminal is gone
  }
  line->assign(bytes.data(), static_cast<std::size_t>(count));
  return Typed::kLine;
}

const std::vector<int>& EndingSignals() {
  static const std::vector<int> signals = {SIGINT, SIGTERM, SIGHUP};
  return signals;
}

void EndBySignal(int signal) {
  std::signal(signal, SIG_DFL);
  std::raise(signal);
  std::_Exit(128 + signal);  // as shells count it, should the signal be blocked
}

}  // namespace orvane
