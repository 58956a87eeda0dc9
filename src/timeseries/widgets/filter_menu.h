// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TIMESERIES_WIDGETS_FILTER_MENU_H_
#define ORVANE_TIMESERIES_WIDGETS_FILTER_MENU_H_

#include <QMenu>

#include "timeseries/view_filter.h"

namespace orvane {

/// What is done to waveforms before they are shown, as a menu; high and low pass ask for their
/// frequency and refuse one that the sample rate does not allow.
class FilterMenu : public QMenu {
  Q_OBJECT

 public:
  /// `rate` of the record shown, in Hz.
  FilterMenu(const ViewFilter& filter, double rate, QWidget* parent);

 signals:
  void chosen(const ViewFilter& filter);

 private:
  void AddPass(const char* text, std::optional<double> ViewFilter::*corner);
  void Choose(const ViewFilter& filter);

  ViewFilter filter_;
  double rate_;
};

}  // namespace orvane

#endif  // ORVANE_TIMESERIES_WIDGETS_FILTER_MENU_H_
