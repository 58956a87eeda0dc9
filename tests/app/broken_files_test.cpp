// SPDX-License-Identifier: GPL-3.0-or-later
// Broken files of every kind in the real windows: opened, looked at, converted, taken up after a
// crash. None ends the program or lets it wait, and what is refused is told with the file's name.
#include <qcustomplot.h>

#include <QAction>
#include <cstdlib>
#include <random>

#include "app/emergency_copy.h"
#include "calibration/archive/archive.h"
#include "calibration/cal_text.h"
#include "spectra/calibrated_spectra.h"
#include "stepping/schedule_text.h"
#include "support/archive_bytes.h"
#include "support/example_survey.h"
#include "support/frame_test.h"
#include "table/table_text.h"
#include "table/tbl_file.h"
#include "timeseries/restack.h"
#include "timeseries/stack_csv.h"
#include "timeseries/time_series_text.h"

namespace orvane::testing {
namespace {

namespace fs = std::filesystem;

// Many once under the sanitizers, not in their runs in other languages.
int FilesToTry() {
#ifdef __SANITIZE_ADDRESS__
  return std::getenv("LOCPATH") == nullptr ? 300 : 60;
#else
  return 60;
#endif
}
constexpr unsigned kSeed = 22;

constexpr const char* kNotRead = "";  // no file of the survey: made here
constexpr const char* kArchive = ".cal";
constexpr const char* kCopy = ".orvane";

struct Kind {
  const char* extension;
  const char* model;  // of the example survey
};

constexpr auto kKinds = std::to_array<Kind>({{".tbl", "SIP/Startup.tbl"},
                                             {".TSS", "SIP/2417.TSS"},
                                             {".TS2", "MT/2417.TS2"},
                                             {".TSK", "CSAMT/2417.TSS"},
                                             {".trs", "TDIP/2417.trs"},
                                             {".TFS", "FDEM/2.TFS"},
                                             {".CLB", "Calibration/2417.CLB"},
                                             {".CLC", "Calibration/2041.CLC"},
                                             {kArchive, kNotRead},
                                             {kCopy, kNotRead}});

// Files as disks, cables and other programs leave them.
class Breaker {
 public:
  std::size_t Below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

  std::string Broken(std::string bytes) {
    const std::size_t at = Below(bytes.size());
    const std::size_t size = std::min(bytes.size() - at, Below(600));
    switch (Below(6)) {
      case 0:
        return bytes.substr(0, at);
      case 1:
        return bytes.replace(at, size, size, '\0');
      case 2:
        return bytes.insert(at, bytes.substr(at, size));
      case 3:  // a huge count, mostly in a header
        return bytes.replace(Below(std::min<std::size_t>(bytes.size(), 300)), 4,
                             Below(2) == 0 ? "\xFF\xFF\xFF\x7F" : "\xFF\xFF\xFF\xFF");
      case 4:
        return bytes.erase(at, size);
      default:
        for (std::size_t i = 0; !bytes.empty() && i <= size / 30; ++i) {
          bytes[Below(bytes.size())] ^= static_cast<char>(1U << Below(8));
        }
        return bytes;
    }
  }

 private:
  std::mt19937 random_{kSeed};
};

class BrokenFiles : public testing::FrameTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(testing::MakeExampleSurvey(dir_ / "survey"));
    doc_.OnNewDocument();
    fs::create_directory(dir_ / "broken");
    fs::create_directory(dir_ / "out");
    QObject::connect(&answers_, &QTimer::timeout, [this] { Answer(); });
    answers_.start(1);
    frame_.show();
  }

  // Closes whatever waits for an answer, and keeps what it says.
  void Answer() {
    auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (const auto* box = qobject_cast<QMessageBox*>(window); box != nullptr) {
      said_ += box->text();
      QTest::keyClick(window, Qt::Key_Return);
    } else if (window != nullptr && window->findChild<QTreeWidget*>() != nullptr) {
      const auto* list = window->findChild<QTreeWidget*>();
      for (int row = 0; row < list->topLevelItemCount(); ++row) {
        rows_ << list->topLevelItem(row)->text(1);
      }
      window->reject();
    }
  }
  QString Notice() const { return frame_.findChild<QLabel*>(QStringLiteral("notice"))->text(); }

  std::string Model(const Kind& kind) const {
    if (kind.extension == kArchive) {
      return ArchiveBytes();
    }
    if (kind.extension == kCopy) {
      const auto image =
          UnsavedImage({(dir_ / "survey/SIP/Startup.tbl").string(), TblImage(table_, {})});
      return {reinterpret_cast<const char*>(image.data()), image.size()};
    }
    return ReadAll(dir_ / "survey" / kind.model);
  }
  // A waveform gets its table, right, broken or none.
  void AddCompanion(const Kind& kind, const fs::path& file) {
    const fs::path model = fs::path(dir_ / "survey" / kind.model).replace_extension(".TBL");
    if (*kind.model != '\0' && std::string_view(kind.extension).starts_with(".TS") &&
        breaker_.Below(4) > 0) {
      const std::string table = ReadAll(model);
      WriteAll(fs::path(file).replace_extension(".TBL"),
               breaker_.Below(2) == 0 ? table : breaker_.Broken(table));
    }
  }

  void Open(const fs::path& file) {
    said_.clear();
    const bool is_open = frame_.OpenAny(TextFromPath(file));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !frame_.Displays().IsReading(); }, 60000));
    if (!is_open) {
      ++refused_;
      const QString told = said_ + Notice();
      // kept: one old text is told without a name.
      EXPECT_TRUE(told.contains(TextFromPath(file.stem())) ||
                  said_ == QLatin1String("Failed to read calbration header!"))
          << told.toStdString();
    } else if (frame_.Display() != nullptr) {
      ++shown_;
      LookAround();
    }
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  // Every command of the display that asks nothing and stays with the file, in its order; the last
  // one closes it.
  void LookAround() {
    const auto commands = frame_.Display()->findChildren<QAction*>(Qt::FindDirectChildrenOnly);
    EXPECT_GT(commands.size(), 8);
    auto* plot = frame_.Display()->findChild<QCustomPlot*>();
    ASSERT_NE(plot, nullptr);
    for (const Qt::KeyboardModifier key : {Qt::NoModifier, Qt::ShiftModifier}) {
      QTest::mouseClick(plot, Qt::LeftButton, key);  // a cursor each
    }
    for (QAction* command : commands) {
      const bool stays = !command->text().endsWith(QLatin1String("...")) &&
                         !command->objectName().endsWith(QLatin1String("-file"));
      if (stays && frame_.Display() != nullptr) {
        command->trigger();
        QApplication::processEvents();
      }
    }
    frame_.ShowTable();
  }
  // A program that starts after a crash finds a broken copy and a right one.
  void TakeUp(const fs::path& broken, int number) {
    const fs::path folder = dir_ / ("copies" + std::to_string(number));
    fs::create_directory(folder);
    fs::copy_file(broken, folder / "unsaved-1.orvane");
    WriteAll(folder / "unsaved-2.orvane", Model({kCopy, kNotRead}));
    ParamTable table;
    COrvaneDoc doc(&table, &prompts_, &notices_);
    doc.OnNewDocument();
    EmergencyCopy copies(folder, &doc, &notices_);
    EXPECT_TRUE(copies.Offer(&prompts_));
    EXPECT_TRUE(doc.IsModified());
    EXPECT_TRUE(Notice().contains(QStringLiteral("unsaved-1.orvane"))) << Notice().toStdString();
    doc.OnCloseDocument();
  }
  void Convert(Conversion conversion, const std::vector<fs::path>& files) {
    constexpr Utility kUtility = {"Convert", "All Files (*.*)|*.*||", "", "%d files"};
    rows_.clear();
    utilities_.Convert(kUtility, std::move(conversion), files, dir_ / "out");
    EXPECT_EQ(rows_.size(), static_cast<int>(files.size()));
    for (const QString& row : rows_) {
      EXPECT_TRUE(row.startsWith(QStringLiteral("done")) || row.contains(QStringLiteral(": ")))
          << row.toStdString();
    }
  }

  Breaker breaker_;
  QTimer answers_;
  int refused_ = 0;
  int shown_ = 0;
  QString said_;
  QStringList rows_;
  UtilityCommands utilities_{&doc_, &prompts_, &notices_, &frame_};
};

TEST_F(BrokenFiles, NoneEndsTheProgramAndEachRefusalNamesItsFile) {
  const int count = FilesToTry();
  std::map<std::string_view, std::vector<fs::path>> files;
  for (int i = 0; i < count; ++i) {
    const Kind& kind = kKinds[static_cast<std::size_t>(i) % kKinds.size()];
    const fs::path file = dir_ / "broken" / ("broken" + std::to_string(i) + kind.extension);
    SCOPED_TRACE(file.string());
    const std::string bytes = breaker_.Broken(Model(kind));
    WriteAll(file, bytes);
    AddCompanion(kind, file);
    files[kind.extension].push_back(file);
    Open(file);
    if (kind.extension == kCopy) {
      TakeUp(file, i);
    } else if (kind.extension == kArchive) {
      const auto object = calobj::FromBytes(QByteArray::fromStdString(bytes));
      EXPECT_TRUE(!object || *object != nullptr);
    }
  }
  EXPECT_GT(refused_, count / 6);
  EXPECT_GT(shown_, count / 6);
  for (const char* waveforms : {".TSS", ".TS2", ".TSK"}) {
    Convert(TimeSeriesText(), files[waveforms]);
    Convert(Restack(), files[waveforms]);
    Convert(CalibratedSpectra({dir_ / "survey/Calibration"}), files[waveforms]);
  }
  Convert(TableText(), files[".tbl"]);
  Convert(ScheduleText(), files[".TFS"]);
  Convert(StackCsv(StackDomain::kTime), files[".trs"]);
  Convert(StackCsv(StackDomain::kFrequency), files[".trs"]);
  files[".CLB"].insert(files[".CLB"].end(), files[".CLC"].begin(), files[".CLC"].end());
  Convert(ExportCalToText(), files[".CLB"]);
}

}  // namespace
}  // namespace orvane::testing
