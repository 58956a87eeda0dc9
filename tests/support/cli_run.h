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

/// Runs the tool by the shell in a folder.
inline Outcome RunCli(const TempDir& dir, const std::string& arguments) {
  const std::string command =
      "cd '" + dir.Path().string() + "' && '" ORVANE_CLI "' " + arguments + " >out.txt 2>err.txt";
  const int status = std::system(command.c_str());
  return {WEXITSTATUS(status), ReadAll(dir / "out.txt"), ReadAll(dir / "err.txt")};
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_CLI_RUN_H_
