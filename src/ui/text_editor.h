// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_TEXT_EDITOR_H_
#define ORVANE_UI_TEXT_EDITOR_H_

#include <QString>
#include <QStringList>
#include <functional>

#include "base/result.h"

namespace orvane {

/// The program that shows texts: the one in the user's settings ("Text Editor/Program"), else
/// Notepad on Windows and xdg-open elsewhere.
class TextEditor {
 public:
  /// Starts a program and does not wait for it; false where it cannot be started.
  using Starter = std::function<bool(const QString& program, const QStringList& arguments)>;

  TextEditor();  ///< starts processes
  explicit TextEditor(Starter starter) : start_(std::move(starter)) {}

  static QString Program();

  /// Fails where the program cannot be started.
  Result<> Show(const QString& path) const;

 private:
  Starter start_;
};

}  // namespace orvane

#endif  // ORVANE_UI_TEXT_EDITOR_H_
