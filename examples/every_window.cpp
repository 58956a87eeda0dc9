// SPDX-License-Identifier: GPL-3.0-or-later
#include "every_window.h"

#include <QApplication>
#include <QDateTime>
#include <QEventLoop>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QTemporaryDir>
#include <QTimer>
#include <array>
#include <cmath>
#include <memory>

#include "app/about_dlg.h"
#include "app/command_map.h"
#include "app/emergency_copy.h"
#include "app/key_labels.h"
#include "app/qt_prompts.h"
#include "calibration/cal_header.h"
#include "changes/widgets/apply_values_dlg.h"
#include "changes/widgets/changes_dock.h"
#include "changes/widgets/save_values_dlg.h"
#include "check/widgets/check_dock.h"
#include "editors/line_layout.h"
#include "editors/widgets/acq_param_dlg.h"
#include "editors/widgets/box_serial_dlg.h"
#include "editors/widgets/box_status_dlg.h"
#include "editors/widgets/coil_dlg.h"
#include "editors/widgets/current_sensor_dlg.h"
#include "editors/widgets/field_sheet_print.h"
#include "editors/widgets/ftp_dlg.h"
#include "editors/widgets/gsm_dlg.h"
#include "editors/widgets/map_dock.h"
#include "editors/widgets/param_table_dlg.h"
#include "editors/widgets/radio_dlg.h"
#include "editors/widgets/site_dlg.h"
#include "editors/widgets/startup_dlg.h"
#include "editors/widgets/startup_result_dlg.h"
#include "export/widgets/export_dlgs.h"
#include "files/file_io.h"
#include "files/path_names.h"
#include "meaning/explain.h"
#include "meaning/meanings.h"
#include "response/box_model.h"
#include "response/widgets/calibration_display.h"
#include "response/widgets/calibration_dlg.h"
#include "response/widgets/compare_dlg.h"
#include "response/widgets/fit_report_dlg.h"
#include "spectra/widgets/decay_dock.h"
#include "spectra/widgets/spectra_dlg.h"
#include "spectra/widgets/spectrum_dock.h"
#include "stepping/widgets/fdem_schedule_dlg.h"
#include "stepping/widgets/freq_stepping_dlg.h"
#include "stepping/widgets/stepping_cycle_dlg.h"
#include "survey/widgets/survey_window.h"
#include "table/param_access.h"
#include "table/param_time.h"
#include "table/tbl_file.h"
#include "table/unsaved_table.h"
#include "table/values_text.h"
#include "timeseries/widgets/stack_display.h"
#include "timeseries/widgets/waveform_display.h"
#include "timeseries/widgets/waveform_dlg.h"
#include "timeseries/widgets/waveform_gain_dlg.h"
#include "ui/batch_progress_dlg.h"
#include "ui/batch_result_dlg.h"
#include "ui/file_dialogs.h"
#include "ui/picture_size_dlg.h"
#include "ui/qt_path.h"

namespace orvane::examples {
namespace {

// The question after a crash, with a copy that is of the pictures' day.
bool VisitOffer(COrvaneApp* app, const Visit& visit) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("unsaved-1.orvane"));
  const UnsavedTable unsaved{"/data/survey/SIP/Startup.tbl", TblImage(app->Document().Table(), {})};
  if (!WriteFile(PathFromText(path), UnsavedImage(unsaved))) {
    return false;
  }
  QFile file(path);
  if (!file.open(QIODevice::ReadWrite) ||
      !file.setFileTime(QDateTime(QDate(2026, 11, 21), QTime(8, 0)),
                        QFileDevice::FileModificationTime)) {
    return false;
  }
  file.close();
  StatusNotices notices;
  EmergencyCopy copy(PathFromText(folder.path()), &app->Document(), &notices);
  bool done = false;
  QTimer::singleShot(0, app, [&] {
    QWidget* question = QApplication::activeModalWidget();
    done = visit(question, "unsaved-table");
    question->close();
  });
  return !copy.Offer(&app->Document().Asking()) && done;
}

// The bar above the view and the question, after another program saved the file.
bool VisitChangedFile(COrvaneApp* app, const Visit& visit) {
  COrvaneDoc& doc = app->Document();
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("Startup.tbl"));
  bool done = doc.OnSaveDocument(path);
  ParamTable theirs = doc.Table();
  const std::int32_t other = 60;
  for (const ParamKey key : {"LFRQ", "SNUM", "LPFR"}) {
    done = theirs.SetParam(key, IntPT, &other) == kOk && done;
  }
  const std::int32_t mine = 7;
  for (const ParamKey key : {"LFRQ", "EGNC", "HGNC"}) {
    done = doc.Table().SetParam(key, IntPT, &mine) == kOk && done;
  }
  done = SaveParamFile(&theirs, PathFromText(path), {}) == kOk && done;
  doc.NoteStep(QStringLiteral("Edit"));
  QApplication::processEvents();
  done = visit(&app->Frame(), "changed-file") && done;
  bool is_asked = false;
  QTimer::singleShot(0, app, [&] {
    QWidget* question = QApplication::activeModalWidget();
    is_asked = visit(question, "changed-file-question");
    question->close();
  });
  done = !doc.OnSave() && is_asked && done;
  doc.OnCloseDocument();
  doc.OnNewDocument();
  return done;
}

// Two boxes' files of one name in a folder of the pictures' own.
bool VisitStartupResults(ParamTable* table, Prompts* prompts, CMainFrame* frame,
                         const Visit& visit) {
  const QTemporaryDir folder;
  const std::filesystem::path survey = PathFromText(folder.path());
  StartupRun run(table, survey / "Startup.tbl", prompts);
  run.SetVerifies(true);
  bool done = true;
  for (std::size_t i = 1; i < 3; ++i) {
    StartupForm form(table, run.Boxes()[i], run.Choices());
    form.Model().SetIndex(StartupForm::kFixedName, 0);
    CStartupDlg dialog(&form, &run, prompts, frame);
    done = visit(&dialog, i == 1 ? "startup-in-order" : "startup-overwrites") && done;
    run.Accept(form);
  }
  CStartupResultDlg results(run, LabelledKeys, frame);
  return visit(&results, "startup-results") && done;
}

// The site setup of each method and the start-up file dialogs, none of which writes.
bool VisitSetup(COrvaneApp* app, const Visit& visit) {
  ParamTable table = app->Document().Table();
  Prompts& prompts = app->Document().Asking();
  CMainFrame* frame = &app->Frame();
  BoxSerialForm serials(&table);
  serials.Open();
  CBoxSerialDlg serials_dialog(&serials, &prompts, frame);
  bool done = visit(&serials_dialog, "box-serials");
  constexpr std::array<const char*, 6> kNames = {"site-sip",   "site-tdip", "site-tdem",
                                                 "site-csamt", "site-mt",   "site-fdem"};
  for (const Tech tech : {kSip, kTdip, kTdem, kCsamt, kMtAmt, kFdem}) {
    PutInt(&table, "TECH", tech);
    SiteForm form(&table, tech, TransmitterModels());
    static_cast<void>(form.Open());
    CSiteDlg dialog(&form, &table, &prompts, frame);
    if (auto* line = dialog.findChild<QPushButton*>(QString::number(CSiteDlg::kCalcCoord))) {
      line->click();
    }
    auto* map = dialog.findChild<QPushButton*>(QStringLiteral("show-map"));
    map->setChecked(true);
    done = visit(&dialog, kNames[static_cast<std::size_t>(tech) - 1]) && done;
    if (tech == kCsamt) {
      dialog.resize(660, 360);  // a field laptop at 200 %
      map->toggle();
      map->toggle();
      done = visit(&dialog, "site-csamt-small") && done;
    }
  }
  PutInt(&table, "TECH", kSip);
  StartupRun run(&table, PathFromText(app->Document().Path()), &prompts);
  for (const StartupBox& box : run.Boxes()) {
    if (box.number <= 1) {
      StartupForm form(&table, box, run.Choices());
      CStartupDlg dialog(&form, &run, &prompts, frame);
      constexpr std::array<const char*, 3> kBoxes = {"startup-monitor", "startup-main",
                                                     "startup-auxiliary"};
      done = visit(&dialog, kBoxes[static_cast<std::size_t>(box.number) + 1]) && done;
      if (box.number == 0) {
        dialog.resize(660, 360);  // a field laptop at 200 %
        done = visit(&dialog, "startup-main-small") && done;
      }
    }
  }
  return VisitStartupResults(&table, &prompts, frame, visit) && done;
}

// The pictures' day, so that they are the same on every day.
class PictureClock : public Clock {
 public:
  ParamTime Now() const override {
    return {.hour = 6, .day = 21, .month = 11, .year = 26, .weekday = 6, .century = 20};
  }
};

// The page of the main box, of A4, as large as a screen is high.
bool VisitSheet(const ParamTable& table, const char* name, const Visit& visit) {
  const auto sheets = FieldSheetsOf(table, PictureClock());
  const auto local = std::find_if(sheets.begin(), sheets.end(),
                                  [](const FieldSheet& sheet) { return sheet.box == 1; });
  constexpr QSize kPage(480, 704);
  constexpr double kScale = kPage.width() / 528.0;
  QPixmap page(kPage);
  page.fill(Qt::white);
  QPainter painter(&page);
  painter.scale(kScale, kScale);
  PaintFieldSheet(*local, MapOf(table), QSizeF(kPage) / kScale, &painter);
  painter.end();
  QLabel shown;
  shown.setWindowTitle(QStringLiteral("Field sheet"));
  shown.setPixmap(page);
  shown.resize(kPage);
  return visit(&shown, name);
}

// The survey's folder in its own window, with the pictures of its recordings.
bool VisitSurvey(const QString& survey, const Visit& visit) {
  CSurveyWindow window(nullptr);
  window.Open(PathFromText(survey));
  window.show();
  for (int i = 0; i < 2000 && (window.IsScanning() || i < 200); ++i) {
    QApplication::processEvents();
    QThread::msleep(5);
  }
  bool done = visit(&window, "survey");
  window.findChild<QTabWidget*>(QStringLiteral("survey-tabs"))->setCurrentIndex(1);
  return visit(&window, "survey-map") && done;
}

// The map of each method in the main window: a line, a loop, a cross of dipoles, no positions.
bool VisitMaps(COrvaneApp* app, const QString& survey, const Visit& visit) {
  COrvaneDoc& doc = app->Document();
  CMainFrame& frame = app->Frame();
  const ParamTable before = doc.Table();
  auto* dock = frame.findChild<MapDock*>();
  bool done = true;
  dock->show();
  for (const auto& [method, name] :
       {std::pair("SIP", "map-sip"), std::pair("TDEM", "map-tdem"), std::pair("CSAMT", "map-csamt"),
        std::pair("MT", "map-mt"), std::pair("FDEM", "map-fdem")}) {
    const QString path = survey + QStringLiteral("/%1/Startup.tbl").arg(QLatin1String(method));
    done = LoadParamFile(&doc.Table(), PathFromText(path)) == kOk && done;
    const Tech tech = TechOf(doc.Table());
    SiteForm form(&doc.Table(), tech, TransmitterModels());
    static_cast<void>(form.Open());
    Spread spread(&doc.Table());
    if (form.HasLine()) {
      static_cast<void>(CalculateCoordinates(form, &spread));
    } else if (tech == kTdem) {
      spread.PlaceElectrode(0, 0, Spread::kPositive, 1100, 400);
      spread.PlaceElectrode(0, 0, Spread::kNegative, 1300, 600);
      for (int channel = 0; channel < 3; ++channel) {
        spread.PlaceElectrode(1, channel, Spread::kPositive, 1200 + 50 * channel, 500);
        spread.PlaceElectrode(1, channel, Spread::kNegative, 1250 + 50 * channel, 500);
      }
    }
    spread.Save();
    if (tech == kSip || tech == kMtAmt) {
      done = VisitSheet(doc.Table(), tech == kSip ? "sheet-sip" : "sheet-mt", visit) && done;
    }
    if (tech == kSip) {  // a dipole without a length is marked
      spread.PlaceElectrode(1, 2, Spread::kNegative, *spread.ChannelReal(1, 2, kPositiveNorth),
                            *spread.ChannelReal(1, 2, kPositiveEast));
      spread.Save();
    }
    doc.UpdateAllViews();
    dock->View()->Choose(1, tech == kSip ? 2 : 1);
    done = visit(&frame, name) && done;
  }
  dock->hide();
  doc.Table() = before;
  doc.UpdateAllViews();
  return done;
}

// One picture for each method, on a copy of the table.
bool VisitAcquisition(const ParamTable& opened, const Visit& visit) {
  constexpr std::array kNames = {"acquisition-sip",   "acquisition-tdip", "acquisition-tdem",
                                 "acquisition-csamt", "acquisition-mt",   "acquisition-fdem"};
  const PictureClock now;
  QtPrompts prompts;
  bool done = true;
  for (std::int32_t tech = 1; tech <= static_cast<std::int32_t>(kNames.size()); ++tech) {
    ParamTable table = opened;
    PutInt(&table, "TECH", tech);
    AcqForm form(&table, &now);
    form.Open();
    CAcqParamDlg dialog(&form, &prompts);
    dialog.SetSiteSetup([] {});
    dialog.resize(dialog.sizeHint());  // also where this screen is smaller
    done = visit(&dialog, kNames[static_cast<std::size_t>(tech) - 1]) && done;
    if (tech == kMtAmt) {
      dialog.resize(660, 360);  // a field laptop at 200 %
      done = visit(&dialog, "acquisition-mt-small") && done;
    }
  }
  return done;
}

// The stepping of each method with its default values, the cycles to choose from, the FDEM file.
bool VisitStepping(const ParamTable& opened, const Visit& visit) {
  struct Method {
    Tech tech;
    std::int32_t cycle;
    const char* name;
    const char* cycle_name;
  };
  constexpr auto kMethods = std::to_array<Method>({
      {kSip, 900, "stepping-sip", "cycle-sip"},
      {kTdip, 0, "stepping-tdip", nullptr},
      {kTdem, 0, "stepping-tdem", nullptr},
      {kCsamt, 2700, "stepping-csamt", "cycle-csamt"},
      {kFdem, 3600, "stepping-fdem", "cycle-fdem"},
  });
  QtPrompts prompts;
  StatusNotices notices;
  bool done = true;
  for (const Method& method : kMethods) {
    ParamTable table = opened;
    PutInt(&table, "TECH", method.tech);
    if (HasCycles(method.tech)) {
      ApplyTransmitter(&table, method.tech, WithDefaults({}, method.tech), 16);
    }
    SteppingForm form(&table, &prompts, &notices);
    form.Open();
    form.ApplyDefaults(method.cycle);
    CFreqSteppingDlg dialog(&form, &prompts, {});
    dialog.resize(1340, 690);  // also where this screen is smaller
    done = visit(&dialog, method.name) && done;
    if (method.tech == kTdem) {
      dialog.resize(660, 360);  // a field laptop at 200 %
      done = visit(&dialog, "stepping-tdem-small") && done;
    }
    if (method.cycle_name != nullptr) {
      CycleForm cycle(&table, &form.Early(), method.tech, form.Limits());
      cycle.Open();
      CSteppingCycleDlg cycle_dialog(&cycle, &prompts);
      done = visit(&cycle_dialog, method.cycle_name) && done;
    }
  }
  FdemForm fdem(&prompts, "/home/crew/survey");
  fdem.Open();
  fdem.Model().SetText(FdemForm::kPath, "night 2");
  CFdemScheduleDlg fdem_dialog(&fdem, &prompts, {});
  done = visit(&fdem_dialog, "fdem-schedule") && done;
  fdem.Model().SetText(FdemForm::kSeconds, "1 minute");  // what OK would refuse
  return visit(&fdem_dialog, "fdem-schedule-fault") && done;
}

void Put(ParamTable* table, ParamKey key, std::string_view text) {
  const auto type = static_cast<ValueType>(table->FindParam(key)->type);
  ParamValue value{};
  ParseParamValue(text, type, &value);
  PutValue(table, key, type, value);
}

template <typename Dialog, typename Form>
bool VisitForm(const Visit& visit, Form&& form, const char* name) {
  QtPrompts prompts;
  form.Open();
  Dialog dialog(&form, &prompts, nullptr);
  return visit(&dialog, name);
}

bool VisitCommunications(ParamTable table, const Visit& visit) {
  bool done = true;
  for (const auto& [hardware, name] :
       {std::pair("K36W2", "radio-24ghz"), std::pair("K36W9", "radio-900mhz"),
        std::pair("K36", "radio-none")}) {
    Put(&table, "HW", hardware);
    RadioForm form(&table);
    QtPrompts prompts;
    form.Open();
    CRadioDlg dialog(&form, &prompts, nullptr);
    done = visit(&dialog, name) && done;
  }
  Put(&table, "PPPNAME", "crew-7");
  Put(&table, "PPPPSWD", "secret");
  PlainForm gsm(&table, GsmFields());
  gsm.Open();
  gsm.Model().SetText(1242,
                      "internet.operator.example/a-name-that-is-longer-than-the-table's-room");
  QtPrompts prompts;
  CGsmDlg gsm_dialog(&gsm, &prompts, nullptr);
  done = visit(&gsm_dialog, "gsm") && done;
  return VisitForm<CFtpDlg>(visit, FtpForm(&table), "ftp") && done;
}

bool VisitSensors(ParamTable table, const Visit& visit) {
  bool done = true;
  Put(&table, "CSSN", "");
  for (const auto& [gain, amplitude, name] :
       {std::tuple("0", "0", "current-sensor-none"), std::tuple("100", "-0.05", "current-sensor-1"),
        std::tuple("5", "-0.1", "current-sensor-2")}) {
    Put(&table, "CNOM", gain);
    Put(&table, "CAMP", amplitude);
    done = VisitForm<CCurrentSensorDlg>(visit, CurrentSensorForm(&table), name) && done;
    Put(&table, "CSSN", "CS1043");
  }
  CoilForm coil(&table, CoilModels());
  coil.Open();
  coil.Model().SetIndex(CoilForm::kType, 1);
  coil.OnEdited(CoilForm::kType);
  QtPrompts prompts;
  CCoilDlg dialog(&coil, &prompts, nullptr);
  return visit(&dialog, "coil") && done;
}

bool VisitBoxStatus(ParamTable table, const Visit& visit) {
  using Form = BoxStatusForm;
  bool done = VisitForm<CBoxStatusDlg>(visit, Form(&table), "box-status-empty");
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
  return VisitForm<CBoxStatusDlg>(visit, Form(&table), "box-status") && done;
}

// The table against its file and the defaults, and a values file with a line of each kind.
bool VisitChanges(COrvaneApp* app, const QString& survey, const Visit& visit) {
  COrvaneDoc& doc = app->Document();
  CMainFrame& frame = app->Frame();
  bool done = doc.OnOpenDocument(survey + QStringLiteral("/SIP/Startup.tbl"));
  for (const auto& [key, text] :
       std::initializer_list<std::pair<const char*, const char*>>{{"TECH", "3"},
                                                                  {"CMPY", "Northern Lights"},
                                                                  {"LFRQ", "60"},
                                                                  {"L2NS", "0.333333333333"}}) {
    Put(&doc.Table(), key, text);
  }
  doc.NoteStep(QStringLiteral("Raw Parameters"));
  frame.resize(1180, 690);
  auto* dock = frame.findChild<ChangesDock*>();
  dock->ShowAgainst(Against::kFile);
  QApplication::processEvents();
  done = visit(&frame, "changes-file") && done;
  dock->ShowAgainst(Against::kDefaults);
  QApplication::processEvents();
  done = visit(&frame, "changes-defaults") && done;
  dock->hide();
  const Meanings meanings;
  SaveValuesDlg save(
      &doc.Table(), &meanings,
      {{QStringLiteral("&Changed since it was opened or saved"), {"TECH", "FTPCPWD"}},
       {QStringLiteral("&Different in the window Changes"), {}},
       {QStringLiteral("&All"), AllKeys(doc.Table())}},
      nullptr);
  done = visit(&save, "save-values") && done;
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("standard.txt"));
  constexpr std::string_view kLines =
      "# our standard\nTECH=1\nCMPY=Northern Lights\nNOSUCH=3\nLFRQ=12abc\nTBVI=2\n";
  ApplyValuesDlg apply(&doc.Table(), &meanings, nullptr);
  done = WriteFile(PathFromText(path), std::as_bytes(std::span(kLines))) && apply.LoadFile(path) &&
         visit(&apply, "apply-values") && done;
  doc.OnNewDocument();
  return done;
}

// What takes files to be known comes a moment later.
void WaitForFiles(CheckDock* dock) {
  QEventLoop wait;
  QObject::connect(dock->findChild<FileCheck*>(), &FileCheck::done, &wait, &QEventLoop::quit);
  dock->LookAtFiles();
  wait.exec();
  QApplication::processEvents();
}

// The table at a glance; a new one with the ways to begin, on a small screen too.
bool VisitMain(COrvaneApp* app, const QString& survey, const Visit& visit) {
  COrvaneDoc& doc = app->Document();
  CMainFrame& frame = app->Frame();
  auto* dock = frame.findChild<CheckDock*>();
  bool done =
      !doc.Path().isEmpty() || doc.OnOpenDocument(survey + QStringLiteral("/SIP/Startup.tbl"));
  dock->now = [] {
    ParamTime time;
    static_cast<void>(ParseParamTimeStrictly("2026/11/20 06:00:00", &time));
    return time;
  };
  dock->Follow();
  WaitForFiles(dock);
  done = visit(&frame, "main-window") && done;
  const QSize size = frame.size();
  frame.resize(660, 340);  // a field laptop at 200 %
  done = visit(&frame, "main-window-small") && done;
  frame.resize(size);
  const QString path = doc.Path();
  doc.OnNewDocument();
  auto* view = frame.findChild<COrvaneView*>();
  view->Start()->SetRecent(
      {survey + QStringLiteral("/SIP/Startup.tbl"), survey + QStringLiteral("/MT/Startup.tbl")});
  view->ShowStart(true);
  WaitForFiles(dock);
  done = visit(&frame, "main-window-start") && done;
  view->ShowStart(false);
  return doc.OnOpenDocument(path) && done;
}

// What the check says of a spread with a gap.
bool VisitCheck(COrvaneApp* app, const QString& survey, const Visit& visit) {
  COrvaneDoc& doc = app->Document();
  CMainFrame& frame = app->Frame();
  bool done = doc.OnOpenDocument(survey + QStringLiteral("/SIP/Startup.tbl"));
  auto* dock = frame.findChild<CheckDock*>();
  Put(&doc.Table(), "SN02", "0");
  doc.NoteStep(QStringLiteral("Raw Parameters"));
  frame.resize(1180, 690);
  dock->show();
  WaitForFiles(dock);
  done = visit(&frame, "morning-check") && done;
  dock->hide();
  doc.OnNewDocument();
  return done;
}

// A batch of three files, one of which cannot be converted, and another that is under way.
bool VisitBatch(const Visit& visit) {
  Conversion conversion;
  conversion.outputs_of = [](const std::string& input) {
    return std::vector{WithExtension(input, ".csv")};
  };
  conversion.job = [](BatchTask& task) {
    return task.Input().filename() == "2417B02.trs"
               ? BatchFailed("cannot be read: Permission denied")
               : BatchDone(task.Outputs(),
                           task.Input().filename() == "2417B03.trs" ? "cut at offset 4810" : "");
  };
  const std::filesystem::path folder = "/home/crew/survey/SIP";
  const std::vector files = {folder / "2417B01.trs", folder / "2417B02.trs",
                             folder / "2417B03.trs"};
  Batch done_batch({conversion, files, {}, 0});
  done_batch.Start();
  done_batch.Wait();
  const TextEditor editor;
  CBatchResultDlg results(done_batch, QStringLiteral("2 files are converted to ASCII file!"),
                          &editor, nullptr);
  bool done = visit(&results, "batch-results");
  CFECFileDialog dialog(QStringLiteral("Restack Time Series File"),
                        "Tss File (*.tss)|*.tss|All Files (*.*)|*.*||", QDir::rootPath(), nullptr);
  done = visit(&dialog, "batch-files") && done;

  Batch batch({conversion, files, {}, 0});
  CBatchProgressDlg progress(
      &batch, QStringLiteral("Convert Frequency Stack Result File(s) to ASCII File(s)"), nullptr);
  progress.findChild<QLabel*>(QStringLiteral("file"))->setText(QStringLiteral("2417B02.trs"));
  progress.findChild<QLabel*>(QStringLiteral("count"))
      ->setText(QStringLiteral("1 of 3 files, 12.5 MB of 31.0 MB"));
  progress.findChild<QLabel*>(QStringLiteral("time"))->setText(QStringLiteral("about 4 s left"));
  progress.findChild<QProgressBar*>()->setValue(403);
  return visit(&progress, "batch-progress") && done;
}

// A record of 12 channels, as many as are drawn, with a spike of one scan in the fifth.
QString WriteTwelveChannels(const QString& folder, const ParamTable& table) {
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
  ParamTable companion = table;
  static_cast<void>(
      SaveParamFile(&companion, PathFromText(folder + QStringLiteral("/TWELVE.TBL")), {}));
  return path;
}

// The spectrum beside a waveform: of a record, then with calibrations and the cursor at a harmonic.
bool VisitSpectrum(COrvaneApp* app, const QString& survey, const Visit& visit) {
  CMainFrame& frame = app->Frame();
  auto* display = new CWaveformDisplay(&app->Document().Asking());
  const Result<> opened =
      display->View().Open(PathFromText(survey + QStringLiteral("/SIP/2417.TSS")));
  frame.Displays().Show(display);
  frame.show();
  auto* dock = frame.findChild<SpectrumDock*>();
  frame.Command(kViewSpectrum)->trigger();
  QApplication::processEvents();
  display->ShowView();
  bool done = opened && visit(&frame, "spectrum");
  dock->SetCalibrations(survey + QStringLiteral("/Calibration"));
  dock->View().MoveCursor(1);
  dock->View().MoveToHarmonic(1);
  display->ShowView();
  dock->Plot()->cursorMoved();
  QApplication::processEvents();
  done = visit(&frame, "spectrum-corrected") && done;
  dock->SetCalibrations({});
  frame.Command(kViewSpectrum)->trigger();
  return done;
}

// Decays, or amplitudes and phases, beside a waveform.
bool VisitDecays(COrvaneApp* app, const QString& survey, const Visit& visit) {
  CMainFrame& frame = app->Frame();
  bool done = true;
  frame.show();
  for (const char* method : {"TDIP", "SIP", "MT"}) {
    auto* display = new CWaveformDisplay(&app->Document().Asking());
    const QString path = survey + QStringLiteral("/%1/2417.TSS").arg(QLatin1String(method));
    done = display->View().Open(PathFromText(path)) && done;
    frame.Displays().Show(display);
    auto* dock = frame.findChild<DecayDock*>();
    if (!dock->isVisible()) {
      frame.Command(kViewDecay)->trigger();
    }
    display->ShowView();
    while (dock->View().IsRunning()) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    if (auto* log = dock->findChild<QCheckBox*>(QStringLiteral("decay-log-y"))) {
      log->setChecked(QLatin1String(method) == QLatin1String("TDIP"));
    }
    QApplication::processEvents();
    done = visit(&frame, ("decay-" + QByteArray(method).toLower()).constData()) && done;
  }
  frame.Command(kViewDecay)->trigger();
  return done;
}

// The main window with a waveform: each method, a bad record, a part with cursors, 12 channels.
bool VisitWaveforms(COrvaneApp* app, const QString& survey, const Visit& visit) {
  CMainFrame& frame = app->Frame();
  const QTemporaryDir folder;
  bool done = true;
  const auto show = [&](const QString& path) {
    auto* display = new CWaveformDisplay(&app->Document().Asking());
    // Without the messages that the display's own way of opening shows.
    const Result<> opened = display->View().Open(PathFromText(path));
    display->Book()->Follow(display->View().File());
    while (!display->Book()->IsDone()) {
      QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    frame.Displays().Show(display);
    frame.resize(1180, 690);
    QApplication::processEvents();
    display->ShowView();
    done = opened && done;
    return display;
  };
  for (const char* method : {"SIP", "TDIP", "TDEM", "CSAMT", "MT", "FDEM"}) {
    show(survey + QStringLiteral("/%1/2417.TSS").arg(QLatin1String(method)));
    done = visit(&frame, ("waveform-" + QByteArray(method).toLower()).constData()) && done;
  }
  auto* display = show(survey + QStringLiteral("/TDIP/2417.TSS"));
  WaveformView& view = display->View();
  if (view.NextBad()) {
    display->ShowView();
    done = visit(&frame, "waveform-bad") && done;
  }
  static_cast<void>(view.First());
  view.ShowTimes(view.EndTime() * 0.2, view.EndTime() * 0.4);
  view.SetCursor(WaveformView::kFirstCursor, view.EndTime() * 0.25);
  view.SetCursor(WaveformView::kSecondCursor, view.EndTime() * 0.33);
  display->ShowView();
  QApplication::processEvents();
  display->ShowView();
  done = visit(&frame, "waveform-cursors") && done;
  RecordShape shape;
  shape.filter.low_pass = 5;
  shape.folds = true;
  view.SetShape(shape);
  display->ShowView();
  QApplication::processEvents();
  done = visit(&frame, "waveform-folded") && done;
  view.SetShape({});
  const WaveformSettings settings_before = view.Settings();
  WaveformSettings clock = settings_before;
  clock.has_clock = true;
  clock.has_counts = true;
  view.SetSettings(clock);
  for (const char* command : {"select-next", "enlarge", "select-next", "hide"}) {
    display->findChild<QAction*>(QLatin1String(command))->trigger();
  }
  QApplication::processEvents();
  done = visit(&frame, "waveform-arranged") && done;
  view.SetSettings(settings_before);
  display->findChild<QAction*>(QStringLiteral("show-all"))->trigger();
  display->findChild<QAction*>(QStringLiteral("even-heights"))->trigger();
  frame.Command(kViewRecords)->trigger();
  QApplication::processEvents();
  done = visit(&frame, "waveform-records") && done;
  frame.Command(kViewRecords)->trigger();
  show(WriteTwelveChannels(folder.path(), app->Document().Table()));
  done = visit(&frame, "waveform-twelve") && done;
  frame.resize(660, 340);  // a field laptop at 200 %
  done = visit(&frame, "waveform-twelve-small") && done;
  frame.resize(1180, 690);
  done = VisitSpectrum(app, survey, visit) && done;
  done = VisitDecays(app, survey, visit) && done;
  CPictureSizeDlg size({1180, 600}, nullptr);
  done = visit(&size, "picture-size") && done;
  WaveformForm form(display->View());
  QtPrompts prompts;
  CWaveformDlg settings(&form, &display->View(), &prompts, nullptr);
  done = visit(&settings, "waveform-parameters") && done;
  WaveformGainForm gain_form(display->View());
  CWaveformGainDlg gains(&gain_form, &display->View(), &prompts, nullptr);
  done = visit(&gains, "waveform-gains") && done;
  frame.Displays().Close();
  // What has a file open goes before the file's folder does.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  return done;
}

// The main window with stack results: curves, with log axes, an item as points.
bool VisitStacks(COrvaneApp* app, const QString& survey, const Visit& visit) {
  CMainFrame& frame = app->Frame();
  frame.resize(1180, 690);
  bool done = frame.Displays().OpenStack(survey + QStringLiteral("/TDIP/2417.trs"));
  auto* display = qobject_cast<CStackDisplay*>(frame.Display());
  done = display != nullptr && visit(&frame, "stack-results") && done;
  for (const char* name : {"all", "windows", "log-x", "log-y"}) {
    auto* action = display->findChild<QAction*>(QString::fromLatin1(name));
    if (action->isEnabled()) {
      action->trigger();
    }
  }
  done = visit(&frame, "stack-results-log") && done;
  done = frame.Displays().OpenStack(survey + QStringLiteral("/CSAMT/2417.trs")) && done;
  auto* over = frame.Display()->findChild<QComboBox*>(QStringLiteral("against"));
  over->setCurrentIndex(1);
  emit over->activated(1);
  done = visit(&frame, "stack-results-points") && done;
  frame.Displays().Close();
  return done;
}

// Where in the example's box calibration a pass begins.
qsizetype PassStart(std::size_t pass) {
  constexpr std::size_t kChannels = 6;
  std::size_t records = 0;
  for (std::size_t before = 0; before < pass; ++before) {
    records += IsModelPass(before) ? 33 : 12;
  }
  return static_cast<qsizetype>(sizeof(CalHeader) + records * CalFileRecord::BytesFor(kChannels));
}

// A box calibration that ends too early, and one with the passes of two filters in each other's
// place.
bool VisitDoubtfulCalibrations(COrvaneApp* app, const QString& path, const Visit& visit) {
  const QTemporaryDir folder;
  QFile file(path);
  if (!folder.isValid() || !file.open(QIODevice::ReadOnly)) {
    return false;
  }
  const QByteArray whole = file.readAll();
  const auto passes = [&whole](std::size_t from, std::size_t to) {
    return whole.mid(PassStart(from), PassStart(to) - PassStart(from));
  };
  const std::pair<const char*, QByteArray> spoilt[] = {
      {"calibration-short", whole.left(PassStart(12))},
      {"calibration-swapped",
       whole.left(PassStart(13)) + passes(14, 15) + passes(13, 14) + whole.mid(PassStart(15))},
  };
  bool done = true;
  for (const auto& [name, bytes] : spoilt) {
    QFile copy(folder.filePath(QStringLiteral("2417.CLB")));
    done = copy.open(QIODevice::WriteOnly) && copy.write(bytes) == bytes.size() && done;
    copy.close();
    done = app->Frame().Displays().OpenCalibration(copy.fileName()) && done;
    auto* display = qobject_cast<CCalibrationDisplay*>(app->Frame().Display());
    display->View().SetModel(true);
    display->ShowView();
    done = visit(&app->Frame(), name) && done;
    CFitReportDlg fit(*display->View().Model(), &app->Frame());
    done = visit(&fit, (std::string(name) + "-report").c_str()) && done;
  }
  return done;
}

// The main window with a calibration: box, coil, all channels, comparisons, empty ranges; the
// dialog.
bool VisitCalibrations(COrvaneApp* app, const QString& folder, const Visit& visit) {
  CMainFrame& frame = app->Frame();
  frame.resize(1180, 690);
  bool done = true;
  const auto show = [&](const char* name) {
    done = frame.Displays().OpenCalibration(folder + QLatin1String(name)) && done;
    return qobject_cast<CCalibrationDisplay*>(frame.Display());
  };
  const auto draw = [&](const char* name) { done = visit(&frame, name) && done; };
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
  CFitReportDlg fit(*display->View().Model(), &frame);
  done = visit(&fit, "calibration-fit-report") && done;
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
  const auto one = ReadComparedCal(display->View().Curves().path);
  const auto other = ReadComparedCal(display->View().ReferencePath());
  if (one && other) {
    if (auto comparison = Compare(*one, *other)) {
      CCompareDlg dialog(std::move(*comparison), &frame);
      done = visit(&dialog, "calibration-compare") && done;
    }
  }
  frame.resize(660, 340);  // a field laptop at 200 %
  draw("calibration-small");
  frame.resize(1180, 690);
  CalDisplay ranges;
  ranges.min_amplitude = ranges.max_amplitude;
  display->View().SetDisplay(ranges);
  display->ShowView();
  draw("calibration-empty");
  display->View().SetDisplay({});
  done = VisitDoubtfulCalibrations(app, folder + QStringLiteral("/2417.CLB"), visit) && done;
  CalDisplayForm form(CalDisplay{});
  QtPrompts prompts;
  CCalibrationDlg dialog(&form, &ranges, &prompts, nullptr);
  done = visit(&dialog, "calibration-parameters") && done;
  SpectraForm spectra_form(folder.toStdString());
  CSpectraDlg spectra(&spectra_form, &prompts, nullptr);
  done = visit(&spectra, "calibrated-spectra") && done;
  spectra_form.Model().SetText(SpectraForm::kHarmonics, "many");  // what OK would refuse
  done = visit(&spectra, "calibrated-spectra-fault") && done;
  NetcdfForm netcdf_form;
  CNetcdfDlg netcdf(&netcdf_form, &prompts, nullptr);
  done = visit(&netcdf, "netcdf") && done;
  MseedForm mseed_form("XX", folder.toStdString());
  mseed_form.Model().SetIndex(MseedForm::kHasStation, 1);
  mseed_form.Follow();
  CMseedDlg mseed(&mseed_form, &prompts, nullptr);
  done = visit(&mseed, "mseed") && done;
  frame.Displays().Close();
  return done;
}

}  // namespace

constexpr int kBand2Row = 14;  // of "L2NS" among the raw parameters

bool VisitEveryWindow(COrvaneApp* app, const QString& survey, const Visit& visit) {
  CMainFrame& frame = app->Frame();
  bool done = VisitMain(app, survey, visit);

  const Meanings meanings(TransmitterModels());
  const auto explain = [&meanings](const ParamEntry& entry) {
    return RawMeaningOf(meanings, entry);
  };
  CParamTableDlg raw(&app->Document().Table(), &frame, {}, explain, app->Document().FileTable());
  done = visit(&raw, "raw-parameters") && done;
  raw.findChild<QLineEdit*>(QStringLiteral("filter"))->setText(QStringLiteral("SRVY"));
  done = visit(&raw, "raw-parameters-filtered") && done;
  ParamTable odd = app->Document().Table();
  CParamTableDlg cautions(&odd, &frame, {}, explain, app->Document().FileTable());
  auto* grid = cautions.findChild<CGridCtrl*>(QString::number(CParamTableDlg::kGrid));
  grid->SetFocusCell(kBand2Row, kValueColumn);
  grid->PasteText(QStringLiteral("7 records"));
  grid->SetItemStar(kBand2Row + 1, kMeaningColumn, true);
  done = visit(&cautions, "raw-parameters-cautions") && done;

  done = VisitSetup(app, visit) && done;
  done = VisitMaps(app, survey, visit) && done;
  done = VisitSurvey(survey, visit) && done;
  done = VisitAcquisition(app->Document().Table(), visit) && done;
  done = VisitStepping(app->Document().Table(), visit) && done;

  done = VisitCommunications(app->Document().Table(), visit) && done;
  done = VisitSensors(app->Document().Table(), visit) && done;
  done = VisitBoxStatus(app->Document().Table(), visit) && done;

  done = VisitBatch(visit) && done;
  done = VisitWaveforms(app, survey, visit) && done;
  done = VisitStacks(app, survey, visit) && done;
  done = VisitCalibrations(app, survey + QStringLiteral("/Calibration"), visit) && done;

  done = VisitOffer(app, visit) && done;
  done = VisitChangedFile(app, visit) && done;
  done = VisitChanges(app, survey, visit) && done;
  done = VisitCheck(app, survey, visit) && done;
  CAboutDlg about(&frame);
  return visit(&about, "about") && done;
}

}  // namespace orvane::examples
