// SPDX-License-Identifier: GPL-3.0-or-later
// The grids of the stepping dialog.
#include <QAbstractButton>
#include <QApplication>
#include <QScopedValueRollback>
#include <algorithm>
#include <array>
#include <utility>

#include "base/number_text.h"
#include "stepping/widgets/freq_stepping_dlg.h"
#include "ui/byte_text.h"
#include "ui/field_tips.h"

namespace orvane {
namespace {

using Texts = std::vector<std::vector<QString>>;

constexpr int kDigits = 6;  // of a window: it is a rule of thumb

// Each header is whole; `more` is for the scroll bar and for numbers to be read.
void SetWidths(CGridCtrl* grid, std::initializer_list<int> widths, int more) {
  constexpr int kBesideText = 20;
  int column = 0;
  int all = 0;
  for (const int least : widths) {
    const int header = grid->fontMetrics().horizontalAdvance(grid->GetItemText(0, column));
    const int width = std::max(least, header + kBesideText);
    grid->SetColumnWidth(column++, width);
    all += width;
  }
  grid->setMinimumWidth(all + more);
  grid->ExpandColumnsToFit();
}

QString Number(double number) { return TextFromBytes(FormatReal(number, kDigits)); }

}  // namespace

CGridCtrl* CFreqSteppingDlg::NewGrid(const char* name, const char* label) {
  auto* grid = new CGridCtrl(this);
  grid->setObjectName(QString::fromLatin1(name));
  grid->setAccessibleName(QString::fromLatin1(label));
  grid->SetEditValidator(new ByteTextValidator(grid));
  grid->SetTabVisitsCells(true);
  return grid;
}

void CFreqSteppingDlg::MakeGrids() {
  frequencies_ = NewGrid("frequencies", "Frequency List");
  schedule_ = NewGrid("schedule", "Frequency Stepping Schedule Table");
  windows_ = NewGrid("windows", "TDEM/TDIP Window Table");
  const auto fill = [](CGridCtrl* grid, const std::vector<QString>& header, int rows) {
    Texts texts(static_cast<std::size_t>(rows) + 1, std::vector<QString>(header.size()));
    texts.front() = header;
    grid->SetTexts(texts);
    grid->SetFixedRowCount(1);
  };
  const int requests = static_cast<int>(kFrequencyKeys.size());
  fill(frequencies_, {QString(), QStringLiteral("Frequency")}, requests);
  SetWidths(frequencies_, {70, 120}, 20);
  fill(schedule_,
       {QString(), QStringLiteral("Freq (Hz)"), QStringLiteral("Current (A)"),
        QStringLiteral("End Time"), QStringLiteral("WaveForm")},
       kMostSteps);
  SetWidths(schedule_, {30, 80, 50, 80, 40}, 85);
  fill(windows_,
       {QString(), QStringLiteral("Start Time (ms)"), QStringLiteral("Window Width (ms)"),
        QStringLiteral("Repeat Freq. (Hz)"), QStringLiteral("Sample Rate (Hz) "),
        QStringLiteral("Samples/cycle")},
       kMostSteps);
  SetWidths(windows_, {30, 100, 100, 60, 60, 60}, 20);

  QStringList names;
  for (const std::string_view waveform : kWaveforms) {
    names.append(TextFromBytes(waveform));
  }
  for (int row = 1; row <= kMostSteps; ++row) {
    auto* cell = static_cast<CGridCell*>(schedule_->GetCell(row, SteppingForm::kWaveform + 1));
    cell->SetChoices(names);
  }
  const auto but_first = [](int, int column) { return column > 0; };
  frequencies_->SetBeginEdit(but_first);
  schedule_->SetBeginEdit(but_first);
  frequencies_->SetDragEnabled(true);
  schedule_->SetDragEnabled(true);
  connect(frequencies_, &CGridCtrl::cellEdited, this, &CFreqSteppingDlg::OnFrequencyEdited);
  connect(schedule_, &CGridCtrl::cellEdited, this, &CFreqSteppingDlg::OnStepEdited);
}

void CFreqSteppingDlg::ShowFrequencies() {
  for (int row = 0; row < static_cast<int>(kFrequencyKeys.size()); ++row) {
    frequencies_->SetItemText(row + 1, 0, QStringLiteral("FREQ%1").arg(row + 1));
    frequencies_->SetItemText(row + 1, 1, TextFromBytes(form_->FrequencyText(row)));
    static_cast<CGridCell*>(frequencies_->GetCell(row + 1, 1))
        ->SetTipText(CellTip(kFrequencyKeys[static_cast<std::size_t>(row)], "Frequency (Hz)"));
  }
}

bool CFreqSteppingDlg::GoTo(ParamKey key) {
  const auto* found = std::find_if(kFrequencyKeys.begin(), kFrequencyKeys.end(),
                                   [key](std::string_view one) { return ParamKey(one) == key; });
  if (found == kFrequencyKeys.end()) {
    return false;
  }
  frequencies_->SetFocusCell(static_cast<int>(found - kFrequencyKeys.begin()) + 1, 1);
  frequencies_->setFocus();
  return true;
}

void CFreqSteppingDlg::ShowSchedule() {
  for (int row = 0; row < kMostSteps; ++row) {
    schedule_->SetItemText(row + 1, 0, QString::number(row + 1));
    for (const auto column : {SteppingForm::kFrequency, SteppingForm::kCurrent,
                              SteppingForm::kEndTime, SteppingForm::kWaveform}) {
      schedule_->SetItemText(row + 1, column + 1, TextFromBytes(form_->StepText(row, column)));
    }
  }
  picture_->Show(WrittenRows(form_->Schedule()));
  picture_box_->setVisible(form_->HasPicture());
}

void CFreqSteppingDlg::ShowWindows() {
  const auto& windows = form_->Windows();
  for (int row = 0; row < kMostSteps; ++row) {
    std::array<QString, 6> texts = {QString::number(row + 1)};
    if (row < static_cast<int>(windows.size())) {
      const WindowRow& window = windows[static_cast<std::size_t>(row)];
      texts = {texts[0],
               Number(window.start),
               Number(window.width),
               Number(window.repeat),
               Number(window.rate),
               Number(window.samples_per_cycle)};
    }
    for (int column = 0; column < static_cast<int>(texts.size()); ++column) {
      windows_->SetItemText(row + 1, column, texts[static_cast<std::size_t>(column)]);
    }
  }
}

void CFreqSteppingDlg::AfterEdit(CGridCtrl* grid, int row, int column, const std::string& reason) {
  if (reason.empty()) {
    refused_.erase({grid, row, column});
  } else if (!grid->RefuseEdit(TextFromBytes(reason))) {  // else the grid says why, once for all
    refused_[{grid, row, column}] = TextFromBytes(reason);
    stops_button_ =
        is_committing_ || qobject_cast<QAbstractButton*>(QApplication::focusWidget()) != nullptr;
  }
  if (grid == frequencies_) {
    ShowFrequencies();
  } else {
    ShowSchedule();
  }
  ShowRefused();
}

void CFreqSteppingDlg::ShowRefused() {
  QStringList reasons;
  for (const auto& [cell, reason] : refused_) {
    reasons << reason;
  }
  note_->setText(reasons.isEmpty()
                     ? QString()
                     : reasons.join(QStringLiteral(", ")) +
                           (reasons.size() == 1 ? QStringLiteral("; the cell keeps its value")
                                                : QStringLiteral("; the cells keep their values")));
}

void CFreqSteppingDlg::OnFrequencyEdited(int row, int column) {
  AfterEdit(frequencies_, row, column,
            form_->EditFrequency(row - 1, BytesFromText(frequencies_->GetItemText(row, column))));
}

void CFreqSteppingDlg::OnStepEdited(int row, int column) {
  AfterEdit(schedule_, row, column,
            form_->EditStep(row - 1, static_cast<SteppingForm::StepColumn>(column - 1),
                            BytesFromText(schedule_->GetItemText(row, column))));
}

// A press on a button ends an edit before the button hears of it: what was refused then stops that
// button. What was refused before the user has seen.
bool CFreqSteppingDlg::CommitGrids() {
  const QScopedValueRollback<bool> guard(is_committing_, true);
  frequencies_->CommitEdit();
  schedule_->CommitEdit();
  const bool is_right = !std::exchange(stops_button_, false);
  if (is_right) {
    refused_.clear();
  }
  return is_right;
}

int CFreqSteppingDlg::FocusStep() const { return schedule_->GetFocusCell().first - 1; }

}  // namespace orvane
