// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_START_PANEL_H_
#define ORVANE_APP_START_PANEL_H_

#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <vector>

namespace orvane {

/// What to begin with where no file is open: a table to open, a new one, the last files.
class StartPanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit StartPanel(QWidget* parent);

  /// The last files, newest first.
  void SetRecent(const QStringList& paths);

 signals:
  void openWanted();
  void newWanted();
  void fileWanted(const QString& path);

 private:
  QPushButton* NewButton(const QString& text, const char* name, const QString& tip);

  QVBoxLayout* layout_;
  QVBoxLayout* recent_;
};

}  // namespace orvane

#endif  // ORVANE_APP_START_PANEL_H_
