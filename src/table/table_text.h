// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter table file as a text that people read; docs/formats/tbl-listing.md describes the
// form.
#ifndef ORVANE_TABLE_TABLE_TEXT_H_
#define ORVANE_TABLE_TABLE_TEXT_H_

#include "files/batch.h"

namespace orvane {

/// The listing's own numbers for a file that it cannot list.
enum TableTextCode : int {
  kListingTooShort = 3,       ///< the first 32 bytes cannot be read
  kListingNotRecognised = 6,  ///< not a parameter table
};

/// NAME.tbl becomes NAME.txt; a name without extension is read with ".tbl" after it, where there is
/// such a file. Lists the records of the file, whatever the dictionary knows of them. A cut last
/// record is noted.
Conversion TableText();

}  // namespace orvane

#endif  // ORVANE_TABLE_TABLE_TEXT_H_
