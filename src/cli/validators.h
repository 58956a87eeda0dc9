// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_CLI_VALIDATORS_H_
#define ORVANE_CLI_VALIDATORS_H_

#include <CLI/CLI.hpp>
#include <string>

#include "base/number_text.h"

namespace orvane {

/// A finite decimal number of at least 0, whatever the locale.
inline CLI::Validator Amount() {
  return {[](const std::string& text) {
            const bool has_comma = text.find(',') != std::string::npos;
            return ParseReal(text).value_or(-1) >= 0
                       ? std::string()
                       : std::string("\"")
                             .append(text)
                             .append("\" is not a number from 0 on")
                             .append(has_comma ? "; decimals follow a point" : "");
          },
          "", "amount"};
}

/// The same, whole and within 32 bits.
inline CLI::Validator WholeAmount() {
  return {[](const std::string& text) {
            return ParseInt(text).value_or(-1) >= 0
                       ? std::string()
                       : "\"" + text + "\" is not a whole number from 0 on";
          },
          "", "whole amount"};
}

}  // namespace orvane

#endif  // ORVANE_CLI_VALIDATORS_H_
