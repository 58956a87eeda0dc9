// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/archive/archive.h"
#include "support.h"

namespace orvane::fuzz {

void FuzzArchive(Bytes input) {
  const QByteArray bytes(reinterpret_cast<const char*>(input.data()),
                         static_cast<qsizetype>(input.size()));
  std::string reason;
  const auto object = calobj::FromBytes(bytes, &reason);
  Require((object == nullptr) == !reason.empty(), "an object is read or refused with a reason");
  Require(object == nullptr || calobj::ToBytes(*object) == bytes,
          "an object is stored as it was loaded");
}

}  // namespace orvane::fuzz
