// SPDX-License-Identifier: GPL-3.0-or-later
// How fast the windows are, offscreen: medians of several runs in one process.
#ifdef __linux__
#include <malloc.h>
#endif

#include <QAbstractTableModel>
#include <QLineEdit>
#include <QMenuBar>
#include <QTableView>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <vector>

#include "app/command_map.h"
#include "app/orvane_app.h"
#include "app/qt_prompts.h"
#include "app/table_history.h"
#include "changes/widgets/changes_dock.h"
#include "editors/raw_table.h"
#include "editors/widgets/acq_param_dlg.h"
#include "editors/widgets/param_table_dlg.h"
#include "editors/widgets/site_dlg.h"
#include "editors/widgets/spread_map_view.h"
#include "editors/widgets/startup_dlg.h"
#include "files/file_io.h"
#include "meaning/explain.h"
#include "median_time.h"
#include "response/widgets/calibration_display.h"
#include "spectrum_drawing.h"
#include "table/param_access.h"
#include "table/tbl_file.h"
#include "table/values_text.h"
#include "ui/qt_path.h"
#include "waveform_drawing.h"

namespace {

using orvane::bench::MedianMilliseconds;

void ShowAndPaint(QWidget* window) {
  window->show();
  QApplication::processEvents();
  window->grab();
}

// The plain way: the table's texts straight from a model.
class PlainModel : public QAbstractTableModel {
 public:
  explicit PlainModel(const orvane::RawTable* rows) : rows_(rows) {}
  int rowCount(const QModelIndex& = {}) const override { return rows_->Count(); }
  int columnCount(const QModelIndex& = {}) const override { return 5; }
  QVariant data(const QModelIndex& index, int role) const override {
    return role == Qt::DisplayRole
               ? QString::fromLatin1(
                     rows_->Cell(index.row() + 1, static_cast<orvane::RawColumn>(index.column()))
                         .c_str())
               : QVariant();
  }

 private:
  const orvane::RawTable* rows_;
};

// A bare window with the same menus and the table in a plain view.
void ShowBareWindow(orvane::ParamTable* table) {
  const orvane::RawTable rows(table);
  PlainModel model(&rows);
  QMainWindow window;
  for (const orvane::MenuRows& menu_rows : orvane::Menus()) {
    QMenu* menu = window.menuBar()->addMenu(QString::fromLatin1(menu_rows.title));
    for (const orvane::CommandRow& row : menu_rows.rows) {
      menu->addAction(QString::fromLatin1(row.text));
    }
  }
  auto* view = new QTableView(&window);
  view->setModel(&model);
  window.setCentralWidget(view);
  window.resize(960, 640);
  ShowAndPaint(&window);
}

// Opens a calibration of 12 channels and 500 records and draws all of them, or the first.
void TimeCalibration(const QString& path, bool shows_all, orvane::Prompts* prompts) {
  orvane::CalDisplay ranges;
  const double time = MedianMilliseconds([&] {
    orvane::CCalibrationDisplay display(&ranges, prompts);
    display.Open(path);
    if (shows_all) {
      display.View().ShowAll();
      display.ShowView();
    }
    display.resize(960, 600);
    ShowAndPaint(&display);
  });
  std::printf(
      "calibration of 12 channels and 500 records, %s, open and paint: %.1f ms (aim: under 50)\n",
      shows_all ? "all" : "the first", time);
}

// A calibration of so many channels, its records in passes of `pass_length`.
QString WriteCalibration(const QString& path, int channels, int records, int pass_length) {
  orvane::CalHeader header;
  header.ctyp = orvane::kBoxCal;
  header.nchn = static_cast<std::int16_t>(channels);
  const auto head = orvane::BytesOf(header);
  std::vector<std::byte> bytes(head.begin(), head.end());
  for (int i = 0; i < records; ++i) {
    orvane::CalFileRecord record;
    const int step = i % pass_length;
    record.frequency = static_cast<float>(std::pow(10, 4 - 5.0 * step / pass_length));
    record.step = static_cast<std::int16_t>(step + 1);
    for (std::size_t c = 0; c < record.channels.size(); ++c) {
      record.channels[c].real = static_cast<float>(1 + 0.1 * static_cast<double>(c));
      record.channels[c].imaginary = static_cast<float>(i) / 500;
    }
    const auto more =
        orvane::BytesOf(record).first(orvane::CalFileRecord::BytesFor(header.Channels()));
    bytes.insert(bytes.end(), more.begin(), more.end());
  }
  static_cast<void>(orvane::WriteFile(orvane::PathFromText(path), bytes));
  return path;
}

// Steps the cursor over a box of 15 passes with all channels shown.
void TimeCursor(const QString& folder, int channels, bool shows_model, orvane::Prompts* prompts) {
  constexpr int kPasses = 15;
  constexpr int kPassLength = 33;
  const QString path = WriteCalibration(folder + QStringLiteral("/passes.clb"), channels,
                                        kPasses * kPassLength, kPassLength);
  orvane::CalDisplay ranges;
  orvane::CCalibrationDisplay display(&ranges, prompts);
  display.Open(path);
  display.View().ShowAll();
  display.View().SetModel(shows_model);
  display.ShowView();
  display.resize(960, 600);
  ShowAndPaint(&display);
  auto* right = display.findChild<QAction*>(QStringLiteral("cursor-right"));
  right->trigger();  // the first shows the table
  QApplication::processEvents();
  const double step = MedianMilliseconds([right] {
    right->trigger();
    QApplication::processEvents();
  });
  const double key = MedianMilliseconds([right] { right->trigger(); });
  std::printf(
      "calibration of %d channels and %d passes%s, a step of the cursor: %.1f ms, with paint %.1f "
      "ms"
      " (aim: under 16)\n",
      channels, kPasses, shows_model ? " with model" : "", key, step);
}

// The dock with a row for every parameter, after an edit; and what a thousand steps take.
void TimeChanges(orvane::COrvaneApp* app) {
  orvane::COrvaneDoc& doc = app->Document();
  orvane::ParamTable& table = doc.Table();
  orvane::ParamTable other = table;
  for (const orvane::ParamKey key : orvane::AllKeys(table)) {
    orvane::ParamValue value = table.FindParam(key)->value;
    value[0] ^= 1U;
    static_cast<void>(other.SetStoredValue(key, value));
  }
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("other.tbl"));
  static_cast<void>(orvane::SaveParamFile(&other, orvane::PathFromText(path), {}));
  auto* dock = app->Frame().findChild<orvane::ChangesDock*>();
  dock->SetSecond(path);
  dock->ShowAgainst(orvane::Against::kTable);
  QApplication::processEvents();
  std::int32_t number = 0;
  const double update = MedianMilliseconds([&] {
    orvane::PutInt(&table, "LFRQ", ++number);
    dock->Follow();
  });
  std::printf("changes of %zu rows, after an edit: %.2f ms (aim: under 2)\n", dock->Rows().size(),
              update);
#ifdef __linux__
  const std::size_t before = mallinfo2().uordblks;
  {
    orvane::TableHistory history(&table);
    for (int i = 0; i < orvane::TableHistory::kMostSteps; ++i) {
      orvane::PutInt(&table, "LFRQ", ++number);
      history.NoteStep(QStringLiteral("Raw Parameters"));
    }
    std::printf("1,000 steps to undo: %.1f MB (aim: under 25)\n",
                static_cast<double>(mallinfo2().uordblks - before) / 1e6);
  }
#endif
  dock->hide();
}

// More channels than any spread has, in a wave, with marks; choosing one paints all of them.
void TimeMap() {
  constexpr int kChannels = 60;
  orvane::SpreadMap map;
  for (int i = 0; i < kChannels; ++i) {
    const auto at = [](int n) { return orvane::MapPoint{50.0 * n, 200 * std::sin(0.3 * n)}; };
    orvane::MapItem item;
    item.box = 1 + i / 8;
    item.channel = i % 8;
    item.name = "Ex" + std::to_string(i);
    item.points = {at(i), at(i + 1)};
    map.items.push_back(item);
  }
  orvane::SpreadMapView view(nullptr);
  view.resize(1180, 690);
  view.SetMap(map);
  view.SetMarked({{2, -1, "too long"}});
  ShowAndPaint(&view);
  int channel = 0;
  const double time = MedianMilliseconds([&] {
    view.Choose(1, ++channel % 8);
    view.grab();
  });
  std::printf("map of %d channels, paint: %.1f ms (aim: under 16)\n", kChannels, time);
}

orvane::Explain ExplainBy(const orvane::Meanings& meanings) {
  return [&meanings](const orvane::ParamEntry& entry) {
    return orvane::RawMeaningOf(meanings, entry);
  };
}

// A key in the filter with all that the editor compares, over painting the same rows alone.
void TimeRawFilter(orvane::ParamTable* table) {
  const orvane::Meanings meanings;
  const orvane::ParamTable file = *table;
  orvane::CParamTableDlg dialog(table, nullptr, {}, ExplainBy(meanings), &file);
  ShowAndPaint(&dialog);
  auto* filter = dialog.findChild<QLineEdit*>(QStringLiteral("filter"));
  const auto paint = [&dialog] {
    QApplication::processEvents();
    dialog.grab();
  };
  for (const bool has_switch : {false, true}) {
    const auto box = QStringLiteral("switch%1").arg(orvane::kInNoDialog);
    dialog.findChild<QCheckBox*>(box)->setChecked(has_switch);
    const double painting = MedianMilliseconds(paint);
    const double filtering = MedianMilliseconds([&] {
      filter->setText(filter->text().isEmpty() ? QStringLiteral("a") : QString());
      paint();
    });
    std::printf(
        "raw editor, filter%s and paint: %.1f ms (aim: under 16), painting alone: %.1f ms,"
        " ratio %.2f\n",
        has_switch ? " with a switch" : "", filtering, painting, filtering / painting);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QTemporaryDir settings;
  qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
  orvane::COrvaneApp app(argc, argv);
  app.InitInstance({});
  orvane::ParamTable& table = app.Document().Table();

  const auto show_frame = [&app] {
    orvane::QtPrompts prompts;
    orvane::StatusNotices notices;
    orvane::COrvaneDoc doc(&app.Document().Table(), &prompts, &notices);
    orvane::CMainFrame frame(&doc, &prompts, &notices);
    doc.OnNewDocument();
    ShowAndPaint(&frame);
  };
  show_frame();  // fonts and styles are loaded once
  ShowBareWindow(&table);
  const double bare = MedianMilliseconds([&table] { ShowBareWindow(&table); });
  const double ours = MedianMilliseconds(show_frame);
  std::printf(
      "first window: %.1f ms, a bare window with the same menus and a 719-row view: %.1f ms,"
      " ratio %.2f (aim: at most 1.3)\n",
      ours, bare, ours / bare);

  const orvane::Meanings meanings;
  const double open = MedianMilliseconds([&table, &meanings] {
    orvane::CParamTableDlg dialog(&table, nullptr, {}, ExplainBy(meanings));
    ShowAndPaint(&dialog);
  });
  std::printf("raw editor, open and paint: %.1f ms (aim: under 16)\n", open);

  orvane::QtPrompts prompts;
  const orvane::UtcClock clock;
  const double open_acquisition = MedianMilliseconds([&] {
    orvane::AcqForm form(&table, &clock);
    form.Open();
    orvane::CAcqParamDlg acquisition(&form, &prompts);
    ShowAndPaint(&acquisition);
  });
  std::printf("acquisition parameters, open and paint: %.1f ms (aim: under 50)\n",
              open_acquisition);

  orvane::PutInt(&table, "TECH", orvane::kSip);
  const double site = MedianMilliseconds([&app, &table] {
    orvane::SiteForm form(&table, orvane::kSip, orvane::TransmitterModels());
    static_cast<void>(form.Open());
    orvane::CSiteDlg site_dialog(&form, &table, &app.Document().Asking(), nullptr);
    ShowAndPaint(&site_dialog);
  });
  std::printf("site setup, open and paint: %.1f ms (aim: under 50)\n", site);
  orvane::StartupRun run(&table, {}, &app.Document().Asking());
  const double startup = MedianMilliseconds([&app, &table, &run] {
    orvane::StartupForm form(&table, {1}, {});
    orvane::CStartupDlg startup_dialog(&form, &run, &app.Document().Asking(), nullptr);
    ShowAndPaint(&startup_dialog);
  });
  std::printf("start-up file, open and paint: %.1f ms (aim: under 50)\n", startup);

  TimeChanges(&app);
  TimeRawFilter(&table);
  TimeMap();

  const QString calibration = WriteCalibration(settings.path() + QStringLiteral("/box.clb"),
                                               orvane::kMaxCalChannels, 500, 500);
  TimeCalibration(calibration, false, &prompts);
  TimeCalibration(calibration, true, &prompts);
  for (const int channels : {1, 6, 12}) {
    TimeCursor(settings.path(), channels, false, &prompts);
  }
  TimeCursor(settings.path(), 12, true, &prompts);
  orvane::bench::TimeSpectra(orvane::PathFromText(settings.path()));
  orvane::bench::TimeWaveforms(orvane::PathFromText(settings.path()));
  return 0;
}
