// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_TECH_H_
#define ORVANE_EDITORS_TECH_H_

#include "core/tech.h"  // IWYU pragma: export

#endif  // ORVANE_EDITORS_TECH_H_
