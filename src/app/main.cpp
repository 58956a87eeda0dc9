// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#ifdef _WIN32
#include <windows.h>

#include <io.h>
#endif

#include "app/file_type.h"
#include "app/orvane_app.h"
#include "files/file_system.h"

namespace {

constexpr const char* kUsage =
    "Usage: orvane [FILE]\n"
    "Opens a parameter table (*.tbl), a waveform (*.tss), a calibration (*.clb, *.clc) or the "
    "folder\n"
    "of a survey; else a new table.\n"
    "\n"
    "  -h, --help     print this\n"
    "      --version  print the version\n";

// Arguments that Qt takes for itself; those with a value that follows, and those without.
constexpr std::array<std::string_view, 17> kWithValue = {
    "platform",   "platformpluginpath", "platformtheme", "plugin",       "qwindowgeometry",
    "geometry",   "qwindowicon",        "icon",          "qwindowtitle", "title",
    "style",      "stylesheet",         "session",       "display",      "name",
    "fontengine", "qmljsdebugger"};
constexpr std::array<std::string_view, 5> kWithout = {"reverse", "nograb", "dograb", "sync",
                                                      "widgetcount"};

template <std::size_t count>
bool IsOneOf(const std::array<std::string_view, count>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

// Looked at before there is a window: a message of wrong usage needs no display.
bool IsUsageRight(int argc, char** argv) {
  int files = 0;
  for (int i = 1; i < argc; ++i) {
    std::string_view argument = argv[i];
    if (!argument.starts_with('-')) {
      ++files;
      continue;
    }
    argument.remove_prefix(argument.starts_with("--") ? 2 : 1);
    const std::size_t equals = argument.find('=');
    const bool has_value = IsOneOf(kWithValue, argument.substr(0, equals));
    if (!has_value && !IsOneOf(kWithout, argument)) {
      return false;
    }
    i += has_value && equals == std::string_view::npos ? 1 : 0;
  }
  return files <= 1;
}

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
  if (!IsUsageRight(argc, argv)) {
    UseConsoleOfCaller();
    std::fputs(kUsage, stderr);
    return 2;
  }
  orvane::COrvaneApp app(argc, argv);
  orvane::RegisterFileType();
  app.InitInstance(QApplication::arguments().value(1));
  return QApplication::exec();
}
