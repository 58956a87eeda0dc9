// SPDX-License-Identifier: GPL-3.0-or-later
#include <CLI/CLI.hpp>

#include "cli/commands.h"

namespace orvane {

CLI::Option* AddLeaveOut(CLI::App* verb, std::string* text) {
  const CLI::Validator choice{[](const std::string& given) {
                                const auto chosen = LeaveOutChoiceOf(given);
                                return chosen ? std::string() : chosen.Message();
                              },
                              "", "leave-out"};
  return verb
      ->add_option("--leave-out", *text,
                   "records to leave out: bad (as their box marked them), beside (as "
                   "FILE.leave-out.txt says), numbers such as 3,7-9, or such a list's name")
      ->check(NotEmpty())
      ->check(choice);
}

LeaveOutChoice LeaveOutArgument(const std::string& text) {
  const auto choice = LeaveOutChoiceOf(text);
  return text.empty() || !choice ? LeaveOutChoice() : *choice;
}

}  // namespace orvane
