// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_CLI_RUN_H_
#define ORVANE_TESTS_SUPPORT_CLI_RUN_H_

#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "support/temp_dir.h"

namespace orvane::testing {

struct Outcome {
  int exit_code;
  std::string out;
  std::string err;
};

/// What starts the tool built for Windows, where that is what is tested; null elsewhere.
inline const char* WindowsTool() { return std::getenv("ORVANE_TEST_WINDOWS_TOOL"); }

inline std::string ToolPath() { return WindowsTool() != nullptr ? WindowsTool() : ORVANE_CLI; }

/// A path that the tool told, with '/' whatever the system has.
inline std::string Slashed(std::string path) {
  if (WindowsTool() != nullptr) {
    std::replace(path.begin(), path.end(), '\\', '/');
  }
  return path;
}

/// Runs the tool by the shell in a folder.
inline Outcome RunCli(const TempDir& dir, const std::string& arguments) {
  const std::string command = "cd '" + dir.Path().string() + "' && '" + ToolPath() + "' " +
                              arguments + " >out.txt 2>err.txt";
  const int status = std::system(command.c_str());
  return {WEXITSTATUS(status), ReadAll(dir / "out.txt"), ReadAll(dir / "err.txt")};
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_CLI_RUN_H_
