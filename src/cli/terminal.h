// SPDX-License-Identifier: GPL-3.0-or-later
// What differs from system to system of the terminal that the tool runs in.
#ifndef ORVANE_CLI_TERMINAL_H_
#define ORVANE_CLI_TERMINAL_H_

#include <chrono>
#include <string>
#include <vector>

namespace orvane {

/// Makes what is printed arrive byte for byte, and escape sequences work. For the beginning of
/// main().
void SetUpTerminal();

/// The program's arguments without its name, in UTF-8 where the system has wide ones.
std::vector<std::string> ProgramArguments(int argc, char** argv);

bool IsInputATerminal();
bool AreMessagesOnATerminal();
bool AreResultsOnATerminal();

enum class Typed { kNothing, kLine, kEnd };
/// Waits at most so long for a line typed on the terminal.
Typed WaitForLine(std::chrono::milliseconds time, std::string* line);

/// Signals that ask a program to end.
const std::vector<int>& EndingSignals();
/// Ends the program as the signal would have done, so that a script sees it and stops too.
[[noreturn]] void EndBySignal(int signal);

}  // namespace orvane

#endif  // ORVANE_CLI_TERMINAL_H_
