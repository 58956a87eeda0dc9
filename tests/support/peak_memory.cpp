// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/peak_memory.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> given_out = 0;
std::atomic<std::size_t> most_given_out = 0;

}  // namespace

void* operator new(std::size_t size) {
  void* memory = std::malloc(size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  const std::size_t now = given_out += malloc_usable_size(memory);
  for (std::size_t most = most_given_out; most < now;) {
    most_given_out.compare_exchange_weak(most, now);
  }
  return memory;
}

void operator delete(void* memory) noexcept {
  given_out -= memory == nullptr ? 0 : malloc_usable_size(memory);
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept { operator delete(memory); }

namespace orvane::testing {

PeakMemory::PeakMemory() : before_(given_out) { most_given_out = before_; }

std::size_t PeakMemory::Bytes() const { return most_given_out - before_; }

}  // namespace orvane::testing
