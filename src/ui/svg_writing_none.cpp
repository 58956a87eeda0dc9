// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/vector_drawing.h"

namespace orvane {

bool CanWriteSvg() { return false; }

void WriteSvg(const QSize& /*size*/, const QString& /*title*/, QBuffer* /*buffer*/,
              const std::function<void(QPaintDevice*)>& /*draw*/) {}

}  // namespace orvane
