// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lock_keys.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QStatusBar>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace orvane {
namespace {

struct KeyNames {
  LockKey key;
  const char* indicator;
  const char* name;
  const char* light;  // of the keyboard, as the kernel names it
};
constexpr std::array<KeyNames, 3> kKeys = {
    {{LockKey::kCaps, "CAP", "Caps Lock", "capslock"},
     {LockKey::kNum, "NUM", "Num Lock", "numlock"},
     {LockKey::kScroll, "SCRL", "Scroll Lock", "scrolllock"}}};

[[maybe_unused]] const KeyNames& NamesOf(LockKey key) {
  return kKeys[static_cast<std::size_t>(key)];
}

bool IsLockKey(int key) {
  return key == Qt::Key_CapsLock || key == Qt::Key_NumLock || key == Qt::Key_ScrollLock;
}

}  // namespace

std::optional<bool> LockKeyState(LockKey key) {
#ifdef Q_OS_WIN
  const int code =
      key == LockKey::kCaps ? VK_CAPITAL : (key == LockKey::kNum ? VK_NUMLOCK : VK_SCROLL);
  return (GetKeyState(code) & 1) != 0;
#else
  // Qt knows no lock keys; the kernel shows every keyboard's lights, whatever the display server.
  std::optional<bool> is_on;
  const QDir lights(QStringLiteral("/sys/class/leds"));
  const QStringList names =
      lights.entryList({QStringLiteral("*::") + QLatin1String(NamesOf(key).light)});
  for (const QString& name : names) {
    QFile light(lights.filePath(name + QStringLiteral("/brightness")));
    if (light.open(QIODevice::ReadOnly)) {
      is_on = is_on.value_or(false) || light.readAll().trimmed() != "0";
    }
  }
  return is_on;
#endif
}

LockIndicators::LockIndicators(QStatusBar* bar) : QObject(bar) {
  for (const KeyNames& names : kKeys) {
    auto* label = new QLabel(QString::fromLatin1(names.indicator), bar);
    label->setObjectName(QString::fromLatin1(names.indicator));
    label->setToolTip(QString::fromLatin1(names.name));
    bar->addPermanentWidget(label);
    labels_[static_cast<std::size_t>(names.key)] = label;
  }
  later_.setSingleShot(true);
  later_.setInterval(20);
  connect(&later_, &QTimer::timeout, this, &LockIndicators::Update);
  qApp->installEventFilter(this);
  Update();
}

bool LockIndicators::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowActivate ||
      (event->type() == QEvent::KeyRelease && IsLockKey(static_cast<QKeyEvent*>(event)->key()))) {
    later_.start();  // once the key has changed the light
  }
  return QObject::eventFilter(watched, event);
}

void LockIndicators::Update() {
  for (const KeyNames& names : kKeys) {
    QLabel* label = labels_[static_cast<std::size_t>(names.key)];
    const std::optional<bool> is_on = LockKeyState(names.key);
    label->setEnabled(is_on.value_or(false));
    label->setAccessibleName(QString::fromLatin1(names.name) +
                             (is_on ? (*is_on ? QStringLiteral(" on") : QStringLiteral(" off"))
                                    : QStringLiteral(" unknown")));
  }
}

}  // namespace orvane
