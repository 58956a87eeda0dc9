// SPDX-License-Identifier: GPL-3.0-or-later
// Records of stack results put together byte by byte, apart from the code under test.
#ifndef ORVANE_TESTS_SUPPORT_STACK_BYTES_H_
#define ORVANE_TESTS_SUPPORT_STACK_BYTES_H_

#include <string>
#include <string_view>

#include "support/tbl_bytes.h"

namespace orvane::testing {

/// The bytes of a record of 2009/06/30 14:05:00, numbers 7 and 1, flags 0x0A.
inline std::string StackBytes(std::string_view label, const std::string& extension,
                              std::size_t item_size, std::size_t item_count,
                              const std::string& items, double value26 = 0.125) {
  return std::string("\x00\x05\x0E\x1E\x06\x09\x01\x14", 8) + "????" + Little(7, 2) + "\x01\x0A" +
         "??" + Little(extension.size(), 1) + Little(item_size, 1) + Little(item_count, 1) +
         "?????" + RealBytes(value26) + Padded(label, 36) + extension + items;
}
inline std::string Extension(float value) { return std::string(16, '?') + FloatBytes(value); }

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_STACK_BYTES_H_
