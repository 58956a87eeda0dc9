// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/interrupt_watch.h"

#include <csignal>

#include "cli/terminal.h"
#include "files/file_system.h"

namespace orvane {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void Interrupt(int signal) {
  if (interrupted != 0) {  // asked again: at once
    std::signal(signal, SIG_DFL);
    std::raise(signal);
  }
  interrupted = signal;
}

void Handle(void (*handler)(int)) {
  for (const int signal : EndingSignals()) {
    if (std::signal(signal, handler) == SIG_IGN) {
      std::signal(signal, SIG_IGN);
    }
  }
}

}  // namespace

InterruptWatch::InterruptWatch() {
  WriterCalls().gives_up = IsInterrupted;
  Handle(Interrupt);
}
InterruptWatch::~InterruptWatch() { Handle(SIG_DFL); }
bool InterruptWatch::IsInterrupted() { return interrupted != 0; }
void InterruptWatch::EndIfInterrupted() {
  if (interrupted != 0) {
    EndBySignal(interrupted);
  }
}

}  // namespace orvane
