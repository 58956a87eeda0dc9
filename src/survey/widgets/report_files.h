// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_WIDGETS_REPORT_FILES_H_
#define ORVANE_SURVEY_WIDGETS_REPORT_FILES_H_

#include <QString>
#include <QWidget>

#include "base/result.h"
#include "survey/survey_report.h"

namespace orvane {

/// Writes the report as a page (.html) or, by its extension, as a PDF. After a failure an older
/// file stays.
Result<> SaveReport(const SurveyReport& report, const QString& path);

/// Asks for the file before, and tells of a failure.
void AskAndSaveReport(const SurveyReport& report, QWidget* parent);

}  // namespace orvane

#endif  // ORVANE_SURVEY_WIDGETS_REPORT_FILES_H_
