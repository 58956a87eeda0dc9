// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_QT_WARNINGS_H_
#define ORVANE_TESTS_SUPPORT_QT_WARNINGS_H_

#include <QString>

namespace orvane::testing {

/// While it lives this warning of Qt's does not fail the test that provokes it.
class ExpectedQtWarning {
 public:
  explicit ExpectedQtWarning(const char* text) { Text() = QString::fromLatin1(text); }
  ~ExpectedQtWarning() { Text().clear(); }
  ExpectedQtWarning(const ExpectedQtWarning&) = delete;
  ExpectedQtWarning& operator=(const ExpectedQtWarning&) = delete;

  static bool IsExpected(const QString& warning) { return !Text().isEmpty() && warning == Text(); }

 private:
  static QString& Text() {
    static QString text;
    return text;
  }
};

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_QT_WARNINGS_H_
