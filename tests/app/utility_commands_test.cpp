// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/utility_commands.h"

#include <QCheckBox>
#include <QListView>
#include <thread>
#include <tuple>

#include "app/qt_prompts.h"
#include "export/export_forms.h"
#include "support/frame_test.h"
#include "support/recording_help.h"
#include "support/sweeps.h"
#include "support/tbl_bytes.h"
#include "support/ts_bytes.h"
#include "table/table_text.h"
#include "ui/batch_progress_dlg.h"
#include "ui/file_dialogs.h"
#include "ui/file_ops.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

constexpr Utility kListing = {"Convert", "Tbl Files (*.tbl)|*.tbl||", "",
                              "%d files are converted to ASCII file!", 1};

class UtilityCommandsTest : public testing::DocTest {
 protected:
  void SetUp() override {
    utilities_.SetEditor(TextEditor([this](const QString&, const QStringList& arguments) {
      shown_ << arguments;
      return has_editor_;
    }));
  }
  std::filesystem::path Table(const char* name) {
    WriteAll(dir_ / name, HeaderV2() + RecordV2("TECH", 0, IntPT, "\x04"));
    return dir_ / name;
  }
  // What the windows that come up say; they are filled in and closed then.
  void Answer(const std::function<void()>& command) {
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [this] {
      auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      if (window == nullptr) {
        return;
      }
      if (const auto* box = qobject_cast<QMessageBox*>(window)) {
        said_ += box->text();
        if (QAbstractButton* answer = box->button(answer_); answer != nullptr) {
          answer->click();
          return;
        }
        if (key_ != Qt::Key_unknown) {
          QTest::keyClick(window, key_);
          return;
        }
      } else if (auto* files = qobject_cast<QFileDialog*>(window)) {
        files->setDirectory(TextFromPath(dir_.Path()));
        files->selectFile(chosen_);
        files->findChild<QLineEdit*>("out-folder")->setText(out_folder_);
      } else if (auto* folder = window->findChild<QLineEdit*>(QStringLiteral("1701"))) {
        folder->selectAll();
        QTest::keyClicks(folder, TextFromPath(dir_ / "cal"));
        auto* harmonics = window->findChild<QLineEdit*>(QStringLiteral("1703"));
        auto* fault = window->findChild<QLabel*>(QStringLiteral("caution1703"));
        harmonics->clear();
        EXPECT_TRUE(fault->isVisible() && fault->y() > harmonics->y() && !fault->text().isEmpty());
        QTest::keyClicks(harmonics, "20");
        EXPECT_FALSE(fault->isVisible());
      } else if (auto* network = window->findChild<QLineEdit*>(QStringLiteral("1721"))) {
        FillMseed(window, network);
      } else if (window->objectName() == QStringLiteral("netcdf")) {
        QTest::keyClicks(window->findChild<QLineEdit*>(QStringLiteral("1711")), "\b1");
      } else if (auto* message = window->findChild<QLabel*>(QStringLiteral("message"))) {
        said_ += message->text();
        counts_ = window->findChild<QLabel*>("counts")->text();
        auto* list = window->findChild<QTreeWidget*>();
        for (int row = 0; row < list->topLevelItemCount(); ++row) {
          rows_ << list->topLevelItem(row)->text(1);
        }
        list->setFocus();
        list->setCurrentItem(list->topLevelItem(list->topLevelItemCount() - 1));
        QTest::keyClick(list, Qt::Key_Return);  // a text opens, and the list stays
      } else {
        return;  // the progress goes by itself
      }
      QMetaObject::invokeMethod(window, "accept");
    });
    timer.start(5);
    command();
  }
  // Fields of the station follow its box; what OK would refuse is said below.
  static void FillMseed(QWidget* window, QLineEdit* network) {
    auto* latitude = window->findChild<QLineEdit*>(QStringLiteral("1726"));
    EXPECT_FALSE(latitude->isEnabled());
    QTest::keyClick(window->findChild<QCheckBox*>(QStringLiteral("1724")), Qt::Key_Space);
    EXPECT_TRUE(latitude->isEnabled());
    for (const char* control : {"1726", "1727", "1728"}) {
      QTest::keyClicks(window->findChild<QLineEdit*>(QLatin1String(control)), "12.5");
    }
    network->selectAll();
    QTest::keyClicks(network, "OV");
    QTest::keyClick(window->findChild<QLineEdit*>(QStringLiteral("1725")), Qt::Key_A,
                    Qt::ControlModifier);
    QTest::keyClick(window->findChild<QLineEdit*>(QStringLiteral("1725")), Qt::Key_Delete);
  }
  void Convert(std::vector<std::filesystem::path> files) {
    Answer([&] { utilities_.Convert(kListing, TableText(), std::move(files)); });
  }

  UtilityCommands utilities_{&doc_, &prompts_, &notices_, nullptr};
  bool has_editor_ = true;
  QString chosen_;
  QString out_folder_;
  QString counts_;
  QMessageBox::StandardButton answer_ = QMessageBox::NoButton;
  Qt::Key key_ = Qt::Key_unknown;
  QStringList shown_;
  QString said_;
  QStringList rows_;
};

TEST_F(UtilityCommandsTest, OneFileIsShownWithoutAMessage) {
  Convert({Table("A.tbl")});
  EXPECT_EQ(shown_, QStringList{TextFromPath(dir_ / "A.txt")});
  EXPECT_EQ(said_, QString());
  shown_.clear();
  has_editor_ = false;
  Convert({Table("A.tbl")});
  EXPECT_TRUE(said_.contains(QStringLiteral("could not be started"))) << said_.toStdString();
}

TEST_F(UtilityCommandsTest, ATextThatIsNotWrittenIsNotShown) {
  WriteAll(dir_ / "A.tbl", "short");
  Convert({dir_ / "A.tbl"});
  EXPECT_TRUE(shown_.isEmpty());
  EXPECT_TRUE(said_.contains(QStringLiteral("A.tbl: failed (3)"))) << said_.toStdString();
}

TEST_F(UtilityCommandsTest, SeveralFilesAreCountedAndListed) {
  WriteAll(dir_ / "B.tbl", "short");
  Convert({Table("A.tbl"), dir_ / "B.tbl", Table("C.tbl")});
  EXPECT_EQ(said_, QStringLiteral("3 files are converted to ASCII file!"));
  ASSERT_EQ(rows_.size(), 3);
  EXPECT_TRUE(rows_[0].startsWith(QStringLiteral("failed (3): "))) << "problems first";
  EXPECT_TRUE(rows_[1].startsWith(QStringLiteral("done")));
  EXPECT_TRUE(counts_.endsWith(QStringLiteral("1 failed"))) << counts_.toStdString();
  EXPECT_EQ(shown_, QStringList{TextFromPath(dir_ / "C.txt")});
}

TEST_F(UtilityCommandsTest, SpectraAskForTheFolderAndAboutAMissingSensor) {
  using namespace testing;  // NOLINT: the builders
  Sweeps sweeps;
  sweeps.parts = NominalParameters(0);
  std::filesystem::create_directory(dir_ / "cal");
  WriteAll(dir_ / "cal/2417.CLB", BoxBytes(sweeps, 1));
  WriteAll(dir_ / "a.TBL", HeaderV2() + Text("CHDEF1", "hx") + Whole("CHHX", 1) +
                               Text("HXSN", "COIL77") + Real("FSCV", 5));
  WriteAll(dir_ / "a.TSS",
           TsBytes{.frequency = 100, .samples = std::vector<int>(240, 1000)}.Bytes());
  chosen_ = QStringLiteral("a.TSS");
  for (const auto& [answer, state] : {std::pair(QMessageBox::No, QStringLiteral("left alone")),
                                      std::pair(QMessageBox::Cancel, QStringLiteral("cancelled")),
                                      std::pair(QMessageBox::Yes, QStringLiteral("done"))}) {
    said_.clear();
    rows_.clear();
    answer_ = answer;
    Answer([this] { utilities_.ConvertToSpectra(); });
    EXPECT_TRUE(
        said_.contains(QStringLiteral("77.CLC for channel 1, Do you want to continue "
                                      "wothout it?")))
        << said_.toStdString();
    ASSERT_EQ(rows_.size(), 1);
    EXPECT_TRUE(rows_[0].startsWith(state)) << rows_[0].toStdString();
    EXPECT_EQ(std::filesystem::exists(dir_ / "a_cal.txt"), answer == QMessageBox::Yes);
  }
}

TEST_F(UtilityCommandsTest, RecordingsGoToOtherPrograms) {
  using namespace testing;  // NOLINT: the builders
  Sweeps sweeps;
  sweeps.parts = NominalParameters(0);
  WriteAll(dir_ / "2417.CLB", BoxBytes(sweeps, 1));
  WriteAll(dir_ / "a.TBL", HeaderV2() + Text("CHDEF1", "ex") + Whole("CHEX", 1) + Real("FSCV", 5));
  WriteAll(dir_ / "a.TSS",
           TsBytes{.frequency = 100, .samples = std::vector<int>(240, 1000)}.Bytes());
  chosen_ = QStringLiteral("a.TSS");
  if (WhyNoNetcdf().empty()) {
    Answer([this] { utilities_.ConvertToNetcdf(); });
    EXPECT_EQ(rows_.join(QLatin1Char(' ')).left(4), QStringLiteral("done"));
    EXPECT_EQ(ReadAll(dir_ / "a.nc").substr(0, 4), "\x89HDF");
    EXPECT_FALSE(said_.contains(QStringLiteral("exist")));
  }
  if (WhyNoMseed().empty()) {
    rows_.clear();
    Answer([this] { utilities_.ConvertToMseed(); });
    EXPECT_EQ(rows_.join(QLatin1Char(' ')).left(4), QStringLiteral("done"));
    EXPECT_EQ(ReadAll(dir_ / "a.mseed").substr(18, 2), "OV");
    EXPECT_NE(ReadAll(dir_ / "a.xml").find("<Latitude>12.5</Latitude>"), std::string::npos)
        << rows_.join(QLatin1Char(' ')).toStdString();
  }
}

TEST_F(UtilityCommandsTest, WhatMayBeAnothersIsReplacedOnRequestOnly) {
  using namespace testing;  // NOLINT: the builders
  static constexpr Utility kCareful = {
      "Convert", "Tbl Files (*.tbl)|*.tbl||", "", "%d files", 0, "", true};
  const auto convert = [this](std::vector<std::filesystem::path> files) {
    said_.clear();
    Answer([&] { utilities_.Convert(kCareful, TableText(), std::move(files), dir_ / "out"); });
  };
  std::filesystem::create_directory(dir_ / "out");
  WriteAll(dir_ / "out/B.txt", "another's");
  answer_ = QMessageBox::No;
  convert({Table("A.tbl"), Table("B.tbl")});
  EXPECT_TRUE(QDir::fromNativeSeparators(said_).endsWith(
      QStringLiteral("out/B.txt exists already. Replace it?")))
      << said_.toStdString();
  EXPECT_EQ(ReadAll(dir_ / "out/B.txt"), "another's");
  EXPECT_FALSE(std::filesystem::exists(dir_ / "out/A.txt"));
  convert({Table("A.tbl")});
  EXPECT_EQ(said_, QStringLiteral("1 files")) << "nothing is there";
  answer_ = QMessageBox::NoButton;
  key_ = Qt::Key_Return;
  convert({Table("A.tbl"), Table("B.tbl")});
  EXPECT_TRUE(said_.startsWith(QStringLiteral("2 files exist already, such as ")));
  EXPECT_EQ(ReadAll(dir_ / "out/B.txt"), "another's") << "Return loses nothing";
  answer_ = QMessageBox::Yes;
  convert({Table("A.tbl"), Table("B.tbl")});
  EXPECT_TRUE(said_.endsWith(QStringLiteral("2 files"))) << said_.toStdString();
  EXPECT_EQ(ReadAll(dir_ / "out/B.txt"), ReadAll(dir_ / "out/A.txt"));
}

TEST(ExportFormsTest, SayWhatTheyWouldRefuse) {
  struct Case {
    int control;
    const char* text;
    int fault;  // 0: none
  };
  for (const Case& one : std::vector<Case>{{MseedForm::kNetwork, "", MseedForm::kNetwork},
                                           {MseedForm::kNetwork, "ABC", MseedForm::kNetwork},
                                           {MseedForm::kNetwork, "a1", 0},
                                           {MseedForm::kLatitude, "90", 0},
                                           {MseedForm::kLatitude, "90.1", MseedForm::kLatitude},
                                           {MseedForm::kLongitude, "nan", MseedForm::kLongitude},
                                           {MseedForm::kLongitude, "-180", 0},
                                           {MseedForm::kElevation, "2,5", MseedForm::kElevation}}) {
    MseedForm form("", "");
    form.Model().SetIndex(MseedForm::kHasStation, 1);
    form.Follow();
    form.Model().SetText(one.control, one.text);
    const auto fault = form.Fault();
    EXPECT_EQ(fault ? fault->control : 0, one.fault) << one.control << " " << one.text;
    form.Model().SetIndex(MseedForm::kHasStation, 0);
    form.Follow();
    EXPECT_EQ(form.Options().place.latitude, std::nullopt) << "only of a station";
  }
}

TEST_F(UtilityCommandsTest, RestackingAsksWhetherBadRecordsAreLeftOut) {
  using testing::TsBytes;
  WriteAll(dir_ / "a.TSS",
           TsBytes{.samples = {1}}.Bytes() + TsBytes{.samples = {5}, .status = 6}.Bytes());
  chosen_ = QStringLiteral("a.TSS");
  std::filesystem::create_directory(dir_ / "out");
  out_folder_ = QStringLiteral("out");  // in the folder of the files
  QStringList opened;
  utilities_.SetOpener([&opened](const QString& path) { opened << path; });
  for (const auto& [key, mean, told] :
       {std::tuple(Qt::Key_Return, 1U, "left out"), std::tuple(Qt::Key_Escape, 3U, "added")}) {
    said_.clear();
    rows_.clear();
    key_ = key;
    Answer([this] { utilities_.Restack(); });
    EXPECT_TRUE(said_.startsWith(QStringLiteral("a.TSS has records"))) << said_.toStdString();
    EXPECT_TRUE(said_.endsWith(QStringLiteral("1 files have been restacked!")));
    EXPECT_EQ(rows_, QStringList(QStringLiteral("done: record 2 is marked bad and was ") +
                                 QLatin1String(told)));
    EXPECT_EQ(ReadAll(dir_ / "out/A.TSK").substr(252), testing::Little(mean, 3));
    EXPECT_EQ(opened, QStringList(TextFromPath(dir_ / "out" / "A.TSK")));
    opened.clear();
  }
  // What the list beside the file names is not asked about, but said.
  const auto size = std::filesystem::file_size(dir_ / "a.TSS");
  WriteAll(dir_ / "a.TSS.leave-out.txt", std::to_string(size) + " 2\n2\n");
  said_.clear();
  rows_.clear();
  Answer([this] { utilities_.Restack(); });
  EXPECT_EQ(said_, "1 files have been restacked!");
  EXPECT_TRUE(rows_.value(0).contains("1 record left out")) << rows_.value(0).toStdString();
  EXPECT_EQ(ReadAll(dir_ / "out/A.TSK").substr(252), testing::Little(1, 3));
}

TEST_F(UtilityCommandsTest, CancelAnswersSoonAndStopsTheRest) {
  Conversion slow;
  slow.outputs_of = [](const std::string& input) { return std::vector{input + ".out"}; };
  slow.job = [](BatchTask& task) {
    while (!task.Stopped()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return BatchCancelled();
  };
  Batch batch({slow, {Table("A.tbl"), Table("B.tbl"), Table("C.tbl")}, {}, 1});
  CBatchProgressDlg dialog(&batch, QStringLiteral("Convert"), nullptr);
  std::chrono::steady_clock::time_point pressed;
  QTimer::singleShot(500, &dialog, [&] {
    EXPECT_TRUE(dialog.isVisible());
    pressed = std::chrono::steady_clock::now();
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  dialog.Run();
  EXPECT_LT(std::chrono::steady_clock::now() - pressed, std::chrono::milliseconds(200));
  EXPECT_EQ(batch.CountForMessage(), 0U);
  EXPECT_EQ(batch.Result(2)->status, BatchStatus::kCancelled);
}

TEST(FileDialogs, TakeThousandsOfFiles) {
  const TempDir dir;
  constexpr int kFiles = 2500;
  for (int i = 0; i < kFiles; ++i) {
    WriteAll(dir / ("a_file_with_a_long_name_" + std::to_string(10000 + i) + ".tbl"), "");
  }
  CFECFileDialog dialog(QStringLiteral("Convert"), kListing.filters, TextFromPath(dir.Path()),
                        nullptr);
  dialog.show();
  auto* list = dialog.findChild<QListView*>(QStringLiteral("listView"));
  ASSERT_NE(list, nullptr);
  ASSERT_TRUE(
      QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == kFiles; }, 20000));
  list->selectAll();
  QMetaObject::invokeMethod(&dialog, "accept");
  EXPECT_EQ(dialog.Paths().size(), static_cast<std::size_t>(kFiles));
  EXPECT_EQ(
      NameFilters("A (*.ts?)|*.ts?|All Files (*.*)|*.*||"),
      (QStringList{QStringLiteral("A (*.ts?) (*.ts?)"), QStringLiteral("All Files (*.*) (*)")}));
  const CFileDialog all("Open", "All Files (*.*)|*.*||", {}, nullptr);
  EXPECT_EQ(all.findChild<QComboBox*>("fileTypeCombo")->currentText(), "All Files (*.*)");
}

TEST(FileOps, NeverWriteOverAFile) {
  const TempDir dir;
  WriteAll(dir / "a.trs", "one");
  for (const char* name : {"Copy of a.trs", "Copy (1) of a.trs"}) {
    EXPECT_EQ(CopyFiles({dir / "a.trs"}, dir.Path()).front().output, dir / name);
    EXPECT_EQ(ReadAll(dir / name), "one");
  }
  std::filesystem::create_directory(dir / "sub");
  WriteAll(dir / "sub/a.trs", "other");
  EXPECT_EQ(MoveFiles({dir / "a.trs"}, dir / "sub").front().output, dir / "sub/Copy of a.trs");
  EXPECT_EQ(ReadAll(dir / "sub/a.trs"), "other");
  EXPECT_FALSE(std::filesystem::exists(dir / "a.trs"));
  EXPECT_EQ(MoveFiles({dir / "sub/a.trs"}, dir / "sub").front().output, dir / "sub/a.trs");
  EXPECT_FALSE(CopyFiles({dir / "none"}, dir.Path()).front().fault.empty());
  EXPECT_FALSE(MoveFiles({dir / "none"}, dir.Path()).front().fault.empty());
}

}  // namespace
}  // namespace orvane
