// SPDX-License-Identifier: GPL-3.0-or-later
// Files that go to cards, one folder for each.
#ifndef ORVANE_FILES_CARD_COPY_H_
#define ORVANE_FILES_CARD_COPY_H_

#include <filesystem>
#include <map>
#include <string>

#include "files/batch.h"

namespace orvane {

/// Why a folder cannot take so many bytes more: it is not there, or its disk is full. Empty where
/// it can. A folder is never made: where a card is not mounted, the file would land on the
/// computer's own disk.
std::string CardFault(const std::filesystem::path& folder, std::uint64_t bytes);

/// A batch that copies each input, by its path, into the folder given for it, under its own name.
/// A copy is synced, read back from the card and compared byte by byte. The note of a copy says
/// whether it was verified, and where card and file lie on one disk.
Conversion CardConversion(std::map<std::string, std::filesystem::path> folders);

}  // namespace orvane

#endif  // ORVANE_FILES_CARD_COPY_H_
