// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_APP_GLANCE_COMMANDS_H_
#define ORVANE_APP_GLANCE_COMMANDS_H_

#include "app/editor_commands.h"
#include "app/orvane_view.h"
#include "check/widgets/check_dock.h"
#include "editors/widgets/map_dock.h"

namespace orvane {

/// What the cards of the main window open: dialogs by the table's method, and the docks.
struct GlanceTargets {
  COrvaneDoc* doc;
  EditorCommands* editors;
  CheckDock* check;
  MapDock* map;
};

/// Connects them, and shows what the check finds in both. All must outlive the view.
void ConnectGlance(COrvaneView* view, const GlanceTargets& targets);

}  // namespace orvane

#endif  // ORVANE_APP_GLANCE_COMMANDS_H_
