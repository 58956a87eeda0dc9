// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/batch_result_dlg.h"

#include <array>

#include "ui/qt_path.h"

namespace orvane {
namespace {

ResultRow::Kind KindOf(BatchStatus status) {
  switch (status) {
    case BatchStatus::kDone:
      return ResultRow::kGood;
    case BatchStatus::kFailed:
      return ResultRow::kProblem;
    default:
      return ResultRow::kNote;
  }
}

std::vector<ResultRow> RowsOf(const Batch& batch) {
  std::vector<ResultRow> rows;
  for (std::size_t i = 0; i < batch.Count(); ++i) {
    const BatchResult* result = batch.Result(i);
    if (result == nullptr) {
      continue;
    }
    const std::filesystem::path& input = batch.Input(i);
    ResultRow row{TextFromPath(input.filename()),
                  TextFromPath(input),
                  KindOf(result->status),
                  ResultText(*result),
                  {}};
    for (const auto& output : result->outputs) {
      row.outputs << TextFromPath(output);
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

QString ResultText(const BatchResult& result) {
  QString text;
  switch (result.status) {
    case BatchStatus::kDone:
      return QStringLiteral("done");
    case BatchStatus::kDoneWithNote:
      text = QStringLiteral("done");
      break;
    case BatchStatus::kFailed:
      text = QStringLiteral("failed");
      break;
    case BatchStatus::kLeftAlone:
      text = QStringLiteral("left alone");
      break;
    case BatchStatus::kCancelled:
      return QStringLiteral("cancelled");
  }
  if (result.code != 0) {
    text += QStringLiteral(" (%1)").arg(result.code);
  }
  return result.text.empty() ? text
                             : text + QStringLiteral(": ") + QString::fromStdString(result.text);
}

QString CountsText(const Batch& batch) {
  constexpr std::array kNames = {"done", "done with notes", "failed", "left alone", "cancelled"};
  std::array<int, kNames.size()> counts{};
  for (std::size_t i = 0; i < batch.Count(); ++i) {
    if (const BatchResult* result = batch.Result(i); result != nullptr) {
      ++counts[static_cast<std::size_t>(result->status)];
    }
  }
  QStringList texts;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts[i] > 0) {
      texts << QString::number(counts[i]) + QLatin1Char(' ') + QLatin1String(kNames[i]);
    }
  }
  return texts.join(QStringLiteral(", "));
}

CBatchResultDlg::CBatchResultDlg(const Batch& batch, const QString& message,
                                 const TextEditor* editor, QWidget* parent)
    : CResultListDlg({message, CountsText(batch), QStringLiteral("File")}, RowsOf(batch), editor,
                     parent) {}

}  // namespace orvane
