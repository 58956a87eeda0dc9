// SPDX-License-Identifier: GPL-3.0-or-later
// Texts are exactly as users know them, doubled blanks included; only the marks of access keys
// are ours.
#include "app/command_map.h"

#include <array>

namespace orvane {
namespace {

constexpr CommandRow kLine = {kSeparator, "", ""};

// clang-format off
constexpr auto kFile = std::to_array<CommandRow>({
    {kFileNew, "&New\tCtrl+N", "New TBL file"},
    {kFileOpen, "&Open...\tCtrl+O", "Open TBL file\nOpen"},
    {kFileSave, "&Save\tCtrl+S", "Save TBL file\nSave"},
    {kFileSaveAs, "Save &As...\tCtrl+Shift+S", "Save TBL file with a new name\nSave As"},
    {kFileSaveAllBoxes, "Save *.TBL Files for All &Boxes...\tCtrl+Shift+B", "Save TBL files for all boxes\nSave All"},
    kLine,
    {kPrintSheets, "&Print Field Sheet...\tCtrl+P", "Print a page for each box: set-up, channels, times, map\nPrint"},
    {kPrintParameters, "Pr&int Parameters...", "Print all parameters and what they mean"},
    kLine,
    {kOpenCalibration, "Open &Calibration File...", ""},
    {kOpenWaveform, "Open &Waveform(*.tss) File to Display...", ""},
    {kOpenSurvey, "Open Sur&vey Folder...\tCtrl+Shift+F", "Look through everything recorded in a folder\nSurvey"},
    {kRestack, "Create Stack &Result Files (*.trs ) from Waveform(*.tss) Files....", ""},
    kLine,
    {kFileRecent, "Recent &File", "Open this document"},
    kLine,
    {kAppExit, "E&xit", "Quit the application; prompts to save TBL file\nExit"},
});
constexpr auto kEdit = std::to_array<CommandRow>({
    {kEditUndo, "&Undo\tCtrl+Z", "Take back the last change of the table\nUndo"},
    {kEditRedo, "Re&do\tCtrl+Y", "Make the change again that was taken back\nRedo"},
    kLine,
    {kEditAcquisition, "&Acquisition Parameters...\tCtrl+1", "Set acquisition parameters\nAcquisition"},
    {kEditStepping, "&Frequency Stepping Parameters...\tCtrl+2",
     "Set frequency stepping parameters\nStepping"},
    kLine,
    {kEditCoil, "&Coil Calibration...\tCtrl+3", "Set coil calibration parameters\nCoil"},
    {kEditCurrentSensor, "Current &Sensor Settings...\tCtrl+4",
     "Set current sensor parameters\nCurrent Sensor"},
    kLine,
    {kEditRadio, "&MHX Wireless Network Settings...\tCtrl+5", "Set MHX Wireless Network\nMHX  Modern"},
    {kEditGsm, "&GSM Modem Settings...\tCtrl+6", ""},
    {kEditFtp, "F&TP Client Setup...\tCtrl+7", ""},
    kLine,
    {kEditRaw, "&Raw Parameters...\tCtrl+8", "Display and edit parameters in raw table\nRaw Table"},
    kLine,
    {kSaveValues, "Save Changes As Te&xt...", "Write values of the table as lines KEY=VALUE"},
    {kApplyValues, "Appl&y Values...", "Take values over from lines KEY=VALUE"},
});
constexpr auto kUtilities = std::to_array<CommandRow>({
    {kListTables, "Convert &TBL File(s) to ASCII File(s)...", "Convert  TBL file(s)  into TXT file(s)"},
    {kListCalibrations, "Convert &Calibration File(s) to ASCII File(s)...",
     "Convert  calibration file(s)  into TXT file(s)"},
    {kConvertFrequencyDomainStacks, "Convert  &FD Stack Result File(s) to ASCII File(s)...",
     "Convert  stack result (*.trs)  file(s)  into CSV file(s)"},
    {kConvertTimeDomainStacks, "Convert  Time &Domain Stack Result File(s) to ASCII File(s)...", ""},
    {kListSchedules, "Convert  Frequency &Stepping  File(s) to ASCII File(s)...",
     "Convert  frequency stepping (*.tfs)  file(s)  into TXT file(s)"},
    {kWaveformToText, "Convert &Waveform(*.Tss) or Time Series(*.Ts1, *.Ts2...) File(s) to ASCII File(s)...",
     ""},
    kLine,
    {kConvertToVersion1, "Convert &Version 2 TBL File(s) to Version 1 TBL File(s)...",
     "Convert  TBL file(s)   into TBL  file(s) of version 1"},
    kLine,
    {kCreateFdemSchedule, "Create TFS File For Dr. &Halvo FDEM ...", ""},
    {kConvertToSpectra, "Convert Waveform File(s) to Calibrated S&pectra...", ""},
    {kConvertToNetcdf, "Convert Waveform File(s) to &NetCDF...", "Recordings for Python, MATLAB and others (NAME.nc)"},
    {kConvertToMseed, "Convert Waveform File(s) to &MiniSEED...", "Recordings for archives (NAME.mseed)"},
});
constexpr auto kView = std::to_array<CommandRow>({
    {kCalibrationSettings, "Set &Calibration Display Parameters...", ""},
    {kWaveformSettings, "Set &Waveform Display Parameters...", ""},
    kLine,
    {kViewBoxStatus, "View &Box Status...", "Display box status information"},
    kLine,
    {kViewRecords, "&Records\tF6", "All records of the waveform shown, and which are left out\nRecords"},
    {kViewCheck, "&Morning Check\tF7", "Whether the boxes may leave with this table\nMorning Check"},
    {kViewChanges, "Ch&anges\tF8", "What differs from the file, the defaults or another table\nChanges"},
    {kViewSpectrum, "Spectr&um\tF9", "What frequencies a waveform has: the visible part, a record or the file\nSpectrum"},
    {kViewDecay, "&Decay\tCtrl+Shift+D", "Decays, or amplitudes and phases, of the recording shown\nDecay"},
    {kViewMap, "Ma&p\tCtrl+Shift+M", "Where electrodes, transmitter and stations of the table are\nMap"},
    kLine,
    {kViewTheme, "T&heme", ""},
    {kViewToolbar, "&Toolbar", ""},
    {kViewStatusBar, "&Status Bar", ""},
});
constexpr auto kThemes = std::to_array<CommandRow>({
    {kThemeSystem, "S&ystem", "Style and colours of the desktop"},
    {kThemeLight, "&Light", "Dark on light"},
    {kThemeDark, "&Dark", "Light on dark"},
    {kThemeSunlight, "&Sunlight", "Black on white, with thick lines"},
});
constexpr auto kHelp = std::to_array<CommandRow>({
    {kHelpGuide, "&User Guide\tF1", "Open the user guide\nUser Guide"},
    {kAppAbout, "&About Orvane...", ""},
});
constexpr auto kToolBar = std::to_array<CommandRow>({
    {kScrollBack, "Scroll back", "Scroll back in time series\nScroll back"},
    {kScrollForward, "Scroll forward", "Scroll forward in time series\nScroll forward"},
});
// clang-format on

constexpr std::array<MenuRows, 5> kMenus = {{{"&File", kFile},
                                             {"&Edit", kEdit},
                                             {"&Utilities", kUtilities},
                                             {"&View", kView},
                                             {"&Help", kHelp}}};

}  // namespace

std::span<const MenuRows> Menus() { return kMenus; }
std::span<const CommandRow> ThemeCommands() { return kThemes; }
std::span<const CommandRow> ToolBarCommands() { return kToolBar; }

}  // namespace orvane
