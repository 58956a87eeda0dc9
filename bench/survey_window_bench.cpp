// SPDX-License-Identifier: GPL-3.0-or-later
// The longest step (of its own time) of the survey's window while a folder is looked through, and
// again. Prints milliseconds of one run.
//
//   orvane-survey-window-bench FOLDER
#include <sys/resource.h>
#include <time.h>

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMetaEnum>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "survey/widgets/survey_window.h"
#include "ui/qt_path.h"

namespace {

// Takes the time of each event that is handed out from the loop, with all that follows from it.
class TimedApp : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    if (depth_++ > 0) {
      const bool result = QApplication::notify(receiver, event);
      --depth_;
      return result;
    }
    const int type = event->type();
    const QByteArray name = receiver->metaObject()->className();
    const double start = Now();
    const bool result = QApplication::notify(receiver, event);
    const double taken = Now() - start;
    --depth_;
    if (taken > longest_) {
      longest_ = taken;
      what_ = QByteArray(QMetaEnum::fromType<QEvent::Type>().valueToKey(type)) + " of " + name;
    }
    return result;
  }

  void Tell(const char* of) {
    std::printf("%-12s longest step %6.1f ms (%s)\n", of, longest_, what_.constData());
    std::fflush(stdout);
    longest_ = 0;
  }

 private:
  // Milliseconds that this thread alone had a processor: others may be at work.
  static double Now() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  }

  int depth_ = 0;
  double longest_ = 0;
  QByteArray what_;
};

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
  }
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toUtf8());
  qputenv("XDG_CACHE_HOME", settings.path().toUtf8());
  TimedApp app(argc, argv);
  orvane::CSurveyWindow window(nullptr);
  window.show();
  const auto wait = [&] {
    while (window.IsScanning()) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
    }
    for (int i = 0; i < 20; ++i) {
      QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
  };
  QApplication::processEvents();
  window.Open(orvane::PathFromText(QString::fromLocal8Bit(argc > 1 ? argv[1] : ".")));
  wait();
  app.Tell("first");
  QMetaObject::invokeMethod(window.findChild<QWidget*>(QStringLiteral("survey-again")), "click");
  wait();
  app.Tell("again");
  auto* filter = window.findChild<QLineEdit*>(QStringLiteral("survey-filter"));
  QTimer::singleShot(0, filter, [filter] { filter->setText(QStringLiteral("1")); });
  wait();
  app.Tell("filter");
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  std::printf("%zu rows, %ld MB\n", window.Model().List().Rows().size(), usage.ru_maxrss / 1024);
  return 0;
}
