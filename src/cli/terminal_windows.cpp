// SPDX-License-Identifier: GPL-3.0-or-later
#define NOMINMAX
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
// Needs the one above.
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwctype>
#include <filesystem>

#include "cli/terminal.h"
#include "files/path_text.h"

namespace orvane {

namespace {

// Whether a name has the form of a pattern, in any case. The system's own matching also takes other
// names by their short forms of old ("A~1.TBL").
bool Matches(std::wstring_view name, std::wstring_view pattern) {
  if (pattern.empty() || pattern.front() == L'*') {
    return pattern.empty() ? name.empty()
                           : Matches(name, pattern.substr(1)) ||
                                 (!name.empty() && Matches(name.substr(1), pattern));
  }
  const auto upper = [](wchar_t c) { return std::towupper(static_cast<wint_t>(c)); };
  return !name.empty() &&
         (pattern.front() == L'?' || upper(name.front()) == upper(pattern.front())) &&
         Matches(name.substr(1), pattern.substr(1));
}

// The shells here leave '*' and '?' to the programs. What no file matches stays as it is, and so
// does KEY=VALUE.
void AppendExpanded(const std::wstring& argument, std::vector<std::string>* arguments) {
  std::vector<std::string> found;
  const std::size_t separator = argument.find_last_of(L"/\\:");
  const std::wstring folder = argument.substr(0, separator + 1);  // nothing without a separator
  const std::wstring pattern = argument.substr(separator + 1);
  if (pattern.find_first_of(L"*?") != std::wstring::npos &&
      pattern.find(L'=') == std::wstring::npos) {
    WIN32_FIND_DATAW entry{};
    const HANDLE search = FindFirstFileW((folder + L"*").c_str(), &entry);
    for (bool has_entry = search != INVALID_HANDLE_VALUE; has_entry;
         has_entry = FindNextFileW(search, &entry) != 0) {
      if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 &&
          Matches(entry.cFileName, pattern)) {
        found.push_back(PathText(folder + entry.cFileName));
      }
    }
    FindClose(search);
  }
  if (found.empty()) {
    found.push_back(PathText(argument));
  }
  std::sort(found.begin(), found.end());
  arguments->insert(arguments->end(), found.begin(), found.end());
}

// What the console of the shell was before, for the end.
UINT shells_code_page = 0;
DWORD shells_mode = 0;

void RestoreConsole() {
  if (shells_code_page != 0) {
    SetConsoleOutputCP(shells_code_page);
  }
  if (shells_mode != 0) {
    SetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), shells_mode);
  }
}

}  // namespace

void SetUpTerminal() {
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  shells_code_page = GetConsoleOutputCP();
  SetConsoleOutputCP(CP_UTF8);
  const HANDLE messages = GetStdHandle(STD_ERROR_HANDLE);
  if (GetConsoleMode(messages, &shells_mode) != 0) {
    SetConsoleMode(messages, shells_mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
  }
  std::atexit(RestoreConsole);
}

std::vector<std::string> ProgramArguments(int /*argc*/, char** /*argv*/) {
  int count = 0;
  wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  for (int i = 1; wide != nullptr && i < count; ++i) {
    AppendExpanded(wide[i], &arguments);
  }
  LocalFree(wide);
  return arguments;
}

bool IsInputATerminal() { return _isatty(_fileno(stdin)) != 0; }
bool AreMessagesOnATerminal() { return _isatty(_fileno(stderr)) != 0; }
bool AreResultsOnATerminal() { return _isatty(_fileno(stdout)) != 0; }

// The console wakes us for every key and click; only a whole line is read.
Typed WaitForLine(std::chrono::milliseconds time, std::string* line) {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  if (WaitForSingleObject(input, static_cast<DWORD>(time.count())) != WAIT_OBJECT_0) {
    return Typed::kNothing;
  }
  std::array<char, 256> bytes{};
  DWORD count = 0;
  if (ReadFile(input, bytes.data(), bytes.size(), &count, nullptr) == 0 || count == 0) {
    return Typed::kEnd;
  }
  line->assign(bytes.data(), count);
  return Typed::kLine;
}

const std::vector<int>& EndingSignals() {
  static const std::vector<int> signals = {SIGINT, SIGTERM, SIGBREAK};
  return signals;
}

void EndBySignal(int /*signal*/) {
  RestoreConsole();
  ExitProcess(STATUS_CONTROL_C_EXIT);
}

}  // namespace orvane
