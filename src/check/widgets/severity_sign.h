// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CHECK_WIDGETS_SEVERITY_SIGN_H_
#define ORVANE_CHECK_WIDGETS_SEVERITY_SIGN_H_

#include <QApplication>
#include <QIcon>
#include <QString>
#include <QStyle>

#include "check/finding.h"

namespace orvane {

/// The desktop's own sign of an error, a warning or something to know.
inline QIcon SignOf(Severity severity) {
  const auto sign = severity == Severity::kError     ? QStyle::SP_MessageBoxCritical
                    : severity == Severity::kWarning ? QStyle::SP_MessageBoxWarning
                                                     : QStyle::SP_MessageBoxInformation;
  return QApplication::style()->standardIcon(sign);
}

/// The same as a word, for assistive tools.
inline QString WordOf(Severity severity) {
  const std::string_view name = SeverityName(severity);
  return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
}

}  // namespace orvane

#endif  // ORVANE_CHECK_WIDGETS_SEVERITY_SIGN_H_
