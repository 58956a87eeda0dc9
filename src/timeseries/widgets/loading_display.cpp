// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/loading_display.h"

#include <QVBoxLayout>

#include "ui/qt_path.h"

namespace orvane {

CLoadingDisplay::CLoadingDisplay(std::unique_ptr<TsLoading> loading, QWidget* parent)
    : CDisplay(QStringLiteral("Reading a waveform"), parent),
      strip_(new LoadingStrip(this)),
      title_(TextFromPath(loading->Path().filename())) {
  setObjectName(QStringLiteral("loading-display"));
  setFocusPolicy(Qt::StrongFocus);
  setFocusProxy(strip_->CancelButton());
  Bar()->hide();
  AddKey("Cancel", "cancel", "Stop reading", Qt::Key_Escape, [this] { strip_->Cancel(); });
  auto* place = dynamic_cast<QVBoxLayout*>(layout());
  place->addWidget(strip_);
  place->addStretch();
  strip_->Follow(std::move(loading));
}

}  // namespace orvane
