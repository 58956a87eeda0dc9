// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_FLOW_LAYOUT_H_
#define ORVANE_UI_FLOW_LAYOUT_H_

#include <QLayout>
#include <memory>
#include <vector>

namespace orvane {

/// Items side by side, and in further lines what has no room: a line of tools that a narrow window
/// does not cut. What wants to expand shares the rest of its line. Items can be added, not taken.
class FlowLayout : public QLayout {
 public:
  explicit FlowLayout(QWidget* parent = nullptr);

  void addItem(QLayoutItem* item) override { items_.emplace_back(item); }
  int count() const override { return static_cast<int>(items_.size()); }
  QLayoutItem* itemAt(int index) const override;
  QLayoutItem* takeAt(int index) override;
  bool hasHeightForWidth() const override { return true; }
  int heightForWidth(int width) const override;
  QSize sizeHint() const override;
  QSize minimumSize() const override;
  void setGeometry(const QRect& rect) override;

 private:
  struct Line {
    std::vector<QLayoutItem*> items;
    int width = 0;  // of all, with the gaps between them
    int height = 0;
  };
  std::vector<Line> LinesIn(int width) const;
  void Place(const Line& line, const QPoint& at, int width) const;

  std::vector<std::unique_ptr<QLayoutItem>> items_;
};

}  // namespace orvane

#endif  // ORVANE_UI_FLOW_LAYOUT_H_
