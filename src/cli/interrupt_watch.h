// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CLI_INTERRUPT_WATCH_H_
#define ORVANE_CLI_INTERRUPT_WATCH_H_

namespace orvane {

/// While it lives an interrupt is only taken note of, so that what is being written is finished or
/// left out, but never left half done; a second one ends the program, and so does the first while a
/// pipe is waited for. Signals that were ignored stay so.
class InterruptWatch {
 public:
  InterruptWatch();
  InterruptWatch(const InterruptWatch&) = delete;
  InterruptWatch& operator=(const InterruptWatch&) = delete;
  ~InterruptWatch();

  static bool IsInterrupted();
  /// At the program's end: where it was interrupted, by that very signal.
  static void EndIfInterrupted();
};

}  // namespace orvane

#endif  // ORVANE_CLI_INTERRUPT_WATCH_H_
