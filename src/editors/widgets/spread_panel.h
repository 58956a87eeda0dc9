// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_SPREAD_PANEL_H_
#define ORVANE_EDITORS_WIDGETS_SPREAD_PANEL_H_

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "editors/spread.h"
#include "forms/prompts.h"
#include "ui/grid_ctrl.h"

namespace orvane {

/// The boxes of a spread above the channels of the box chosen, with buttons to add and remove both.
class SpreadPanel : public QWidget {
  Q_OBJECT

 public:
  enum Control : int { kBoxes = 1151, kChannels = 1152 };

  /// Both must outlive the panel.
  SpreadPanel(Spread* spread, Prompts* prompts, QWidget* parent);

  /// The row of the box whose channels are shown, from 0.
  int CurrentBox() const;
  /// The row of the channel with the focus cell, from 0.
  int CurrentChannel() const;
  /// Takes over a cell that is being edited. False where its text was refused.
  bool CommitEdits();
  void ShowChannels();
  /// Puts the focus cells on a channel; both count from 0.
  void Choose(int box, int channel);
  /// Brings the focus to the channel's cell that is kept under a key. False where there is none.
  bool GoTo(ParamKey key);

 signals:
  /// What the spread holds may have changed.
  void changed();
  /// The focus cells are on another channel.
  void chosen(int box, int channel);

 private:
  void CreateGrids();
  void LayOut();
  QPushButton* NewButton(const QString& text, const char* name, void (SpreadPanel::*act)());
  void ShowBoxes(int focus_box);
  void ShowBoxTips();
  void ShowChannelTips(int box);
  void UpdateButtons();
  void Refuse(CGridCtrl* grid, int column, const std::string& reason);
  void OnBoxEdited(int row, int column);
  void OnChannelEdited(int row, int column);
  void OnInsertBox();
  void OnDeleteBox();
  void OnInsertChannel();
  void OnDeleteChannel();
  void Insert(BoxKind kind);

  Spread* spread_;
  Prompts* prompts_;
  CGridCtrl* boxes_ = nullptr;
  CGridCtrl* channels_ = nullptr;
  QLabel* channels_title_ = nullptr;
  QPushButton* insert_box_ = nullptr;
  QPushButton* delete_box_ = nullptr;
  QPushButton* insert_channel_ = nullptr;
  QPushButton* delete_channel_ = nullptr;
  bool is_refused_ = false;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_SPREAD_PANEL_H_
