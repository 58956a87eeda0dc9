// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/shape_commands.h"

#include <QInputDialog>
#include <algorithm>
#include <limits>

#include "timeseries/widgets/filter_menu.h"
#include "ui/byte_text.h"

namespace orvane {

ShapeCommands::ShapeCommands(WaveformView* view, CDisplay* display)
    : QObject(display), view_(view), display_(display) {
  fold_ = display->AddKey("Fold", "fold", "The mean period of the segment and its spread",
                          Qt::Key_F, [this] { ToggleFold(false); });
  fold_halves_ = display->AddKey(
      "Fold half periods", "fold-halves",
      "The mean half period, second halves reversed: for waveforms that a transmitter reverses",
      Qt::SHIFT | Qt::Key_F, [this] { ToggleFold(true); });
  filters_ =
      display->AddKey("Filters...", "filters", "What is done to the traces before they are shown",
                      Qt::Key_L, [this] { ChooseFilters(); });
  next_too_ = display->AddKey("Next segment too", "next-too", "Draw the next segment over this one",
                              Qt::Key_O, [this] { ShowOther(OtherRecord::Which::kNext); });
  previous_too_ = display->AddKey("Previous segment too", "previous-too",
                                  "Draw the previous segment over this one", Qt::SHIFT | Qt::Key_O,
                                  [this] { ShowOther(OtherRecord::Which::kPrevious); });
  display->AddKey("Other segment too...", "other-too",
                  "Draw a segment of your choice over this one", Qt::CTRL | Qt::SHIFT | Qt::Key_O,
                  [this] { ChooseOther(); });
  for (QAction* action : {fold_, fold_halves_, next_too_, previous_too_}) {
    action->setCheckable(true);
  }
  display->Bar()->addAction(fold_);
  display->Bar()->addAction(filters_);
}

void ShapeCommands::ToggleFold(bool halves) {
  RecordShape shape = view_->Shape();
  shape.folds = !shape.folds || shape.halves != halves;
  shape.halves = halves;
  view_->SetShape(shape);
  emit changed();
}

// Below its button, or in the middle where that has no room.
void ShapeCommands::ChooseFilters() {
  FilterMenu menu(view_->Shape().filter, SampleRate(view_->Record().Header()), display_);
  connect(&menu, &FilterMenu::chosen, this, [this](const ViewFilter& filter) {
    RecordShape shape = view_->Shape();
    shape.filter = filter;
    view_->SetShape(shape);
    emit changed();
  });
  menu.exec(display_->PlaceBelow(filters_));
}

// The same again takes it away.
void ShapeCommands::ShowOther(OtherRecord::Which which) {
  other_.Choose(other_.Chosen() == which ? OtherRecord::Which::kNone : which);
  emit changed();
}

void ShapeCommands::ChooseOther() {
  bool is_chosen = false;
  const int most =
      static_cast<int>(std::min<std::uint64_t>(view_->Count(), std::numeric_limits<int>::max()));
  const int number =
      QInputDialog::getInt(display_, QStringLiteral("Other Segment"), QStringLiteral("Number"),
                           static_cast<int>(view_->Number()), 1, std::max(most, 1), 1, &is_chosen);
  if (is_chosen) {
    other_.Choose(OtherRecord::Which::kChosen, static_cast<std::uint64_t>(number));
    emit changed();
  }
}

void ShapeCommands::Follow() {
  const RecordShape& shape = view_->Shape();
  const std::string& reason = view_->WhyNoFold();
  for (QAction* action : {fold_, fold_halves_}) {
    const bool is_on = shape.folds && shape.halves == (action == fold_halves_);
    action->setChecked(is_on);
    action->setEnabled(is_on || reason.empty());
    const QString tip = action == fold_ ? QStringLiteral(
                                              "The mean period of the segment and its "
                                              "spread (F)")
                                        : QStringLiteral(
                                              "The mean half period, second halves "
                                              "reversed (Shift+F)");
    action->setToolTip(reason.empty() ? tip
                                      : QStringLiteral("Not folded: ") + TextFromBytes(reason));
  }
  next_too_->setChecked(other_.Chosen() == OtherRecord::Which::kNext);
  previous_too_->setChecked(other_.Chosen() == OtherRecord::Which::kPrevious);
}

}  // namespace orvane
