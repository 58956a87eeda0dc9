// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer's entry; ORVANE_FUZZ_TARGET is the function that this program runs.
#include <cstddef>
#include <cstdint>

#include "targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orvane::fuzz::ORVANE_FUZZ_TARGET(std::as_bytes(std::span(data, size)));
  return 0;
}
