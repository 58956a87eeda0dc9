// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_RAW_SWITCHES_H_
#define ORVANE_EDITORS_WIDGETS_RAW_SWITCHES_H_

#include <QCheckBox>
#include <QLabel>
#include <QWidget>
#include <map>

#include "editors/raw_table.h"

namespace orvane {

/// The switches that leave over some rows of the raw parameters, and how many are left.
class RawSwitches : public QWidget {
  Q_OBJECT

 public:
  /// Without a file there is nothing to have changed since; without meanings no dialog is known.
  RawSwitches(bool has_file, bool has_meanings, QWidget* parent);

  /// The bits of `RawSwitch` that are on.
  unsigned On() const;
  void SwitchAllOff();
  void ShowCount(int shown, int all);

 signals:
  void changed();

 private:
  void LayOut();
  QCheckBox* Add(RawSwitch what, const QString& text, const QString& tip);

  std::map<RawSwitch, QCheckBox*> boxes_;
  QLabel* count_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_RAW_SWITCHES_H_
