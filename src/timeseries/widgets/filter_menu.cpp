// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/widgets/filter_menu.h"

#include <QInputDialog>
#include <QMessageBox>

#include "ui/byte_text.h"

namespace orvane {
namespace {

constexpr double kFirstCorner = 10;  // Hz, proposed
constexpr int kDecimals = 4;

}  // namespace

FilterMenu::FilterMenu(const ViewFilter& filter, double rate, QWidget* parent)
    : QMenu(parent), filter_(filter), rate_(rate) {
  setObjectName(QStringLiteral("filters"));
  QAction* trend = addAction(QStringLiteral("Remove &Mean And Trend"), this, [this] {
    ViewFilter next = filter_;
    next.removes_trend = !next.removes_trend;
    Choose(next);
  });
  trend->setCheckable(true);
  trend->setChecked(filter.removes_trend);
  AddPass("&High Pass", &ViewFilter::high_pass);
  AddPass("&Low Pass", &ViewFilter::low_pass);
  for (const int mains : {50, 60}) {
    QAction* notch = addAction(QStringLiteral("Without Mains, &%1 Hz").arg(mains), this, [=, this] {
      ViewFilter next = filter_;
      next.mains = next.mains == mains ? std::nullopt : std::optional<double>(mains);
      Choose(next);
    });
    notch->setCheckable(true);
    notch->setChecked(filter.mains == mains);
  }
  addSeparator();
  QAction* none = addAction(QStringLiteral("&No Filters"), this, [this] { Choose(ViewFilter()); });
  none->setEnabled(!filter.IsOff());
}

void FilterMenu::AddPass(const char* text, std::optional<double> ViewFilter::*corner) {
  const QString name = QString::fromLatin1(text);
  const auto act = [this, corner, title = QString(name).remove(QLatin1Char('&'))] {
    ViewFilter next = filter_;
    bool is_wanted = false;
    if (filter_.*corner) {
      next.*corner = std::nullopt;
    } else {
      next.*corner =
          QInputDialog::getDouble(parentWidget(), title, QStringLiteral("Frequency (Hz)"),
                                  kFirstCorner, 0, rate_ / 2, kDecimals, &is_wanted);
    }
    if (is_wanted || !(next.*corner)) {
      Choose(next);
    }
  };
  QAction* action = addAction(name + QStringLiteral("..."), this, act);
  action->setCheckable(true);
  action->setChecked((filter_.*corner).has_value());
}

void FilterMenu::Choose(const ViewFilter& filter) {
  const Result<> fits = filter.Check(rate_);
  if (!fits) {
    QMessageBox::warning(parentWidget(), QStringLiteral("Orvane"), TextFromBytes(fits.Message()));
    return;
  }
  emit chosen(filter);
}

}  // namespace orvane
