// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_GLANCE_CARD_H_
#define ORVANE_APP_GLANCE_CARD_H_

#include <QAbstractButton>
#include <QFormLayout>
#include <QLabel>
#include <functional>
#include <vector>

#include "editors/table_summary.h"

namespace orvane {

/// A label of what is known only at run time: as it is, in as many lines as it takes.
QLabel* NewValueLabel(QWidget* parent);

/// A framed part of the main window that opens what edits it or shows more: by a click, Return or
/// Space. Assistive tools find a button.
class GlanceCard : public QAbstractButton {
  Q_OBJECT

 public:
  GlanceCard(const QString& title, const char* name, QWidget* parent);

  /// What it opens, such as the title of a dialog.
  void SetOpens(const QString& what);
  /// What stands in the frame, in words for assistive tools.
  void SetContentText(const QString& content);
  /// Takes what stands in the frame.
  void SetContent(QLayout* content);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void PlaceContent();
  void Describe();

  QString content_;
};

/// Lines of a table at a glance.
class LinesCard : public GlanceCard {
  Q_OBJECT

 public:
  LinesCard(const QString& title, const char* name, QWidget* parent);

  /// `is_missing` tells of a line that its value is not the file's.
  void SetLines(const std::vector<SummaryLine>& lines,
                const std::function<bool(const SummaryLine&)>& is_missing);

 private:
  /// The value as it is shown.
  QString ShowLine(int row, const SummaryLine& line, bool is_missing);

  QFormLayout* form_;
};

}  // namespace orvane

#endif  // ORVANE_APP_GLANCE_CARD_H_
