// SPDX-License-Identifier: GPL-3.0-or-later
#include "waveform_drawing.h"

#include <qcustomplot.h>

#include <QApplication>
#include <algorithm>
#include <cstdio>
#include <iterator>
#include <random>
#include <vector>

#include "files/file_io.h"
#include "median_time.h"
#include "timeseries/widgets/waveform_plot.h"
#include "ui/themes.h"

namespace orvane::bench {
namespace {

constexpr int kChannels = 12;
constexpr int kScans = 65535;
constexpr double kScale = 2;  // of the screen
constexpr QSize kSize(960, 600);

double DrawingTime(QCustomPlot* plot) {
  plot->setBufferDevicePixelRatio(kScale);
  return MedianMilliseconds([plot] { plot->replot(QCustomPlot::rpImmediateRefresh); });
}

// The plotting library by itself: as many strips of as many points, in the thinnest lines.
double PlainTime() {
  QCustomPlot plot;
  plot.resize(kSize);
  plot.setNotAntialiasedElements(QCP::aeAll);
  plot.plotLayout()->clear();
  std::mt19937 random(1);
  for (int strip = 0; strip < kChannels; ++strip) {
    auto* axes = new QCPAxisRect(&plot);
    axes->setMinimumSize(50, 24);
    plot.plotLayout()->addElement(strip, 0, axes);
    QCPGraph* graph = plot.addGraph(axes->axis(QCPAxis::atBottom), axes->axis(QCPAxis::atLeft));
    for (int scan = 0; scan < kScans; ++scan) {
      graph->addData(scan, static_cast<double>(random()));
    }
    graph->rescaleAxes();
  }
  plot.show();
  return DrawingTime(&plot);
}

double OurTime(WaveformView* view, Theme theme, double* whole) {
  ApplyTheme(theme);
  TraceArrangement traces;
  WaveformPlot plot(view, &traces, nullptr);
  plot.resize(kSize);
  plot.show();
  QApplication::processEvents();
  const double drawing = DrawingTime(plot.Plot());
  *whole = MedianMilliseconds([&plot] {
    plot.ShowView();
    QApplication::processEvents();
  });
  return drawing;
}

}  // namespace

void WriteNoise(const std::filesystem::path& path, int scans, int records) {
  TsHeader header;
  header.scans = static_cast<std::uint16_t>(scans);
  header.channels = std::uint8_t{kChannels};
  header.sample_width = 3;
  header.rate = std::uint16_t{24};
  header.rate_unit = -2;
  const auto head = BytesOf(header);
  std::vector<std::byte> bytes;
  std::mt19937 random(1);
  for (int record = 0; record < records; ++record) {
    bytes.insert(bytes.end(), head.begin(), head.end());
    std::generate_n(std::back_inserter(bytes), std::size_t(scans) * kChannels * 3,
                    [&random] { return static_cast<std::byte>(random()); });
  }
  static_cast<void>(WriteFile(path, bytes));
}

void TimeWaveforms(const std::filesystem::path& folder) {
  WriteNoise(folder / "noise.TSS", kScans, 1);
  WaveformView view;
  TsFile::Options options;
  options.needs_companion = false;
  if (const Result<> opened = view.Open(folder / "noise.TSS", options); !opened) {
    std::printf("noise.TSS: %s\n", opened.Message().c_str());
    return;
  }
  const double plain = PlainTime();
  for (const auto& [theme, name] :
       {std::pair(Theme::kLight, "light"), {Theme::kSunlight, "sunlight"}}) {
    double whole = 0;
    const double ours = OurTime(&view, theme, &whole);
    std::printf(
        "waveform of 12 noisy channels and 65535 scans at 200 %%, theme %s: %.1f ms, with choosing "
        "the lines %.1f ms; the plotting library's thinnest lines %.1f ms, ratio %.2f (aim: at "
        "most 2)\n",
        name, ours, whole, plain, ours / plain);
  }
  ApplyTheme(Theme::kSystem);
}

}  // namespace orvane::bench
