// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_KEY_TIPS_H_
#define ORVANE_APP_KEY_TIPS_H_

#include "table/param_table.h"

namespace orvane {

/// Lets the fields of all dialogs say in tool tips what they mean. `table`: whose write permissions
/// they tell; it must outlive the windows.
void ShowKeyTips(const ParamTable* table);

}  // namespace orvane

#endif  // ORVANE_APP_KEY_TIPS_H_
