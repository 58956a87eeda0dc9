// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/trace_commands.h"

#include "ui/byte_text.h"

namespace orvane {
namespace {

constexpr double kZoomStep = 1.5;
constexpr double kPanStep = 0.1;  // of what is visible

}  // namespace

TraceCommands::TraceCommands(const WaveformView* view, TraceArrangement* traces, CDisplay* display)
    : QObject(display), view_(view), traces_(traces), display_(display) {
  menu_ = display->AddButton("Channels...", "channels", "Hide, show and enlarge channels",
                             Qt::Key_N, [this] { ShowMenu(); });
  hide_ = Add("Hide", "hide", "Hide the selected channel", Qt::Key_H, &TraceCommands::HideSelected);
  enlarge_ = Add("Enlarge", "enlarge", "Make the selected channel higher than the others",
                 Qt::Key_E, &TraceCommands::EnlargeSelected);
  Add("Even Heights", "even-heights", "All channels equally high", Qt::SHIFT | Qt::Key_E,
      &TraceCommands::EvenHeights);
  Add("Show All", "show-all", "No channel hidden", Qt::SHIFT | Qt::Key_H, &TraceCommands::ShowAll);
  Add("Select next", "select-next", "The channel below; with the mouse: click it", Qt::Key_Period,
      &TraceCommands::SelectNext);
  Add("Select previous", "select-previous", "The channel above", Qt::Key_Comma,
      &TraceCommands::SelectPrevious);
  Add("Taller alone", "taller-alone",
      "The selected channel larger; with the mouse: Shift and wheel", Qt::ALT | Qt::Key_Up,
      &TraceCommands::ZoomIn);
  Add("Flatter alone", "flatter-alone", "The selected channel smaller", Qt::ALT | Qt::Key_Down,
      &TraceCommands::ZoomOut);
  Add("Up alone", "up-alone", "The selected channel up; with the mouse: drag with Ctrl and Shift",
      Qt::ALT | Qt::SHIFT | Qt::Key_Up, &TraceCommands::PanUp);
  Add("Down alone", "down-alone", "The selected channel down", Qt::ALT | Qt::SHIFT | Qt::Key_Down,
      &TraceCommands::PanDown);
}

QAction* TraceCommands::Add(const char* text, const char* name, const char* tip,
                            const QKeySequence& key, void (TraceCommands::*act)()) {
  QAction* action = display_->AddKey(text, name, tip, key, [this, act] { (this->*act)(); });
  CDisplay::PutIntoMenu(action, QStringLiteral("Selected Channel"));
  return action;
}

QString TraceCommands::Name(std::size_t trace) const {
  return TextFromBytes(view_->Channel(trace).name);
}

void TraceCommands::Follow() {
  const std::size_t selected = traces_->Selected();
  const bool is_there = selected < view_->TraceCount();
  const QString name = is_there ? QLatin1Char(' ') + Name(selected) : QString();
  hide_->setText(QStringLiteral("Hide") + name);
  enlarge_->setText((traces_->Enlarged() == selected ? QStringLiteral("Do Not Enlarge")
                                                     : QStringLiteral("Enlarge")) +
                    name);
}

void TraceCommands::ShowMenu() {
  QMenu menu(QStringLiteral("Channels"), display_);
  menu.setObjectName(QStringLiteral("channel-menu"));
  menu.setAccessibleName(menu.title());
  FillMenu(&menu);
  menu.exec(display_->PlaceBelow(menu_));
}

void TraceCommands::FillMenu(QMenu* menu) {
  for (std::size_t trace = 0; trace < view_->TraceCount(); ++trace) {
    QAction* shown = menu->addAction(Name(trace));
    shown->setCheckable(true);
    shown->setChecked(!traces_->IsHidden(trace));
    shown->setEnabled(!traces_->IsLastShown(trace, view_->TraceCount()));
    connect(shown, &QAction::triggered, this,
            [this, trace](bool is_shown) { Hide(trace, !is_shown); });
  }
  menu->addSeparator();
  menu->addAction(QStringLiteral("Show All"), this, &TraceCommands::ShowAll);
  QMenu* enlarge = menu->addMenu(QStringLiteral("Enlarge"));
  for (const std::size_t trace : traces_->Shown(view_->TraceCount())) {
    QAction* enlarged = enlarge->addAction(Name(trace), this, [this, trace] {
      traces_->Enlarge(trace);
      traces_->Select(trace);
      emit changed();
    });
    enlarged->setCheckable(true);
    enlarged->setChecked(traces_->Enlarged() == trace);
  }
  menu->addAction(QStringLiteral("Even Heights"), this, &TraceCommands::EvenHeights);
}

// One channel always stays.
void TraceCommands::Hide(std::size_t trace, bool is_hidden) {
  if (trace >= view_->TraceCount()) {
    return;
  }
  const bool stays = is_hidden && traces_->IsLastShown(trace, view_->TraceCount());
  if (!stays) {
    traces_->SetHidden(trace, is_hidden);
    if (is_hidden && traces_->Selected() == trace) {
      traces_->SelectBeside(1, view_->TraceCount());
    }
    emit changed();
  }
  emit told((stays       ? QStringLiteral("%1 is the only channel shown")
             : is_hidden ? QStringLiteral("%1 is hidden; Shift+H shows all channels")
                         : QStringLiteral("%1 is shown"))
                .arg(Name(trace)));
}

void TraceCommands::EnlargeSelected() {
  const std::size_t selected = traces_->Selected();
  if (selected < view_->TraceCount()) {
    traces_->Enlarge(traces_->Enlarged() == selected ? std::optional<std::size_t>() : selected);
    emit changed();
  }
}

void TraceCommands::EvenHeights() {
  traces_->Enlarge({});
  emit changed();
}

void TraceCommands::ShowAll() {
  traces_->ShowAll();
  emit changed();
}

void TraceCommands::Select(int by) {
  traces_->SelectBeside(by, view_->TraceCount());
  emit changed();
  if (traces_->Selected() < view_->TraceCount()) {
    emit told(QStringLiteral("%1 is selected").arg(Name(traces_->Selected())));
  }
}

void TraceCommands::Zoom(double factor) {
  traces_->Zoom(traces_->Selected(), factor);
  emit changed();
}

void TraceCommands::ZoomIn() { Zoom(kZoomStep); }
void TraceCommands::ZoomOut() { Zoom(1 / kZoomStep); }

void TraceCommands::Pan(double share) {
  traces_->Pan(traces_->Selected(), share);
  emit changed();
}

void TraceCommands::PanUp() { Pan(kPanStep); }
void TraceCommands::PanDown() { Pan(-kPanStep); }

}  // namespace orvane
