// SPDX-License-Identifier: GPL-3.0-or-later
// Stand-ins for the user and the clock.
#ifndef ORVANE_TESTS_SUPPORT_TOLD_H_
#define ORVANE_TESTS_SUPPORT_TOLD_H_

#include <string>

#include "forms/prompts.h"
#include "table/clock.h"

namespace orvane::testing {

/// A user who says No, or what was agreed on, and remembers the last words.
class Told : public Prompts, public Notices {
 public:
  Answer AskYesNo(const std::string&, const std::string&) override {
    ++asked;
    return yes_no;
  }
  Answer AskYesNoCancel(const std::string&, const std::string&) override {
    ++asked;
    return answer;
  }
  void ShowWarning(const std::string& caption, const std::string& text) override {
    warning = caption + ": " + text;
  }
  void ShowNotice(const std::string& text) override { notice = text; }
  Answer yes_no = Answer::kNo;
  Answer answer = Answer::kCancel;  ///< where there are three
  int asked = 0;                    ///< questions
  std::string warning;
  std::string notice;
};

/// A clock that stands still; at 2026/11/21 08:00:00 where nothing else is said.
class FixedClock : public Clock {
 public:
  explicit FixedClock(const ParamTime& now = {0, 0, 8, 21, 11, 26, 6, 20}) : now_(now) {}
  ParamTime Now() const override { return now_; }

 private:
  ParamTime now_;
};

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_TOLD_H_
