// SPDX-License-Identifier: GPL-3.0-or-later
// Lets a failing test print Qt's texts; to be included before they are compared.
#ifndef ORVANE_TESTS_SUPPORT_QT_PRINT_H_
#define ORVANE_TESTS_SUPPORT_QT_PRINT_H_

#include <QString>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}

#endif  // ORVANE_TESTS_SUPPORT_QT_PRINT_H_
