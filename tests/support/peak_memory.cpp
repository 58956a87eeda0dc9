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

// Every form but those for over-aligned types, which stay the library's own: a sanitizer's would
// not come through here.
void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  void* memory = std::malloc(size);
  if (memory == nullptr) {
    return nullptr;
  }
  const std::size_t now = given_out += malloc_usable_size(memory);
  for (std::size_t most = most_given_out; most < now;) {
    most_given_out.compare_exchange_weak(most, now);
  }
  return memory;
}
void* operator new(std::size_t size) {
  if (void* memory = operator new(size, std::nothrow)) {
    return memory;
  }
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}

void operator delete(void* memory) noexcept {
  given_out -= memory == nullptr ? 0 : malloc_usable_size(memory);
  std::free(memory);
}
void operator delete(void* memory, std::size_t /*size*/) noexcept { operator delete(memory); }
void operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
  operator delete(memory);
}
void operator delete[](void* memory) noexcept { operator delete(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { operator delete(memory); }
void operator delete[](void* memory, const std::nothrow_t& /*tag*/) noexcept {
  operator delete(memory);
}

namespace orvane::testing {

PeakMemory::PeakMemory() : before_(given_out) { most_given_out = before_; }

std::size_t PeakMemory::Bytes() const { return most_given_out - before_; }

}  // namespace orvane::testing
