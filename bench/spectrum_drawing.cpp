// SPDX-License-Identifier: GPL-3.0-or-later
#include "spectrum_drawing.h"

#include <QApplication>
#include <QMainWindow>
#include <algorithm>
#include <cstdio>

#include "median_time.h"
#include "spectra/widgets/spectrum_dock.h"
#include "timeseries/widgets/waveform_display.h"
#include "waveform_drawing.h"

namespace orvane::bench {
namespace {

void TimeRecord(const std::filesystem::path& path, int scans, double aim) {
  WriteNoise(path, scans, 2);
  TsFile::Options options;
  options.needs_companion = false;
  QMainWindow window;
  auto* display = new CWaveformDisplay(nullptr, &window);
  WaveformView& view = display->View();
  if (const Result<> opened = view.Open(path, options); !opened) {
    std::printf("%s\n", opened.Message().c_str());
    return;
  }
  window.setCentralWidget(display);
  SpectrumDock dock([&view] { return &view; }, [] { return nullptr; }, &window);
  window.addDockWidget(Qt::RightDockWidgetArea, &dock);
  window.resize(1366, 700);
  window.show();
  QApplication::processEvents();
  const auto turn = [&view] { view.Number() == 1 ? view.Next() : view.Previous(); };
  const double reading = MedianMilliseconds(turn);
  const double spectrum = MedianMilliseconds([&] {
    turn();
    dock.Follow();
    QApplication::processEvents();
  });
  std::printf(
      "spectrum of 12 noisy channels and %d scans, transformed and painted: %.1f ms (aim: under "
      "%.0f)\n",
      scans, spectrum - reading, aim);
  const double next = MedianMilliseconds([&] {
    turn();
    display->ShowView();
    dock.Follow();
    QApplication::processEvents();
  });
  std::printf("the next record of them with the spectrum open, painted: %.1f ms%s\n", next,
              scans < 65535 ? " (aim: under 16)" : "");
}

}  // namespace

void TimeSpectra(const std::filesystem::path& folder) {
  TimeRecord(folder / "short.TSS", 24000, 20);
  TimeRecord(folder / "long.TSS", 65535, 30);
}

}  // namespace orvane::bench
