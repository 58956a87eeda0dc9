// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_EXAMPLE_SURVEY_H_
#define ORVANE_TESTS_SUPPORT_EXAMPLE_SURVEY_H_

#include <QProcess>
#include <QStringList>

namespace orvane::testing {

/// Runs the program that writes the example survey. Not by a shell: that of Windows takes quotation
/// marks in its own way.
inline bool MakeExampleSurvey(const QStringList& arguments) {
  QProcess program;
  program.setStandardOutputFile(QProcess::nullDevice());
  program.start(QStringLiteral(ORVANE_EXAMPLE_SURVEY), arguments);
  return program.waitForFinished() && program.exitCode() == 0;
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_EXAMPLE_SURVEY_H_
