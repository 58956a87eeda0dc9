// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the main window and every dialog into PNG files, in a light and in a dark theme.
//
//   orvane-gallery FOLDER TABLE
#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTimer>
#include <array>
#include <cmath>
#include <cstdio>
#include <functional>

#include "app/about_dlg.h"
#include "app/orvane_app.h"
#include "app/qt_prompts.h"
#include "calibration/widgets/calibration_display.h"
#include "calibration/widgets/calibration_dlg.h"
#include "calibration/widgets/fit_report_dlg.h"
#include "calibration/widgets/spectra_dlg.h"
#include "core/param_text.h"
#include "core/path_names.h"
#include "core/tbl_file.h"
#include "editors/widgets/acq_param_dlg.h"
#include "editors/widgets/box_status_dlg.h"
#include "editors/widgets/comm_dlg.h"
#include "editors/widgets/param_table_dlg.h"
#include "editors/widgets/sensor_dlg.h"
#include "editors/widgets/site_dlg.h"
#include "editors/widgets/startup_dlg.h"
#include "stepping/widgets/fdem_dlg.h"
#include "stepping/widgets/freq_stepping_dlg.h"
#include "stepping/widgets/stepping_cycle_dlg.h"
#include "timeseries/widgets/waveform_display.h"
#include "timeseries/widgets/waveform_dlg.h"
#include "ui/batch_progress.h"
#include "ui/batch_results.h"
#include "ui/qt_path.h"

namespace {

QPalette LightPalette() {
  return QStyleFactory::create(QStringLiteral("Fusion"))->standardPalette();
}

QPalette DarkPalette() {
  QPalette palette(QColor(53, 53, 56), QColor(43, 43, 46));
  palette.setColor(QPalette::Base, QColor(30, 30, 32));
  palette.setColor(QPalette::AlternateBase, QColor(38, 38, 41));
  palette.setColor(QPalette::Highlight, QColor(58, 122, 190));
  palette.setColor(QPalette::ToolTipBase, QColor(60, 60, 64));
  palette.setColor(QPalette::ToolTipText, Qt::white);
  return palette;
}

class Gallery {
 public:
  Gallery(QString folder, QString theme) : folder_(std::move(folder)), theme_(std::move(theme)) {}

  bool Draw(QWidget* window, const char* name) const {
    window->show();
    QApplication::processEvents();
    const QString path = QStringLiteral("%1/%2-%3.png").arg(folder_, QLatin1String(name), theme_);
    const bool done = window->grab().save(path);
    std::printf("%s%s\n", path.toLocal8Bit().constData(), done ? "" : ": cannot be written");
    return done;
  }

 private:
  QString folder_;
  QString theme_;
};

// The site setup of each method and the start-up file dialogs, none of which writes.
bool DrawSetup(orvane::COrvaneApp* app, const Gallery& gallery) {
  orvane::ParamTable table = app->Document().Table();
  orvane::Prompts& prompts = app->Document().Asking();
  orvane::CMainFrame* frame = &app->Frame();
  orvane::BoxSerialForm serials(&table);
  serials.Open();
  orvane::CBoxSerialDlg serials_dialog(&serials, &prompts, frame);
  bool done = gallery.Draw(&serials_dialog, "box-serials");
  constexpr std::array<const char*, 6> kNames = {"site-sip",   "site-tdip", "site-tdem",
                                                 "site-csamt", "site-mt",   "site-fdem"};
  for (int tech = 1; tech <= 6; ++tech) {
    if (table.SetParam("TECH", orvane::IntPT, &tech) != orvane::kOk) {
      return false;
    }
    orvane::SiteForm form(&table, tech, orvane::TransmitterModels());
    static_cast<void>(form.Open());
    orvane::CSiteDlg dialog(&form, &table, &prompts, frame);
    done = gallery.Draw(&dialog, kNames[static_cast<std::size_t>(tech) - 1]) && done;
  }
  const int sip = 1;
  static_cast<void>(table.SetParam("TECH", orvane::IntPT, &sip));
  orvane::StartupRun run(&table, "survey/Startup.tbl", &prompts);
  for (const orvane::StartupBox& box : run.Boxes()) {
    if (box.number <= 1) {
      orvane::StartupForm form(&table, box, run.Choices());
      orvane::CStartupDlg dialog(&form, &run, &prompts, frame);
      constexpr std::array<const char*, 3> kBoxes = {"startup-monitor", "startup-main",
                                                     "startup-auxiliary"};
      done = gallery.Draw(&dialog, kBoxes[static_cast<std::size_t>(box.number) + 1]) && done;
    }
  }
  return done;
}

// The pictures' day, so that they are the same on every day.
class PictureClock : public orvane::Clock {
 public:
  orvane::ParamTime Now() const override {
    return {.hour = 8, .day = 21, .month = 11, .year = 26, .weekday = 6, .century = 20};
  }
};

// One picture for each method, on a copy of the table.
bool DrawAcquisition(const orvane::ParamTable& opened, const Gallery& gallery) {
  constexpr std::array kNames = {"acquisition-sip",   "acquisition-tdip", "acquisition-tdem",
                                 "acquisition-csamt", "acquisition-mt",   "acquisition-fdem"};
  const PictureClock now;
  orvane::QtPrompts prompts;
  bool done = true;
  for (std::int32_t tech = 1; tech <= static_cast<std::int32_t>(kNames.size()); ++tech) {
    orvane::ParamTable table = opened;
    static_cast<void>(table.SetParam("TECH", orvane::IntPT, &tech));
    orvane::AcqForm form(&table, &now);
    form.Open();
    orvane::CAcqParamDlg dialog(&form, &prompts);
    dialog.resize(dialog.sizeHint());  // also where this screen is smaller
    done = gallery.Draw(&dialog, kNames[static_cast<std::size_t>(tech) - 1]) && done;
    if (tech == 5) {
      dialog.resize(660, 360);  // a field laptop at 200 %
      done = gallery.Draw(&dialog, "acquisition-mt-small") && done;
    }
  }
  return done;
}

// The stepping of each method with its default values, the cycles to choose from, the FDEM file.
bool DrawStepping(const orvane::ParamTable& opened, const Gallery& gallery) {
  struct Method {
    int tech;
    std::int32_t cycle;
    const char* name;
    const char* cycle_name;
  };
  constexpr auto kMethods = std::to_array<Method>({
      {orvane::kSip, 900, "stepping-sip", "cycle-sip"},
      {orvane::kTdip, 0, "stepping-tdip", nullptr},
      {orvane::kTdem, 0, "stepping-tdem", nullptr},
      {orvane::kCsamt, 2700, "stepping-csamt", "cycle-csamt"},
      {orvane::kFdem, 3600, "stepping-fdem", "cycle-fdem"},
  });
  orvane::QtPrompts prompts;
  orvane::StatusNotices notices;
  bool done = true;
  for (const Method& method : kMethods) {
    orvane::ParamTable table = opened;
    static_cast<void>(table.SetParam("TECH", orvane::IntPT, &method.tech));
    if (orvane::HasCycles(method.tech)) {
      orvane::ApplyTransmitter(&table, method.tech, orvane::WithDefaults({}, method.tech), 16);
    }
    orvane::SteppingForm form(&table, &prompts, &notices);
    form.Open();
    form.ApplyDefaults(method.cycle);
    orvane::CFreqSteppingDlg dialog(&form, &prompts, {});
    dialog.resize(1340, 690);  // also where this screen is smaller
    done = gallery.Draw(&dialog, method.name) && done;
    if (method.tech == orvane::kTdem) {
      dialog.resize(660, 360);  // a field laptop at 200 %
      done = gallery.Draw(&dialog, "stepping-tdem-small") && done;
    }
    if (method.cycle_name != nullptr) {
      orvane::CycleForm cycle(&table, &form.Early(), method.tech, form.Limits());
      cycle.Open();
      orvane::CSteppingCycleDlg cycle_dialog(&cycle, &prompts);
      done = gallery.Draw(&cycle_dialog, method.cycle_name) && done;
    }
  }
  orvane::FdemForm fdem(&prompts);
  fdem.Open();
  orvane::CFdemScheduleDlg fdem_dialog(&fdem, &prompts, {});
  return gallery.Draw(&fdem_dialog, "fdem-schedule") && done;
}

void Put(orvane::ParamTable* table, orvane::ParamKey key, std::string_view text) {
  const auto type = static_cast<orvane::ValueType>(table->FindParam(key)->type);
  orvane::ParamValue value{};
  orvane::ParseParamValue(text, type, &value);
  static_cast<void>(table->SetParam(key, type, value.data()));
}

template <typename Dialog, typename Form>
bool DrawForm(const Gallery& gallery, Form&& form, const char* name) {
  orvane::QtPrompts prompts;
  form.Open();
  Dialog dialog(&form, &prompts, nullptr);
  return gallery.Draw(&dialog, name);
}

bool DrawCommunications(orvane::ParamTable table, const Gallery& gallery) {
  bool done = true;
  for (const auto& [hardware, name] :
       {std::pair("K36W2", "radio-24ghz"), std::pair("K36W9", "radio-900mhz"),
        std::pair("K36", "radio-none")}) {
    Put(&table, "HW", hardware);
    orvane::RadioForm form(&table);
    orvane::QtPrompts prompts;
    form.Open();
    orvane::CRadioDlg dialog(&form, &prompts, nullptr);
    done = gallery.Draw(&dialog, name) && done;
  }
  Put(&table, "PPPNAME", "crew-7");
  Put(&table, "PPPPSWD", "secret");
  using orvane::PlainForm;
  PlainForm gsm(&table, orvane::GsmFields());
  gsm.Open();
  gsm.Model().SetText(1242,
                      "internet.operator.example/a-name-that-is-longer-than-the-table's-room");
  orvane::QtPrompts prompts;
  orvane::CGsmDlg gsm_dialog(&gsm, &prompts, nullptr);
  done = gallery.Draw(&gsm_dialog, "gsm") && done;
  return DrawForm<orvane::CFtpDlg>(gallery, orvane::FtpForm(&table), "ftp") && done;
}

bool DrawSensors(orvane::ParamTable table, const Gallery& gallery) {
  using orvane::CurrentSensorForm;
  bool done = true;
  Put(&table, "CSSN", "");
  for (const auto& [gain, amplitude, name] :
       {std::tuple("0", "0", "current-sensor-none"), std::tuple("100", "-0.05", "current-sensor-1"),
        std::tuple("5", "-0.1", "current-sensor-2")}) {
    Put(&table, "CNOM", gain);
    Put(&table, "CAMP", amplitude);
    done = DrawForm<orvane::CCurrentSensorDlg>(gallery, CurrentSensorForm(&table), name) && done;
    Put(&table, "CSSN", "CS1043");
  }
  orvane::CoilForm coil(&table, orvane::CoilModels());
  coil.Open();
  coil.Model().SetIndex(orvane::CoilForm::kType, 1);
  coil.OnEdited(orvane::CoilForm::kType);
  orvane::QtPrompts prompts;
  orvane::CCoilDlg dialog(&coil, &prompts, nullptr);
  return gallery.Draw(&dialog, "coil") && done;
}

bool DrawBoxStatus(orvane::ParamTable table, const Gallery& gallery) {
  using Form = orvane::BoxStatusForm;
  bool done = DrawForm<orvane::CBoxStatusDlg>(gallery, Form(&table), "box-status-empty");
  for (const auto& [key, text] :
       std::initializer_list<std::pair<const char*, const char*>>{{"LATG", "6047.1234,N"},
                                                                  {"LNGG", "13524.9876,W"},
                                                                  {"ELEV", "712"},
                                                                  {"NSAT", "9"},
                                                                  {"CLST", "4"},
                                                                  {"TERR", "-1"},
                                                                  {"LFIX", "2026/11/21 08:00:00"},
                                                                  {"TOTL", "1824"},
                                                                  {"SATR", "3"},
                                                                  {"BADR", "1"},
                                                                  {"FTIM", "2026/11/20 16:00:00"},
                                                                  {"LTIM", "2026/11/21 07:59:30"},
                                                                  {"BAT1", "12345"},
                                                                  {"TEMP", "-7"},
                                                                  {"DISK", "1073741824"},
                                                                  {"FFPG", "0"},
                                                                  {"GFPG", "0"},
                                                                  {"DSP", "0"},
                                                                  {"MSTRLAT", "6047.0011,N"},
                                                                  {"MSTRLNG", "13525.1002,W"},
                                                                  {"MSTRRNG", "251.37"},
                                                                  {"MSTRBRG", "33.9"}}) {
    Put(&table, key, text);
  }
  return DrawForm<orvane::CBoxStatusDlg>(gallery, Form(&table), "box-status") && done;
}

// A batch of three files, one of which cannot be converted, and another that is under way.
bool DrawBatch(const Gallery& gallery) {
  orvane::Conversion conversion;
  conversion.outputs_of = [](const std::string& input) {
    return std::vector{orvane::WithExtension(input, ".csv")};
  };
  conversion.job = [](orvane::BatchTask& task) {
    return task.Input().filename() == "2417B02.trs"
               ? orvane::BatchFailed("cannot be read: Permission denied")
               : orvane::BatchDone(task.Outputs(), task.Input().filename() == "2417B03.trs"
                                                       ? "cut at offset 4810"
                                                       : "");
  };
  orvane::Batch done_batch({conversion, {"2417B01.trs", "2417B02.trs", "2417B03.trs"}, {}, 0});
  done_batch.Start();
  done_batch.Wait();
  const orvane::TextEditor editor;
  orvane::CBatchResultDlg results(
      done_batch, QStringLiteral("2 files are converted to ASCII file!"), &editor, nullptr);
  const bool done = gallery.Draw(&results, "batch-results");

  orvane::Batch batch({conversion, {"2417B01.trs", "2417B02.trs", "2417B03.trs"}, {}, 0});
  orvane::CBatchProgressDlg progress(
      &batch, QStringLiteral("Convert Frequency Stack Result File(s) to ASCII File(s)"), nullptr);
  progress.findChild<QLabel*>(QStringLiteral("file"))->setText(QStringLiteral("2417B02.trs"));
  progress.findChild<QLabel*>(QStringLiteral("count"))
      ->setText(QStringLiteral("1 of 3 files, 12.5 MB of 31.0 MB"));
  progress.findChild<QLabel*>(QStringLiteral("time"))->setText(QStringLiteral("about 4 s left"));
  progress.findChild<QProgressBar*>()->setValue(403);
  return gallery.Draw(&progress, "batch-progress") && done;
}

// A record of 12 channels, as many as are drawn, with a spike of one scan in the fifth.
QString WriteTwelveChannels(const QString& folder, const orvane::ParamTable& table) {
  constexpr int kScans = 4000;
  constexpr int kChannels = 12;
  std::string bytes(252, '\0');
  bytes[10] = static_cast<char>(kScans & 0xFF);
  bytes[11] = static_cast<char>(kScans >> 8);
  bytes[12] = kChannels;
  bytes[17] = 3;
  bytes[18] = static_cast<char>(0xD0);  // 2000 a second
  bytes[19] = 7;
  for (int scan = 0; scan < kScans; ++scan) {
    for (int channel = 0; channel < kChannels; ++channel) {
      const double wave = std::sin(scan * 0.004 * (channel + 1)) + 0.1 * std::sin(scan * 1.7);
      const int sample = scan == 1700 && channel == 4 ? 4000000 : static_cast<int>(900000 * wave);
      for (int shift = 0; shift < 24; shift += 8) {
        bytes += static_cast<char>(sample >> shift & 0xFF);
      }
    }
  }
  QString path = folder + QStringLiteral("/TWELVE.TSS");
  QFile file(path);
  static_cast<void>(file.open(QIODevice::WriteOnly));
  file.write(bytes.data(), static_cast<qint64>(bytes.size()));
  orvane::ParamTable companion = table;
  static_cast<void>(orvane::SaveParamFile(
      &companion, QFile::encodeName(folder + QStringLiteral("/TWELVE.TBL")).toStdString(), {}));
  return path;
}

// The main window with a waveform: each method, a bad record, a part with cursors, 12 channels.
bool DrawWaveforms(orvane::COrvaneApp* app, const QString& survey, const Gallery& gallery) {
  orvane::CMainFrame& frame = app->Frame();
  const QTemporaryDir folder;
  bool done = true;
  const auto show = [&](const QString& path) {
    auto* display = new orvane::CWaveformDisplay(&app->Document().Asking());
    // Without the messages that the display's own way of opening shows.
    const bool is_open = display->View().Open(orvane::PathFromText(path));
    frame.Displays().Show(display);
    frame.resize(1180, 690);
    QApplication::processEvents();
    display->ShowView();
    done = is_open && done;
    return display;
  };
  for (const char* method : {"SIP", "TDIP", "TDEM", "CSAMT", "MT", "FDEM"}) {
    show(survey + QStringLiteral("/%1/2417.TSS").arg(QLatin1String(method)));
    done = gallery.Draw(&frame, ("waveform-" + QByteArray(method).toLower()).constData()) && done;
  }
  auto* display = show(survey + QStringLiteral("/TDIP/2417.TSS"));
  orvane::WaveformView& view = display->View();
  if (view.NextBad()) {
    display->ShowView();
    done = gallery.Draw(&frame, "waveform-bad") && done;
  }
  static_cast<void>(view.First());
  view.ShowTimes(view.EndTime() * 0.2, view.EndTime() * 0.4);
  view.SetCursor(orvane::WaveformView::kFirstCursor, view.EndTime() * 0.25);
  view.SetCursor(orvane::WaveformView::kSecondCursor, view.EndTime() * 0.33);
  display->ShowView();
  QApplication::processEvents();
  display->ShowView();
  done = gallery.Draw(&frame, "waveform-cursors") && done;
  show(WriteTwelveChannels(folder.path(), app->Document().Table()));
  done = gallery.Draw(&frame, "waveform-twelve") && done;
  orvane::WaveformForm form(display->View());
  orvane::QtPrompts prompts;
  orvane::CWaveformDlg settings(&form, &display->View(), &prompts, nullptr);
  done = gallery.Draw(&settings, "waveform-parameters") && done;
  frame.Displays().Close();
  return done;
}

// The main window with a calibration: box, coil, all channels, comparisons, empty ranges; the
// dialog.
bool DrawCalibrations(orvane::COrvaneApp* app, const QString& folder, const Gallery& gallery) {
  orvane::CMainFrame& frame = app->Frame();
  frame.resize(1180, 690);
  bool done = true;
  const auto show = [&](const char* name) {
    done = frame.Displays().OpenCalibration(folder + QLatin1String(name)) && done;
    return qobject_cast<orvane::CCalibrationDisplay*>(frame.Display());
  };
  const auto draw = [&](const char* name) { done = gallery.Draw(&frame, name) && done; };
  auto* display = show("/2417.CLB");
  draw("calibration-box");
  display->View().ShowAll();
  display->View().FitDisplay();
  display->View().SetCursor(100);
  display->ShowView();
  draw("calibration-box-all");
  display->View().Show({2});
  display->View().SetModel(true);
  display->View().FitDisplay();
  display->ShowView();
  draw("calibration-model");
  orvane::CFitReportDlg fit(*display->View().Model(), &frame);
  done = gallery.Draw(&fit, "calibration-fit-report") && done;
  display->View().SetModel(false);
  display = show("/2041.CLC");
  display->View().FitDisplay();
  display->ShowView();
  draw("calibration-coil");
  done = display->OpenReference(folder + QStringLiteral("/2042.CLC")) && done;
  display->View().SetCursor(1);
  display->ShowView();
  draw("calibration-comparison");
  display->View().SetRatio(true);
  display->View().FitDisplay();
  display->ShowView();
  draw("calibration-ratio");
  frame.resize(660, 340);  // a field laptop at 200 %
  draw("calibration-small");
  frame.resize(1180, 690);
  orvane::CalDisplay ranges;
  ranges.min_amplitude = ranges.max_amplitude;
  display->View().SetDisplay(ranges);
  display->ShowView();
  draw("calibration-empty");
  display->View().SetDisplay({});
  orvane::CalDisplayForm form(display->View().Display());
  orvane::QtPrompts prompts;
  orvane::CCalibrationDlg dialog(&form, &ranges, &prompts, nullptr);
  done = gallery.Draw(&dialog, "calibration-parameters") && done;
  orvane::SpectraForm spectra_form(folder.toStdString());
  orvane::CSpectraDlg spectra(&spectra_form, &prompts, nullptr);
  done = gallery.Draw(&spectra, "calibrated-spectra") && done;
  frame.Displays().Close();
  return done;
}

bool DrawAll(orvane::COrvaneApp* app, const Gallery& gallery) {
  orvane::CMainFrame& frame = app->Frame();
  bool done = gallery.Draw(&frame, "main-window");

  orvane::CParamTableDlg raw(&app->Document().Table(), &frame);
  done = gallery.Draw(&raw, "raw-parameters") && done;
  raw.findChild<QLineEdit*>(QStringLiteral("filter"))->setText(QStringLiteral("SRVY"));
  done = gallery.Draw(&raw, "raw-parameters-filtered") && done;

  done = DrawSetup(app, gallery) && done;
  done = DrawAcquisition(app->Document().Table(), gallery) && done;
  done = DrawStepping(app->Document().Table(), gallery) && done;

  done = DrawCommunications(app->Document().Table(), gallery) && done;
  done = DrawSensors(app->Document().Table(), gallery) && done;
  done = DrawBoxStatus(app->Document().Table(), gallery) && done;

  done = DrawBatch(gallery) && done;
  const QString survey =
      QFileInfo(QApplication::arguments().value(2)).absolutePath() + QStringLiteral("/..");
  done = DrawWaveforms(app, survey, gallery) && done;
  done = DrawCalibrations(app, survey + QStringLiteral("/Calibration"), gallery) && done;

  orvane::CAboutDlg about(&frame);
  return gallery.Draw(&about, "about") && done;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: orvane-gallery FOLDER TABLE\n", stderr);
    return 2;
  }
  const QTemporaryDir settings;  // the pictures must not depend on the user's
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  orvane::COrvaneApp app(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  const QString folder = QApplication::arguments().value(1);
  QDir().mkpath(folder);
  app.InitInstance(QApplication::arguments().value(2));
  bool done = true;
  for (const bool is_dark : {false, true}) {
    QApplication::setPalette(is_dark ? DarkPalette() : LightPalette());
    done = DrawAll(&app,
                   Gallery(folder, is_dark ? QStringLiteral("dark") : QStringLiteral("light"))) &&
           done;
  }
  return done ? 0 : 1;
}
