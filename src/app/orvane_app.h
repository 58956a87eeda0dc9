// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_ORVANE_APP_H_
#define ORVANE_APP_ORVANE_APP_H_

#include <QApplication>
#include <memory>

#include "app/emergency_copy.h"
#include "app/main_frame.h"
#include "app/orvane_doc.h"
#include "app/qt_prompts.h"

namespace orvane {

/// The program: one document, one window, the user's settings.
class COrvaneApp : public QApplication {
  Q_OBJECT

 public:
  COrvaneApp(int& argc, char** argv);  // NOLINT: as the base class takes them

  /// Makes the document and the window: opens the file, or, without one or where that fails, a new
  /// document. Then offers what a program that is gone had not saved.
  void InitInstance(const QString& path);

  /// What a command throws is reported, and the program goes on: the table is as the command left
  /// it.
  bool notify(QObject* receiver, QEvent* event) override;

  COrvaneDoc& Document() { return *doc_; }
  CMainFrame& Frame() { return *frame_; }

 private:
  QtPrompts prompts_;
  StatusNotices notices_;
  std::unique_ptr<COrvaneDoc> doc_;
  std::unique_ptr<EmergencyCopy> emergency_copy_;
  std::unique_ptr<CMainFrame> frame_;
};

}  // namespace orvane

#endif  // ORVANE_APP_ORVANE_APP_H_
