// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_UI_FOLDER_LINE_H_
#define ORVANE_UI_FOLDER_LINE_H_

#include <QLineEdit>
#include <QString>
#include <QWidget>

namespace orvane {

/// A folder: typed, pasted, dropped as text or as the folder itself, or chosen.
class CFolderLine : public QWidget {
  Q_OBJECT

 public:
  /// `name` is the line's object name, `label` what assistive tools say.
  CFolderLine(const QString& label, const QString& name, QWidget* parent);

  QLineEdit* Line() const { return line_; }
  QString Text() const { return line_->text(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Choose();
  void Take(const QString& folder);

  QLineEdit* line_;
};

}  // namespace orvane

#endif  // ORVANE_UI_FOLDER_LINE_H_
