// SPDX-License-Identifier: GPL-3.0-or-later
// Every command of the program: its number, its text and what the status bar says of it.
#ifndef ORVANE_APP_COMMAND_MAP_H_
#define ORVANE_APP_COMMAND_MAP_H_

#include <span>

namespace orvane {

/// Command numbers. Action objects are named by them.
enum CommandId : int {
  kSeparator = 0,
  kFileNew = 57600,
  kFileOpen = 57601,
  kFileSave = 57603,
  kFileSaveAs = 57604,
  kFileSaveAllBoxes = 32798,
  kFileRecent = 57616,  ///< the first of the recent files; the others follow
  kHelpGuide = 32901,
  kViewTheme = 32902,
  kThemeSystem = 32903,  ///< the others follow in the order of `Theme`
  kThemeLight,
  kThemeDark,
  kThemeSunlight,
  kAppAbout = 57664,
  kAppExit = 57665,
  kViewChanges = 32907,
  kSaveValues = 32908,
  kApplyValues = 32909,
  kViewCheck = 32910,
  kViewMap = 32911,
  kViewSpectrum = 32925,
  kViewDecay = 32945,
  kPrintSheets = 32912,
  kPrintParameters = 32913,
  kViewRecords = 32914,
  kOpenSurvey = 32930,
  kViewToolbar = 59392,
  kViewStatusBar = 59393,
  kEditUndo = 57643,
  kEditRedo = 57644,
  kEditAcquisition = 32771,
  kEditStepping = 32772,
  kEditRadio = 32773,
  kEditCurrentSensor = 32774,
  kEditRaw = 32775,
  kEditCoil = 32777,
  kListSchedules = 32781,
  kCreateFdemSchedule = 32806,
  kEditGsm = 32801,
  kEditFtp = 32805,
  kViewBoxStatus = 32803,
  kListCalibrations = 32779,
  kOpenCalibration = 32791,
  kCalibrationSettings = 32792,
  kOpenWaveform = 32796,
  kWaveformSettings = 32797,
  kWaveformToText = 32800,
  kRestack = 32802,
  kConvertToSpectra = 32900,
  kConvertToNetcdf = 32946,
  kConvertToMseed = 32947,
  kListTables = 32778,
  kConvertFrequencyDomainStacks = 32780,
  kConvertToVersion1 = 32782,
  kConvertTimeDomainStacks = 32790,
  kScrollBack = 32794,
  kScrollForward = 32795,
};

struct CommandRow {
  int id;
  const char* text;    ///< as in the menu, the shortcut after a tab
  const char* prompt;  ///< status bar text, after a newline the tool tip; may be empty
};

struct MenuRows {
  const char* title;
  std::span<const CommandRow> rows;
};

/// The menus from left to right.
std::span<const MenuRows> Menus();

/// The rows of the menu "Theme", which is a row of "View".
std::span<const CommandRow> ThemeCommands();

/// Commands without a menu row: the scroll buttons of the tool bar.
std::span<const CommandRow> ToolBarCommands();

}  // namespace orvane

#endif  // ORVANE_APP_COMMAND_MAP_H_
