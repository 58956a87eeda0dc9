// SPDX-License-Identifier: GPL-3.0-or-later
#include "survey/widgets/trace_pictures.h"

#include <QApplication>
#include <QPainter>
#include <algorithm>

#include "timeseries/trace_outline.h"
#include "ui/plot_theme.h"

namespace orvane {
namespace {

constexpr int kMostPictures = 2000;
constexpr int kMostAsked = 200;  // the list asks again for what is still in view

}  // namespace

TracePictures::TracePictures(QObject* parent) : QObject(parent), stop_(std::make_shared<Stop>()) {
  pool_.setMaxThreadCount(1);
}

TracePictures::~TracePictures() {
  stop_->is_set = true;
  pool_.clear();
  pool_.waitForDone();
}

void TracePictures::Clear() {
  stop_->is_set = true;
  stop_ = std::make_shared<Stop>();
  pool_.clear();
  pictures_.clear();
  asked_.clear();
}

QPixmap TracePictures::Of(std::size_t row, const std::filesystem::path& file) {
  if (const auto found = pictures_.constFind(row); found != pictures_.constEnd()) {
    return *found;
  }
  if (!asked_.contains(row) && asked_.size() < kMostAsked) {
    asked_.insert(row);
    pool_.start([this, row, file, stop = stop_] {
      if (stop->is_set) {
        return;
      }
      const TraceOutline outline =
          OutlineOfFirstRecord(file, static_cast<std::size_t>(Size().width()));
      QMetaObject::invokeMethod(
          this,
          [this, row, outline, stop] {
            if (!stop->is_set) {
              Take(row, outline.least, outline.most);
            }
          },
          Qt::QueuedConnection);
    });
  }
  return {};
}

void TracePictures::Take(std::size_t row, const std::vector<double>& least,
                         const std::vector<double>& most) {
  if (pictures_.size() >= kMostPictures) {
    pictures_.clear();
  }
  const double scale = qApp->devicePixelRatio();
  QPixmap picture(Size() * scale);
  picture.setDevicePixelRatio(scale);
  picture.fill(Qt::transparent);
  if (!least.empty()) {
    const double low = *std::min_element(least.begin(), least.end());
    const double high = *std::max_element(most.begin(), most.end());
    const double span = std::max(high - low, 1.0);
    const double height = Size().height() - 2;
    QPainter painter(&picture);
    painter.setPen(QPen(TraceColor(0, QApplication::palette()), 1));
    for (std::size_t x = 0; x < least.size(); ++x) {
      const auto y = [&](double value) { return 1 + height * (high - value) / span; };
      painter.drawLine(QPointF(static_cast<double>(x) + 0.5, y(most[x])),
                       QPointF(static_cast<double>(x) + 0.5, y(least[x]) + 0.5));
    }
  }
  asked_.remove(row);
  pictures_.insert(row, picture);
  emit came(row);
}

}  // namespace orvane
