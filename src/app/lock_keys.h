// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_LOCK_KEYS_H_
#define ORVANE_APP_LOCK_KEYS_H_

#include <QLabel>
#include <QTimer>
#include <array>
#include <optional>

class QStatusBar;

namespace orvane {

enum class LockKey { kCaps, kNum, kScroll };

/// Whether a lock key is on; nothing where the platform does not say.
std::optional<bool> LockKeyState(LockKey key);

/// The indicators "CAP", "NUM" and "SCRL" at the right of the status bar. They follow the keys
/// whenever one of them is pressed or the window becomes active; off or unknown, they are dimmed.
class LockIndicators : public QObject {
  Q_OBJECT

 public:
  explicit LockIndicators(QStatusBar* bar);
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Update();

  std::array<QLabel*, 3> labels_{};
  QTimer later_;
};

}  // namespace orvane

#endif  // ORVANE_APP_LOCK_KEYS_H_
