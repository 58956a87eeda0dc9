// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_NOTICE_LABEL_H_
#define ORVANE_APP_NOTICE_LABEL_H_

#include <QLabel>

namespace orvane {

/// A line that leaves out its middle where it is too long: of "PATH: reason" the reason stays to be
/// seen. Of a text of several lines only the first is shown. The tool tip and assistive tools have
/// the whole text.
class NoticeLabel : public QLabel {
  Q_OBJECT

 public:
  explicit NoticeLabel(const QString& text, QWidget* parent);

  void ShowNotice(const QString& text);
  QSize sizeHint() const override { return {QLabel::sizeHint().width(), fontMetrics().height()}; }
  QSize minimumSizeHint() const override { return {0, fontMetrics().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace orvane

#endif  // ORVANE_APP_NOTICE_LABEL_H_
