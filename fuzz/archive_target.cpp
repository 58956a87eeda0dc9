// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/archive/archive.h"
#include "support.h"

namespace orvane::fuzz {

void FuzzArchive(Bytes input) {
  const QByteArray bytes(reinterpret_cast<const char*>(input.data()),
                         static_cast<qsizetype>(input.size()));
  const auto object = calobj::FromBytes(bytes);
  Require(!object || calobj::ToBytes(**object) == bytes, "an object is stored as it was loaded");
}

}  // namespace orvane::fuzz
