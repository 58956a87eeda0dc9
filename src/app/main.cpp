// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdio>
#include <string_view>

#ifdef _WIN32
#include <windows.h>

#include <io.h>
#endif

#include "app/file_type.h"
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

// A program with windows has no console of its own on Windows: where its output goes nowhere, it
// goes to that of whoever started it. Only to print and end: who has a console ends with it.
void UseConsoleOfCaller() {
#ifdef _WIN32
  if (_get_osfhandle(_fileno(stdout)) < 0 && AttachConsole(ATTACH_PARENT_PROCESS) != 0) {
    std::freopen("CONOUT$", "w", stdout);
    std::freopen("CONOUT$", "w", stderr);
  }
#endif
}

}  // namespace

int main(int argc, char** argv) {
  orvane::ReportSizeLimits();
  // Answered before there is a window: these need no display.
  for (int i = 1; i < argc; ++i) {
    const std::string_view argument = argv[i];
    if (argument == "--version") {
      UseConsoleOfCaller();
      std::puts("orvane " ORVANE_VERSION);
      return 0;
    }
    if (argument == "--help" || argument == "-h") {
      UseConsoleOfCaller();
      std::fputs(kUsage, stdout);
      return 0;
    }
  }
  orvane::COrvaneApp app(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() > 2 || arguments.value(1).startsWith(QLatin1Char('-'))) {
    UseConsoleOfCaller();
    std::fputs(kUsage, stderr);
    return 2;
  }
  orvane::RegisterFileType();
  app.InitInstance(arguments.value(1));
  return QApplication::exec();
}
