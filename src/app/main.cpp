// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <string_view>

#include "app/orvane_app.h"
#include "core/file_system.h"

namespace {

constexpr const char* kUsage =
    "Usage: orvane [FILE]\n"
    "Opens a parameter table (*.tbl), a waveform (*.tss) or a calibration (*.clb, *.clc); else a\n"
    "new table.\n"
    "\n"
    "  -h, --help     print this\n"
    "      --version  print the version\n";

}  // namespace

int main(int argc, char** argv) {
  orvane::ReportSizeLimits();
  // Answered before there is a window: these need no display.
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--version") {
      std::puts("orvane " ORVANE_VERSION);
      return 0;
    }
    if (argument == "--help" || argument == "-h") {
      std::fputs(kUsage, stdout);
      return 0;
    }
  }
  orvane::COrvaneApp app(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() > 2 || arguments.value(1).startsWith(QLatin1Char('-'))) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  app.InitInstance(arguments.value(1));
  return QApplication::exec();
}
