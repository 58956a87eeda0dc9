// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/startup_result_dlg.h"

#include "files/path_text.h"

namespace orvane {
namespace {

std::string ResultOf(const StartupOutcome& outcome) {
  const std::string details = outcome.Details();
  return details.empty() ? outcome.Text() : outcome.Text() + ": " + details;
}

// The names that the dialogs give to what differs.
QString DifferingText(const StartupOutcome& outcome, const KeyNames& names) {
  std::vector<std::string> keys;
  for (const ParamKey key : outcome.differing) {
    keys.push_back(key.Text());
  }
  return keys.empty() ? QString()
                      : QStringLiteral("Other than in the main table: ") +
                            QString::fromStdString(names(keys));
}

std::vector<ResultRow> RowsOf(const StartupRun& run, const KeyNames& names) {
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
                  QString::fromStdString(ResultOf(outcome)),
                  {}};
    if (!outcome.path.empty()) {
      row.outputs << QString::fromStdString(PathText(outcome.path));
    }
    row.details = DifferingText(outcome, names);
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

CStartupResultDlg::CStartupResultDlg(const StartupRun& run, const KeyNames& names, QWidget* parent)
    : CResultListDlg({QString::fromStdString(run.Headline()), {}, QStringLiteral("Box")},
                     RowsOf(run, names), nullptr, parent) {}

}  // namespace orvane
