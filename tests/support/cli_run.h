// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_CLI_RUN_H_
#define ORVANE_TESTS_SUPPORT_CLI_RUN_H_

#include <sys/wait.h>

#include <cstdlib>
#include <string>

#include "support/temp_dir.h"

namespace orvane::testing {

struct Outcome {
  int exit_code;
  std::string out;
  std::string err;
};

/// The tool that is tested: ORVANE_TEST_TOOL where that is set, for one built for another system.
inline std::string ToolPath() {
  const char* other = std::getenv("ORVANE_TEST_TOOL");
  return other != nullptr ? other : ORVANE_CLI;
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
