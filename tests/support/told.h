// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_TOLD_H_
#define ORVANE_TESTS_SUPPORT_TOLD_H_

#include <string>

#include "forms/prompts.h"

namespace orvane::testing {

/// A user who says No and remembers the last words.
class Told : public Prompts, public Notices {
 public:
  Answer AskYesNo(const std::string&, const std::string&) override { return Answer::kNo; }
  Answer AskYesNoCancel(const std::string&, const std::string&) override {
    ++asked;
    return answer;
  }
  void ShowWarning(const std::string& caption, const std::string& text) override {
    warning = caption + ": " + text;
  }
  void ShowNotice(const std::string& text) override { notice = text; }
  Answer answer = Answer::kCancel;  ///< where there are three
  int asked = 0;                    ///< such questions
  std::string warning;
  std::string notice;
};

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_TOLD_H_
