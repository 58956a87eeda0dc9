// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/startup_result_dlg.h"

#include "files/path_text.h"

namespace orvane {
namespace {

std::vector<ResultRow> RowsOf(const StartupRun& run) {
  std::vector<ResultRow> rows;
  for (const StartupOutcome& outcome : run.Outcomes()) {
    const bool is_lost =
        outcome.state == StartupOutcome::kFailed || outcome.state == StartupOutcome::kOverwritten;
    const bool is_plain = outcome.state == StartupOutcome::kWritten && outcome.note.empty();
    ResultRow row{QString::fromStdString(outcome.Name()),
                  {},
                  is_lost    ? ResultRow::kProblem
                  : is_plain ? ResultRow::kGood
                             : ResultRow::kNote,
                  QString::fromStdString(outcome.Text()),
                  {}};
    if (!outcome.path.empty()) {
      row.outputs << QString::fromStdString(PathText(outcome.path));
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

CStartupResultDlg::CStartupResultDlg(const StartupRun& run, QWidget* parent)
    : CResultListDlg({QString::fromStdString(run.Headline()), {}, QStringLiteral("Box")},
                     RowsOf(run), nullptr, parent) {}

}  // namespace orvane
