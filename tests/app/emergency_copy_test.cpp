// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/emergency_copy.h"

#include <QDate>
#include <cstdlib>

#include "files/path_text.h"
#include "support/gui.h"
#include "support/table_help.h"
#include "support/tbl_bytes.h"
#include "table/tbl_file.h"

namespace orvane::testing {
namespace {

class User : public Prompts, public Notices {
 public:
  Answer AskYesNo(const std::string&, const std::string& question) override {
    asked.push_back(question);
    return answer;
  }
  Answer AskYesNoCancel(const std::string&, const std::string&) override { return Answer::kCancel; }
  int AskChoice(const std::string& caption, const std::string& question,
                const std::vector<std::string>& buttons, int escape) override {
    return discards ? 2 : Prompts::AskChoice(caption, question, buttons, escape);
  }
  void ShowWarning(const std::string&, const std::string&) override {}
  void ShowNotice(const std::string& text) override { notice = text; }
  Answer answer = Answer::kYes;
  bool discards = false;  // the third button
  std::vector<std::string> asked;
  std::string notice;
};

// A running program, without its window.
struct Program {
  explicit Program(const std::filesystem::path& folder) : copy(folder, &doc, &user) {
    doc.OnNewDocument();
  }
  // What an editor's OK does.
  void Edit(const char* text) {
    Set(&table, "SITE", text);
    doc.NoteStep(QStringLiteral("Edit"));
  }

  ParamTable table = NewTable();
  User user;
  COrvaneDoc doc{&table, &user, &user};
  EmergencyCopy copy;
};

constexpr int kCrashed = 9;

// What the tests below start.
TEST(CrashingProgram, DISABLED_EndsWithUnsavedEdits) {
  Program program(PathFromText(qEnvironmentVariable("CRASH_FOLDER")));
  program.Edit("saved before");
  program.doc.OnSaveDocument(qEnvironmentVariable("CRASH_TABLE"));
  program.Edit(qgetenv("CRASH_SITE").constData());
  std::_Exit(kCrashed);
}

class EmergencyCopies : public ::testing::Test {
 protected:
  std::filesystem::path File(int number) const {
    return dir_ / ("unsaved-" + std::to_string(number) + ".orvane");
  }
  QString TablePath() const { return TextFromPath(tables_.Path() / PathOf("\xc3\xa4 a.tbl")); }

  // A program that ends without more ado, with unsaved changes of a file.
  void Crash(const char* site) const {
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("CRASH_FOLDER", QString::fromStdString(dir_.Path().string()));
    environment.insert("CRASH_TABLE", TablePath());
    environment.insert("CRASH_SITE", site);
    program.setProcessEnvironment(environment);
    program.start(QCoreApplication::applicationFilePath(),
                  {"--gtest_also_run_disabled_tests", "--gtest_filter=CrashingProgram.*"});
    ASSERT_TRUE(program.waitForFinished()) << program.errorString().toStdString();
    ASSERT_EQ(program.exitCode(), kCrashed);
  }

  TempDir dir_;
  TempDir tables_;
};

TEST_F(EmergencyCopies, ACrashedProgramsEditsAreOfferedAndOpened) {
  Crash("unsaved");
  const std::string saved = ReadAll(PathFromText(TablePath()));
  EXPECT_EQ(saved.size(), 23040U);
  Program next(dir_.Path());
  EXPECT_TRUE(next.copy.Offer(&next.user));
  ASSERT_EQ(next.user.asked.size(), 1U);
  EXPECT_NE(next.user.asked[0].find("saving the changes to\n" + TablePath().toStdString() + "\n\n"),
            std::string::npos)
      << next.user.asked[0];
  EXPECT_EQ(Get(next.table, "SITE"), "unsaved");
  EXPECT_EQ(QFileInfo(next.doc.Path()), QFileInfo(TablePath()));
  EXPECT_TRUE(next.doc.IsModified());
  EXPECT_EQ(ReadAll(PathFromText(TablePath())), saved);

  next.doc.NoteStep(QStringLiteral("Edit"));
  EXPECT_TRUE(next.doc.IsModified()) << "until it is saved";
  next.Edit("edited further");
  EXPECT_EQ(dir_.Count(), 2U) << "the copy and its lock";
  EXPECT_TRUE(next.doc.OnSaveDocument(next.doc.Path()));
  EXPECT_FALSE(std::filesystem::exists(File(1)));
}

TEST_F(EmergencyCopies, TheOfferTellsOfAFileThatOthersChanged) {
  const std::filesystem::path table = PathFromText(TablePath());
  struct Case {
    const char* name;
    std::function<void()> others;
    const char* told;
    const char* notice;
  };
  const Case cases[] = {
      {"as it was", [] {}, "", "the file has not changed"},
      {"touched",
       [&] {
         std::filesystem::last_write_time(
             table, std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
       },
       "", "the file has not changed"},
      {"newer", [&] { WriteAll(table, HeaderV2() + RecordV2("SITE", 0, 2, "Eva")); },
       "The file is newer: it was changed at ", "the file has changed since"},
      {"gone", [&] { std::filesystem::remove(table); }, "The file is no longer on disk.",
       "the file has changed since"},
  };
  for (const Case& now : cases) {
    SCOPED_TRACE(now.name);
    Crash("unsaved");
    now.others();
    Program next(dir_.Path());
    EXPECT_TRUE(next.copy.Offer(&next.user));
    const std::string asked = next.user.asked.at(0);
    EXPECT_EQ(asked.find("The file ") != std::string::npos, now.told[0] != 0) << asked;
    EXPECT_NE(asked.find(now.told), std::string::npos) << asked;
    EXPECT_NE(next.user.notice.find(now.notice), std::string::npos) << next.user.notice;
    if (std::string(now.name) == "newer") {
      const std::string year = std::to_string(QDate::currentDate().year()) + "/";
      std::size_t times = 0;
      for (std::size_t at = 0; (at = asked.find(year, at)) != std::string::npos; ++at) {
        ++times;
      }
      EXPECT_EQ(times, 3U) << "of the copy, of the file and of the file before: " << asked;
    }
    // The first answer of the question is "Cancel".
    EXPECT_EQ(next.doc.OnSave(), std::string(now.name) != "newer");
    next.doc.OnCloseDocument();
  }
}

// As a computer that goes off may leave it.
TEST_F(EmergencyCopies, ALockThatTellsNothingIsNobodys) {
  for (const std::string_view left : {std::string_view(), std::string_view("\0\0\0\0", 4)}) {
    Crash("unsaved");
    WriteAll(dir_ / "unsaved-1.lock", left);
    Program next(dir_.Path());
    EXPECT_TRUE(next.copy.Offer(&next.user));
    EXPECT_EQ(Get(next.table, "SITE"), "unsaved");
    next.doc.OnCloseDocument();
  }
}

TEST_F(EmergencyCopies, DecliningTouchesNothing) {
  Crash("unsaved");
  const std::string kept = ReadAll(File(1));
  for (int start = 0; start < 2; ++start) {
    Program next(dir_.Path());
    next.user.answer = Answer::kNo;
    EXPECT_FALSE(next.copy.Offer(&next.user));
    EXPECT_EQ(next.user.asked.size(), 1U);
    EXPECT_FALSE(next.doc.IsModified());
    EXPECT_EQ(next.doc.Path(), "");
    next.Edit("something else");
    EXPECT_TRUE(std::filesystem::exists(File(2))) << "a place of its own";
    next.doc.OnCloseDocument();
    EXPECT_FALSE(std::filesystem::exists(File(2)));
    EXPECT_EQ(ReadAll(File(1)), kept);
  }
}

TEST_F(EmergencyCopies, DiscardingAsksOnceMore) {
  Crash("unsaved");
  for (const Answer answer : {Answer::kNo, Answer::kYes}) {
    Program next(dir_.Path());
    next.user.discards = true;
    next.user.answer = answer;
    EXPECT_FALSE(next.copy.Offer(&next.user));
    EXPECT_EQ(next.user.asked.size(), 1U);
    EXPECT_EQ(std::filesystem::exists(File(1)), answer == Answer::kNo);
  }
}

TEST_F(EmergencyCopies, RunningProgramsKeepApart) {
  Program first(dir_.Path());
  first.Edit("first");
  const std::string kept = ReadAll(File(1));
  Program second(dir_.Path());
  EXPECT_FALSE(second.copy.Offer(&second.user));
  EXPECT_TRUE(second.user.asked.empty());
  second.Edit("second");
  EXPECT_EQ(ReadAll(File(1)), kept);
  EXPECT_NE(ReadAll(File(2)), "");
  second.doc.OnNewDocument();
  EXPECT_FALSE(std::filesystem::exists(File(2)));
  EXPECT_EQ(ReadAll(File(1)), kept);
}

TEST_F(EmergencyCopies, EditsInAnOpenDialogAreKeptSoon) {
  auto program = std::make_unique<Program>(dir_.Path());
  Set(&program->table, "SITE", "typed");
  program->doc.UpdateAllViews();
  EXPECT_TRUE(QTest::qWaitFor([this] { return std::filesystem::exists(File(1)); }, 5000));
  Set(&program->table, "SITE", "");
  program->doc.UpdateAllViews();
  EXPECT_TRUE(QTest::qWaitFor([this] { return !std::filesystem::exists(File(1)); }, 5000))
      << "taken back";
  Set(&program->table, "SITE", "typed");
  program->doc.UpdateAllViews();
  EXPECT_TRUE(QTest::qWaitFor([this] { return std::filesystem::exists(File(1)); }, 5000));
  program.reset();
  Program next(dir_.Path());
  next.user.answer = Answer::kYes;
  EXPECT_TRUE(next.copy.Offer(&next.user));
  EXPECT_EQ(Get(next.table, "SITE"), "typed");
  EXPECT_EQ(next.doc.Title(), QStringLiteral("Untitled"));
}

TEST_F(EmergencyCopies, OnlyGoodCopiesAreOffered) {
  const std::string table = HeaderV2() + RecordV2("SITE", 0, 2, "kept");
  const auto bytes = std::as_bytes(std::span(table));
  const auto made = UnsavedImage({"/no utf-8 \xff.tbl", {bytes.begin(), bytes.end()}});
  std::string image(reinterpret_cast<const char*>(made.data()), made.size());
  for (const auto& [copy, reason] : {std::pair{image.substr(0, 50), "it is cut short"},
                                     {std::string(2U << 20U, 'x'), "it is not an emergency copy"},
                                     {Padded(image, 8) + '\3' + image.substr(9), "from another"}}) {
    WriteAll(File(1), copy);
    Program program(dir_.Path());
    EXPECT_FALSE(program.copy.Offer(&program.user));
    EXPECT_TRUE(program.user.asked.empty());
    EXPECT_EQ(program.user.notice.find(File(1).string() + ": emergency copy ignored: "), 0U);
    EXPECT_NE(program.user.notice.find(reason), std::string::npos) << program.user.notice;
    EXPECT_EQ(ReadAll(File(1)), copy);
  }
  // A path that no text can show: the table is there, the next save asks for a name.
  WriteAll(File(1), image);
  Program program(dir_.Path());
  EXPECT_TRUE(program.copy.Offer(&program.user));
  EXPECT_EQ(Get(program.table, "SITE"), "kept");
  EXPECT_EQ(program.doc.Path(), "");
}

TEST_F(EmergencyCopies, AFolderThatCannotBeMadeIsTold) {
  WriteAll(dir_ / "file", "");
  Program program(dir_ / "file/Unsaved");
  program.Edit("x");
#ifdef Q_OS_WIN
  const char* const told = "Unsaved: No such file or directory";
#else
  const char* const told = "file/Unsaved: Not a directory";
#endif
  EXPECT_NE(program.user.notice.find(told), std::string::npos) << program.user.notice;
}

}  // namespace
}  // namespace orvane::testing
