// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_MODAL_H_
#define ORVANE_TESTS_SUPPORT_MODAL_H_

#include <QPointer>
#include <functional>
#include <vector>

#include "support/gui.h"

namespace orvane::testing {

/// Answers the windows that come up, in order, each once; returns their titles.
inline QStringList WithWindows(const std::vector<std::function<void(QWidget*)>>& acts,
                               const std::function<void()>& start) {
  QStringList titles;
  QPointer<QWidget> last;
  QObject context;  // what is still to come ends with it
  std::function<void()> look = [&] {
    // Anew each time: a timer does not fire again while its own call opens a window.
    QTimer::singleShot(5, &context, look);
    QWidget* window = QApplication::activeModalWidget();
    const auto at = static_cast<std::size_t>(titles.size());
    if (window != nullptr && window != last && at < acts.size()) {
      last = window;
      titles << window->windowTitle();
      acts[at](window);
    }
  };
  look();
  start();
  return titles;
}

/// Runs `act` on the window that opens.
inline void WithModal(const std::function<void(QWidget*)>& act,
                      const std::function<void()>& start) {
  EXPECT_EQ(WithWindows({act}, start).size(), 1) << "no window was shown";
}

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_MODAL_H_
