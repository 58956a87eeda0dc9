// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/path_text.h"

namespace orvane {

std::string PathText(const std::filesystem::path& path) { return path.native(); }

std::filesystem::path PathOf(std::string_view text) { return text; }

}  // namespace orvane
