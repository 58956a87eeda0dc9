// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/glance_commands.h"

#include "check/map_marks.h"
#include "editors/acq_fields.h"
#include "table/tech.h"
#include "ui/byte_text.h"

namespace orvane {
namespace {

using Part = COrvaneView::Part;

void ShowDock(QDockWidget* dock) {
  dock->show();
  dock->raise();
  dock->setFocus();
}

// MT/AMT has its times in the acquisition parameters and no boxes but one, whose serial number is
// in no dialog; the others have both the other way round.
void Open(Part part, const GlanceTargets& targets) {
  const Tech method = TechOf(targets.doc->Table());
  switch (part) {
    case Part::kMethod:
    case Part::kGains:
    case Part::kTimeline:
      return targets.editors->EditAcquisition();
    case Part::kTimes:
      return method == kMtAmt ? targets.editors->EditAcquisition()
                              : targets.editors->EditRaw("STIM");
    case Part::kBoxes:
      return IsKnown(method) && method != kMtAmt ? targets.editors->EditSite()
                                                 : targets.editors->EditRaw("SNUM");
    case Part::kSurvey:
      return IsKnown(method) ? targets.editors->EditSite() : targets.editors->EditRaw("SRVY1");
    case Part::kCheck:
      return ShowDock(targets.check);
    case Part::kMap:
      return ShowDock(targets.map);
  }
}

// Says the same as `Open()` does.
void NameTargets(COrvaneView* view, Tech method) {
  const QString acquisition = TextFromBytes(acq::kTitle);
  const QString raw = QStringLiteral("Raw Parameters");
  const QString site = QStringLiteral("Site Setup");
  const bool has_spread = IsKnown(method) && method != kMtAmt;
  for (const auto& [part, what] : {std::pair(Part::kMethod, acquisition),
                                   {Part::kGains, acquisition},
                                   {Part::kTimeline, acquisition},
                                   {Part::kTimes, method == kMtAmt ? acquisition : raw},
                                   {Part::kBoxes, has_spread ? site : raw},
                                   {Part::kSurvey, IsKnown(method) ? site : raw},
                                   {Part::kCheck, QStringLiteral("Morning Check (F7)")},
                                   {Part::kMap, QStringLiteral("Map (Ctrl+Shift+M)")}}) {
    view->SetOpens(part, what);
  }
}

void ShowFound(COrvaneView* view, const GlanceTargets& targets) {
  ParamTable copy = targets.doc->Table();  // a spread works on a table that it may change
  const auto marks = MarksOf(targets.check->TableFindings(), Spread(&copy));
  view->SetFindings(targets.check->CountText(), targets.check->Findings(), marks);
  targets.map->View()->SetMarked(marks);
}

}  // namespace

void ConnectGlance(COrvaneView* view, const GlanceTargets& targets) {
  const auto name = [view, doc = targets.doc] { NameTargets(view, TechOf(doc->Table())); };
  const auto show = [view, targets] { ShowFound(view, targets); };
  QObject::connect(view, &COrvaneView::opened, view, [targets](Part part) { Open(part, targets); });
  QObject::connect(targets.doc, &COrvaneDoc::changed, view, name);
  QObject::connect(targets.check, &CheckDock::found, view, show);
  name();
  show();
}

}  // namespace orvane
