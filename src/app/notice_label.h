// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_NOTICE_LABEL_H_
#define ORVANE_APP_NOTICE_LABEL_H_

#include <QLabel>

namespace orvane {

/// A line that leaves out its middle where it is too long: of "PATH: reason" the reason stays to be
/// seen. The tool tip and assistive tools have the whole text.
class NoticeLabel : public QLabel {
  Q_OBJECT

 public:
  explicit NoticeLabel(const QString& text, QWidget* parent);

  void ShowNotice(const QString& text);

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace orvane

#endif  // ORVANE_APP_NOTICE_LABEL_H_
