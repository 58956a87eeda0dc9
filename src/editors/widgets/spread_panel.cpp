// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/spread_panel.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QVBoxLayout>

#include "ui/byte_text.h"
#include "ui/field_tips.h"

namespace orvane {
namespace {

constexpr int kHeaderRows = 1;
constexpr int kDefinitionWidth = 120;
constexpr int kNumberWidth = 72;
constexpr int kMargins = 16;  // of a title

ChannelColumn ColumnAt(int column) { return static_cast<ChannelColumn>(column - 1); }

}  // namespace

SpreadPanel::SpreadPanel(Spread* spread, Prompts* prompts, QWidget* parent)
    : QWidget(parent), spread_(spread), prompts_(prompts) {
  CreateGrids();
  LayOut();
  ShowBoxes(1);  // the local box
  connect(boxes_, &CGridCtrl::cellEdited, this, &SpreadPanel::OnBoxEdited);
  connect(channels_, &CGridCtrl::cellEdited, this, &SpreadPanel::OnChannelEdited);
  connect(boxes_, &CGridCtrl::focusCellChanged, this, &SpreadPanel::ShowChannels);
  connect(channels_, &CGridCtrl::focusCellChanged, this, &SpreadPanel::UpdateButtons);
}

void SpreadPanel::CreateGrids() {
  boxes_ = new CGridCtrl(this);
  boxes_->setObjectName(QString::number(kBoxes));
  boxes_->setAccessibleName(QStringLiteral("Boxes"));
  boxes_->SetEditValidator(new ByteTextValidator(this));
  boxes_->SetTabVisitsCells(true);
  boxes_->SetDragEnabled(true);
  boxes_->SetBeginEdit([this](int row, int column) {
    return row - kHeaderRows < spread_->BoxCount() &&
           spread_->CanEditBox(row - kHeaderRows, static_cast<BoxColumn>(column));
  });
  channels_ = new CGridCtrl(this);
  channels_->setObjectName(QString::number(kChannels));
  channels_->setAccessibleName(QStringLiteral("Channels"));
  channels_->SetEditValidator(new ByteTextValidator(this));
  channels_->SetTabVisitsCells(true);
  channels_->SetDragEnabled(true);
  channels_->SetBeginEdit([this](int, int column) {
    return column > 0 && CurrentBox() >= 0 &&
           spread_->CanEditChannel(CurrentBox(), ColumnAt(column));
  });
}

QPushButton* SpreadPanel::NewButton(const QString& text, const char* name,
                                    void (SpreadPanel::*act)()) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAutoDefault(false);
  connect(button, &QPushButton::clicked, this, act);
  return button;
}

void SpreadPanel::LayOut() {
  insert_box_ = NewButton(QStringLiteral("Insert Box Row"), "insertBox", &SpreadPanel::OnInsertBox);
  delete_box_ = NewButton(QStringLiteral("Delete Box Row"), "deleteBox", &SpreadPanel::OnDeleteBox);
  insert_channel_ =
      NewButton(QStringLiteral("Insert Ch Row"), "insertChannel", &SpreadPanel::OnInsertChannel);
  delete_channel_ =
      NewButton(QStringLiteral("Delete Ch Row"), "deleteChannel", &SpreadPanel::OnDeleteChannel);
  channels_title_ = new QLabel(this);

  auto* box_buttons = new QHBoxLayout;
  box_buttons->addWidget(new QLabel(QStringLiteral("Boxes"), this));
  box_buttons->addStretch();
  box_buttons->addWidget(insert_box_);
  box_buttons->addWidget(delete_box_);
  auto* channel_buttons = new QHBoxLayout;
  channel_buttons->addWidget(channels_title_);
  channel_buttons->addStretch();
  channel_buttons->addWidget(insert_channel_);
  channel_buttons->addWidget(delete_channel_);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(box_buttons);
  layout->addWidget(boxes_, 1);
  layout->addLayout(channel_buttons);
  layout->addWidget(channels_, 1);
}

int SpreadPanel::CurrentBox() const {
  const int box = boxes_->GetFocusCell().first - kHeaderRows;
  return box < spread_->BoxCount() ? box : -1;
}

int SpreadPanel::CurrentChannel() const { return channels_->GetFocusCell().first - kHeaderRows; }

bool SpreadPanel::CommitEdits() {
  is_refused_ = false;
  boxes_->CommitEdit();
  channels_->CommitEdit();
  return !is_refused_;
}

void SpreadPanel::ShowBoxes(int focus_box) {
  std::vector<std::vector<QString>> texts(1);
  for (const std::string_view name : kBoxColumnNames) {
    texts[0].push_back(TextFromBytes(name));
  }
  for (int box = 0; box < spread_->BoxCount(); ++box) {
    auto& row = texts.emplace_back();
    for (int column = 0; column < kBoxColumns; ++column) {
      row.push_back(TextFromBytes(spread_->BoxCell(box, static_cast<BoxColumn>(column))));
    }
  }
  boxes_->SetTexts(texts);
  boxes_->SetFixedRowCount(kHeaderRows);
  boxes_->ExpandColumnsToFit();
  ShowBoxTips();
  boxes_->SetFocusCell(std::min(focus_box, spread_->BoxCount() - 1) + kHeaderRows, kBoxSerial);
  ShowChannels();
}

void SpreadPanel::ShowBoxTips() {
  for (int box = 0; box < spread_->BoxCount(); ++box) {
    for (int at = 0; at < kBoxColumns; ++at) {
      const auto column = static_cast<BoxColumn>(at);
      QString tip = CellTip(spread_->KeyOfBox(box, column).Text(),
                            kBoxColumnNames[static_cast<std::size_t>(at)]);
      if (spread_->Box(box).kind == kLocalBox && column == kBoxChannels) {
        const QString note = TextFromBytes(spread_->ChannelCountNote());
        tip += (tip.isEmpty() || note.isEmpty() ? QString() : QStringLiteral("\n")) + note;
      }
      static_cast<CGridCell*>(boxes_->GetCell(box + kHeaderRows, at))->SetTipText(tip);
    }
  }
}

void SpreadPanel::ShowChannelTips(int box) {
  for (int row = kHeaderRows; row < channels_->GetRowCount(); ++row) {
    for (int column = 1; column <= kChannelColumns; ++column) {
      const ParamKey key = spread_->KeyOfChannel(box, row - kHeaderRows, ColumnAt(column));
      static_cast<CGridCell*>(channels_->GetCell(row, column))
          ->SetTipText(CellTip(key.Text(), InfoOf(ColumnAt(column)).title));
    }
  }
}

void SpreadPanel::ShowChannels() {
  channels_->CommitEdit();
  const int box = CurrentBox();
  const int focus = CurrentChannel();
  std::vector<std::vector<QString>> texts(1);
  texts[0].push_back(QStringLiteral("Channel"));
  for (int column = 0; column < kChannelColumns; ++column) {
    texts[0].push_back(TextFromBytes(InfoOf(static_cast<ChannelColumn>(column)).title));
  }
  const int count = box < 0 ? 0 : spread_->ChannelCount(box);
  for (int channel = 0; channel < count; ++channel) {
    auto& row = texts.emplace_back();
    row.push_back(QString::number(channel + 1));
    for (int column = 0; column < kChannelColumns; ++column) {
      row.push_back(
          TextFromBytes(spread_->ChannelCell(box, channel, static_cast<ChannelColumn>(column))));
    }
  }
  channels_->SetTexts(texts);
  channels_->SetFixedRowCount(kHeaderRows);
  for (int column = 0; column <= kChannelColumns; ++column) {
    const bool is_wide = column == kDefinition + 1 || column == kContactResistance + 1;
    const QString& title = texts[0][static_cast<std::size_t>(column)];
    channels_->SetColumnWidth(
        column, std::max(is_wide ? kDefinitionWidth : kNumberWidth,
                         channels_->fontMetrics().horizontalAdvance(title) + kMargins));
  }
  channels_->ExpandColumnsToFit();
  ShowChannelTips(box);
  channels_->SetFocusCell(std::clamp(focus, 0, std::max(count - 1, 0)) + kHeaderRows, 1);
  channels_title_->setText(TextFromBytes(spread_->ChannelsTitle(box)));
  channels_->SetOwnerOfCells(box < 0 ? QString() : TextFromBytes(spread_->BoxName(box)));
  emit changed();
  UpdateButtons();
}

void SpreadPanel::Choose(int box, int channel) {
  if (box != CurrentBox()) {
    boxes_->SetFocusCell(box + kHeaderRows, kBoxSerial);
  }
  channels_->SetFocusCell(channel + kHeaderRows, std::max(channels_->GetFocusCell().second, 0));
}

bool SpreadPanel::GoTo(ParamKey key) {
  const auto place = spread_->PlaceOf(key);
  if (!place) {
    return false;
  }
  Choose(place->box, place->channel);
  channels_->SetFocusCell(place->channel + kHeaderRows, place->column + 1);
  channels_->setFocus();
  return true;
}

void SpreadPanel::UpdateButtons() {
  const int box = CurrentBox();
  insert_box_->setEnabled(!spread_->InsertChoices().empty());
  delete_box_->setEnabled(spread_->CanDeleteBox(box));
  insert_channel_->setEnabled(box >= 0 && spread_->CanInsertChannel(box));
  delete_channel_->setEnabled(box >= 0 && spread_->CanDeleteChannel(box));
  emit chosen(box, CurrentChannel());
}

void SpreadPanel::Refuse(CGridCtrl* grid, int column, const std::string& reason) {
  is_refused_ = true;
  const QString text = grid->GetItemText(0, column) + QStringLiteral(": ") + TextFromBytes(reason);
  if (!grid->RefuseEdit(text)) {
    prompts_->ShowWarning("Orvane", BytesFromText(text));
  }
}

void SpreadPanel::OnBoxEdited(int row, int column) {
  const int box = row - kHeaderRows;
  const auto cell = static_cast<BoxColumn>(column);
  const std::string reason =
      spread_->EditBox(box, cell, BytesFromText(boxes_->GetItemText(row, column)));
  if (!reason.empty()) {
    Refuse(boxes_, column, reason);
  }
  boxes_->SetItemText(row, column, TextFromBytes(spread_->BoxCell(box, cell)));
  ShowChannels();
}

void SpreadPanel::OnChannelEdited(int row, int column) {
  const int channel = row - kHeaderRows;
  const std::string reason = spread_->EditChannel(
      CurrentBox(), channel, ColumnAt(column), BytesFromText(channels_->GetItemText(row, column)));
  if (!reason.empty()) {
    Refuse(channels_, column, reason);
  }
  channels_->SetItemText(
      row, column, TextFromBytes(spread_->ChannelCell(CurrentBox(), channel, ColumnAt(column))));
  emit changed();
}

void SpreadPanel::Insert(BoxKind kind) {
  CommitEdits();
  ShowBoxes(spread_->InsertBox(kind));
  boxes_->setFocus();
}

void SpreadPanel::OnInsertBox() {
  const auto choices = spread_->InsertChoices();
  if (choices.size() == 1) {
    Insert(choices.front().kind);
    return;
  }
  QMenu kinds(this);
  for (const Spread::InsertChoice& choice : choices) {
    kinds
        .addAction(TextFromBytes(choice.label), this, [this, kind = choice.kind] { Insert(kind); })
        ->setEnabled(choice.is_enabled);
  }
  kinds.exec(insert_box_->mapToGlobal(QPoint(0, insert_box_->height())));
}

void SpreadPanel::OnDeleteBox() {
  CommitEdits();
  const int box = CurrentBox();
  spread_->DeleteBox(box);
  ShowBoxes(box);
}

void SpreadPanel::OnInsertChannel() {
  CommitEdits();
  const int box = CurrentBox();
  spread_->InsertChannel(box, CurrentChannel() + 1);
  ShowBoxes(box);
}

void SpreadPanel::OnDeleteChannel() {
  CommitEdits();
  const int box = CurrentBox();
  spread_->DeleteChannel(box, CurrentChannel());
  ShowBoxes(box);
}

}  // namespace orvane
