// SPDX-License-Identifier: GPL-3.0-or-later
// What rules ask of the user, without knowing how it is shown.
#ifndef ORVANE_FORMS_PROMPTS_H_
#define ORVANE_FORMS_PROMPTS_H_

#include <string>
#include <vector>

namespace orvane {

enum class Answer { kYes, kNo, kCancel };

/// Questions and messages that stop the work until they are answered.
class Prompts {
 public:
  Prompts() = default;
  Prompts(const Prompts&) = delete;
  Prompts& operator=(const Prompts&) = delete;
  virtual ~Prompts() = default;

  /// Yes or No; closing the question means No.
  virtual Answer AskYesNo(const std::string& caption, const std::string& question) = 0;
  /// The same where Yes loses something for good: Enter means No.
  virtual Answer AskToLose(const std::string& caption, const std::string& question) {
    return AskYesNo(caption, question);
  }
  /// Yes, No or Cancel; closing the question means Cancel.
  virtual Answer AskYesNoCancel(const std::string& caption, const std::string& question) = 0;
  /// One of several buttons, by its index; closing the question means the one at `escape`. Where no
  /// window can have them, Yes is the first and No that one.
  virtual int AskChoice(const std::string& caption, const std::string& question,
                        const std::vector<std::string>& buttons, int escape) {
    static_cast<void>(buttons);
    return AskYesNo(caption, question) == Answer::kYes ? 0 : escape;
  }
  virtual void ShowWarning(const std::string& caption, const std::string& text) = 0;
};

/// Notices that stop nobody: a line of the status bar, which stays until the next one.
class Notices {
 public:
  Notices() = default;
  Notices(const Notices&) = delete;
  Notices& operator=(const Notices&) = delete;
  virtual ~Notices() = default;

  /// Only the first line has a place of its own; the rest is for those who look closer.
  virtual void ShowNotice(const std::string& text) = 0;
  /// Takes a notice away that is no longer true, where no other has taken its place.
  virtual void EndNotice(const std::string& text) { static_cast<void>(text); }
};

}  // namespace orvane

#endif  // ORVANE_FORMS_PROMPTS_H_
