// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/orvane_doc.h"

#include <cerrno>
#include <utility>

#include "files/file_io.h"
#include "support/gui.h"
#include "support/tbl_bytes.h"
#include "support/told.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class FakePrompts : public Prompts {
 public:
  Answer AskYesNo(const std::string& caption, const std::string& question) override {
    asked.push_back(caption + "|" + question);
    exists_when_asked = std::filesystem::exists(watched);
    return answer;
  }
  Answer AskYesNoCancel(const std::string& caption, const std::string& question) override {
    asked.push_back(caption + "|" + question);
    return answer;
  }
  int AskChoice(const std::string&, const std::string& question,
                const std::vector<std::string>& buttons, int escape) override {
    EXPECT_EQ(escape, 0) << "Enter and Escape lose nothing";
    asked.push_back(question);
    if (when_asked) {
      std::exchange(when_asked, nullptr)();
    }
    for (int i = 0; i < static_cast<int>(buttons.size()); ++i) {
      if (buttons[static_cast<std::size_t>(i)] == button) {
        return i;
      }
    }
    return escape;
  }
  void ShowWarning(const std::string& caption, const std::string& text) override {
    warned.push_back(caption + "|" + text);
  }

  std::string button;                // that is pressed; none: Escape
  std::function<void()> when_asked;  // what happens while the next question is open
  Answer answer = Answer::kNo;
  std::vector<std::string> asked;
  std::vector<std::string> warned;
  std::filesystem::path watched;
  bool exists_when_asked = false;
};

std::string Record(const std::string& key, char type, const std::string& value) {
  return RecordV2(key, 0, static_cast<std::uint8_t>(type), value);
}

class OrvaneDoc : public ::testing::Test {
 protected:
  void SetUp() override { doc_.OnNewDocument(); }

  QString Path(const char* name) const { return QString::fromStdString((dir_ / name).string()); }

  std::int32_t Int(ParamKey key) const {
    std::int32_t number = -99;
    EXPECT_EQ(table_.GetParam(key, IntPT, &number), kOk);
    return number;
  }
  void Set(ParamKey key, std::int32_t number) {
    EXPECT_EQ(table_.SetParam(key, IntPT, &number), kOk);
  }
  // "TBVO" as it is in the first record of a version-2 file.
  static int SavedTbvo(const std::string& bytes) { return bytes.at(32 + 16); }

  TempDir dir_;
  ParamTable table_;
  FakePrompts prompts_;
  Told notices_;
  COrvaneDoc doc_{&table_, &prompts_, &notices_};
};

TEST_F(OrvaneDoc, NewSetsStartingValuesAndKeepsTheRest) {
  EXPECT_EQ(Int("LPFR"), 18);
  EXPECT_EQ(Int("EGNC"), 1);
  EXPECT_EQ(Int("HGNC"), 1);
  EXPECT_EQ(Int("ACDC"), 0);
  EXPECT_EQ(Int("ACDH"), 0);
  double gain = 0;
  EXPECT_EQ(table_.GetParam("GFC8", FltPT, &gain), kOk);
  EXPECT_EQ(gain, 1.0);
  EXPECT_EQ(notices_.notice, "");

  Set("LPFR", 20);
  Set("SNUM", 1234);
  EXPECT_TRUE(doc_.OnNewDocument());
  EXPECT_EQ(Int("LPFR"), 18);
  EXPECT_EQ(Int("SNUM"), 1234);
  EXPECT_NE(notices_.notice.find("keep their previous values"), std::string::npos);
  EXPECT_FALSE(doc_.IsModified());
}

TEST_F(OrvaneDoc, OpenLoadsOntoWhatIsThere) {
  Set("SNUM", 77);
  WriteAll(dir_ / "part.tbl", HeaderV2() + Record("LFRQ", 0, "\x32"));
  EXPECT_TRUE(doc_.OnOpenDocument(Path("part.tbl")));
  EXPECT_EQ(Int("LFRQ"), 50);
  EXPECT_EQ(Int("SNUM"), 77);
  EXPECT_EQ(Int("TECH"), 5) << "a file without the method";
  EXPECT_EQ(notices_.notice, "Loaded 1 of 719 parameters; the others keep their previous values");
  EXPECT_EQ(doc_.Title(), QStringLiteral("part.tbl"));
  EXPECT_FALSE(doc_.IsModified());
}

TEST_F(OrvaneDoc, NamesRecordsThatASaveLosesAndAsksOnce) {
  const std::string file = HeaderV2() + Record("TECH", 0, "\x03") + Record("NEWKEY", 0, "") +
                           Record("SNUM", 2, "text") + Record("NEWKEY", 0, "\x01");
  WriteAll(dir_ / "a.tbl", file);
  ASSERT_TRUE(doc_.OnOpenDocument(Path("a.tbl")));
  const std::string names = "left out: NEWKEY, SNUM";
  EXPECT_NE(notices_.notice.find("; 3 records are " + names), std::string::npos) << notices_.notice;
  Set("TECH", 4);
  prompts_.answer = Answer::kNo;
  EXPECT_FALSE(doc_.OnSave());
  EXPECT_EQ(ReadAll(dir_ / "a.tbl"), file);
  ASSERT_EQ(prompts_.asked.size(), 1U);
  EXPECT_NE(prompts_.asked[0].find("a.tbl has 3 records that Orvane cannot keep: NEWKEY, SNUM."),
            std::string::npos);
  EXPECT_TRUE(doc_.OnSaveDocument(Path("b.tbl"))) << "loses nothing of the old file";
  EXPECT_EQ(prompts_.asked.size(), 1U);
  EXPECT_NE(notices_.notice.find("; without 3 records: NEWKEY, SNUM"), std::string::npos);

  ASSERT_TRUE(doc_.OnOpenDocument(Path("a.tbl")));
  prompts_.answer = Answer::kYes;
  for (const int technique : {4, 6}) {
    Set("TECH", technique);
    EXPECT_TRUE(doc_.OnSave());
  }
  EXPECT_EQ(prompts_.asked.size(), 2U) << "once";
}

TEST_F(OrvaneDoc, AFailedOpenChangesNothing) {
  WriteAll(dir_ / "good.tbl", HeaderV2() + Record("TECH", 0, "\x03"));
  WriteAll(dir_ / "bad.tbl", std::string(100, 'x'));
  ASSERT_TRUE(doc_.OnOpenDocument(Path("good.tbl")));
  EXPECT_FALSE(doc_.OnOpenDocument(Path("bad.tbl")));
  EXPECT_EQ(Int("TECH"), 3);
  EXPECT_EQ(notices_.notice, (dir_ / "bad.tbl").string() + ": not a TBL file (174)");
  WriteAll(dir_ / "large.tbl", HeaderV2() + Record("TECH", 0, "\x04"));
  std::filesystem::resize_file(dir_ / "large.tbl", (std::uintmax_t{64} << 20U) + 1);
  EXPECT_FALSE(doc_.OnOpenDocument(Path("large.tbl")));
  EXPECT_EQ(Int("TECH"), 3);
  EXPECT_NE(notices_.notice.find("larger than 64 MB"), std::string::npos);
  EXPECT_TRUE(prompts_.warned.empty()) << "told in the status bar, not in a box";
  EXPECT_FALSE(doc_.IsModified());
  EXPECT_EQ(QFileInfo(doc_.Path()), QFileInfo(Path("good.tbl")));
  EXPECT_EQ(doc_.NotInFile().size(), 718U);

  Set("TECH", 4);
  EXPECT_FALSE(doc_.OnOpenDocument(Path("missing.tbl")));
  EXPECT_FALSE(doc_.OnOpenDocument(QString::fromStdString(dir_.Path().string())));
  EXPECT_EQ(Int("TECH"), 4) << "nothing was read";
  ASSERT_EQ(prompts_.warned.size(), 2U);
  EXPECT_EQ(prompts_.warned[0],
            "Orvane|" + (dir_ / "missing.tbl").string() + ": No such file or directory");
}

TEST_F(OrvaneDoc, SaveAsksForTheOutputVersionBeforeItTouchesAFile) {
  prompts_.watched = dir_ / "out.tbl";
  Set("TBVO", 1);
  EXPECT_TRUE(doc_.OnSaveDocument(Path("out.tbl")));
  EXPECT_EQ(prompts_.asked, std::vector<std::string>{"Orvane|Do you want save TBVO as 1!"});
  EXPECT_FALSE(prompts_.exists_when_asked);
  EXPECT_EQ(SavedTbvo(ReadAll(dir_ / "out.tbl")), 2);
  EXPECT_EQ(Int("TBVO"), 2);

  Set("TBVO", 1);
  prompts_.answer = Answer::kYes;
  EXPECT_TRUE(doc_.OnSaveDocument(Path("out.tbl")));
  EXPECT_EQ(SavedTbvo(ReadAll(dir_ / "out.tbl")), 1);

  Set("TBVO", 7);
  EXPECT_TRUE(doc_.OnSaveDocument(Path("Startup.tbl")));
  EXPECT_EQ(prompts_.asked.size(), 2U);
  EXPECT_EQ(SavedTbvo(ReadAll(dir_ / "Startup.tbl")), 2);
  EXPECT_EQ(ReadAll(dir_ / "Startup.tbl").size(), 23040U) << "start-up tables are saved whole";
}

TEST_F(OrvaneDoc, AFailedSaveLeavesFileTableAndMark) {
  WriteAll(dir_ / "old.tbl", "old");
  Set("TBVO", 5);
  Set("TBVI", 1);
  const FileCalls calls = WriterCalls();
  WriterCalls().sync = [](int) {
    errno = EIO;
    return -1;
  };
  EXPECT_FALSE(doc_.OnSaveDocument(Path("old.tbl")));
  WriterCalls() = calls;
  EXPECT_EQ(ReadAll(dir_ / "old.tbl"), "old");
  EXPECT_EQ(dir_.Count(), 1U);
  EXPECT_EQ(Int("TBVO"), 5);
  EXPECT_EQ(Int("TBVI"), 1);
  EXPECT_TRUE(doc_.IsModified());
  ASSERT_EQ(prompts_.warned.size(), 1U);
  EXPECT_NE(prompts_.warned[0].find("old.tbl: Input/output error (172)"), std::string::npos);
}

// Only what really differs is a change; a file that a save has spoiled is to be saved again.
TEST_F(OrvaneDoc, IsModifiedWhereAValueDiffersOrItsFileIsInDoubt) {
  ASSERT_TRUE(doc_.OnSaveDocument(Path("own.tbl")));
  EXPECT_TRUE(doc_.NotInFile().empty());
  Set("TECH", 4);
  EXPECT_TRUE(doc_.IsModified());
  Set("TECH", 1);
  EXPECT_FALSE(doc_.IsModified()) << "as it was";
#ifdef Q_OS_WIN
  constexpr bool kIsInDoubt = false;  // nothing is written in place there
#else
  constexpr bool kIsInDoubt = true;
#endif
  struct Case {
    const char* name;
    bool is_in_place;  // written in place, and put back
    bool is_modified;
  };
  for (const auto& [name, is_in_place, is_modified] :
       {Case{"other.tbl", false, false}, Case{"own.tbl", false, false},
        Case{"own.tbl", true, kIsInDoubt}}) {
    const FileCalls calls = WriterCalls();
    WriterCalls().sync = [](int) {
      errno = EIO;
      return -1;
    };
    if (is_in_place) {
      WriterCalls().create = [](const std::filesystem::path&) {
        errno = EACCES;
        return -1;
      };
    }
    EXPECT_FALSE(doc_.OnSaveDocument(Path(name)));
    WriterCalls() = calls;
    EXPECT_EQ(doc_.IsModified(), is_modified) << name << is_in_place;
  }
  ASSERT_TRUE(doc_.OnSaveDocument(Path("own.tbl")));
  EXPECT_FALSE(doc_.IsModified());
}

TEST_F(OrvaneDoc, AVersion1FileIsSavedAsVersion2AndSaidSo) {
  std::string record = std::string("TECH\0\2\0\0\0\0\0\0\4", 13);
  record.resize(25);
  std::string end("\3\0\0\0\0\3\0", 7);
  end.resize(25);
  WriteAll(dir_ / "one.tbl", record + end);
  ASSERT_TRUE(doc_.OnOpenDocument(Path("one.tbl")));
  EXPECT_EQ(doc_.FileVersion(), 1);
  EXPECT_EQ(Int("TBVI"), 1);
  EXPECT_EQ(Int("TECH"), 4);
  EXPECT_TRUE(doc_.OnSaveDocument(Path("one.tbl")));
  EXPECT_EQ(ReadAll(dir_ / "one.tbl").size(), 23040U);
  EXPECT_NE(notices_.notice.find("version 2"), std::string::npos);
  EXPECT_TRUE(doc_.OnSaveDocument(Path("one.tbl")));
  EXPECT_EQ(notices_.notice.find("version 2"), std::string::npos) << "said once";
}

// What others do to a file of which TECH, LFRQ and SNUM were edited here.
TEST_F(OrvaneDoc, AsksBeforeWhatOthersWroteIsLost) {
  namespace fs = std::filesystem;
  const fs::path file = dir_ / "a.tbl";
  const auto table = [](const char* tech, const char* lfrq, const char* site) {
    return HeaderV2() + Record("TECH", 0, tech) + Record("LFRQ", 0, lfrq) + Record("SITE", 2, site);
  };
  const auto write = [&](const std::string& bytes) { WriteAll(file, bytes); };
  struct Case {
    const char* name;
    std::function<void()> others;
    std::string asks;  // empty: nothing
    const char* button;
    bool is_saved;
    std::int32_t tech;  // in the table afterwards
  };
  const std::string differences =
      "a.tbl was changed on disk by another program.\n\n"
      "Changed here: Serial number of the main box (SNUM)\n\nChanged there: Site (SITE)\n\n"
      "Changed in both: Line frequency (LFRQ)";
  const Case cases[] = {
      {"nothing", [] {}, "", "", true, 4},
      {"touched",
       [&] { fs::last_write_time(file, fs::file_time_type::clock::now() + std::chrono::hours(1)); },
       "", "", true, 4},
      {"gone", [&] { fs::remove(file); }, "", "", true, 4},
      {"cancelled", [&] { write(table("\4", "\x3d", "Eva")); }, differences, "", false, 4},
      {"mine", [&] { write(table("\4", "\x3d", "Eva")); }, differences, "Save mine over it", true,
       4},
      {"theirs", [&] { write(table("\5", "\x3d", "Eva")); }, "Changed there: Site (SITE)",
       "Load it", false, 5},
      {"same size and time",
       [&] {
         const auto time = fs::last_write_time(file);
         write(table("\3", "\x32", "Adx"));
         fs::last_write_time(file, time);
       },
       "Changed there: Site (SITE)", "", false, 4},
      {"no table", [&] { write("junk that is no table at all: 40 bytes..."); },
       "not a readable table: " + file.string() + ": not a TBL file (174)", "", false, 4},
      {"a folder",
       [&] {
         fs::remove(file);
         fs::create_directory(file);
       },
       "Is a directory\n\nThe file cannot be read", "", false, 4},
      {"twice",
       [&] {
         write(table("\4", "\x3d", "Eva"));
         prompts_.when_asked = [&] { write(table("\4", "\x3d", "Max")); };
       },
       differences, "Save mine over it", true, 4},
  };
  for (const Case& now : cases) {
    SCOPED_TRACE(now.name);
    fs::remove_all(file);
    write(table("\3", "\x32", "Ada"));
    Set("SNUM", 0);
    doc_.OnNewDocument();
    ASSERT_TRUE(doc_.OnOpenDocument(Path("a.tbl")));
    Set("TECH", 4);
    Set("LFRQ", 60);
    Set("SNUM", 12);
    now.others();
    const std::string theirs = fs::is_regular_file(file) ? ReadAll(file) : "";
    prompts_.asked.clear();
    prompts_.button = now.button;
    const bool loads = prompts_.button == "Load it";
    prompts_.answer = loads ? Answer::kYes : Answer::kNo;
    EXPECT_EQ(doc_.OnSave(), now.is_saved);
    const bool is_asked_again = loads || std::string(now.name) == "twice";
    ASSERT_EQ(prompts_.asked.size(), now.asks.empty() ? 0 : is_asked_again ? 2 : 1);
    if (!now.asks.empty()) {
      EXPECT_NE(prompts_.asked[0].find(now.asks), std::string::npos) << prompts_.asked[0];
    }
    EXPECT_EQ(Int("TECH"), now.tech);
    EXPECT_EQ(doc_.IsModified(), !now.is_saved && !loads);
    if (now.is_saved) {
      EXPECT_EQ(ReadAll(file).size(), 23040U);
    } else if (fs::is_regular_file(file)) {
      EXPECT_EQ(ReadAll(file), theirs);
    }
  }
}

TEST_F(OrvaneDoc, LoadsTheirsKeepsMineAndWritesNothingForNothing) {
  const std::filesystem::path file = dir_ / "a.tbl";
  ASSERT_TRUE(doc_.OnSaveDocument(Path("a.tbl")));
  std::filesystem::last_write_time(
      file, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
  const auto old = std::filesystem::last_write_time(file);  // as the disk keeps it
  EXPECT_TRUE(doc_.OnSave());
  EXPECT_EQ(std::filesystem::last_write_time(file), old) << "nothing to save";
  EXPECT_EQ(notices_.notice, "Nothing to save: a.tbl already holds these values");
  EXPECT_TRUE(doc_.OnSaveDocument(Path("a.tbl")));
  EXPECT_NE(std::filesystem::last_write_time(file), old) << "Save As writes";
  Set("TBVO", 1);
  prompts_.answer = Answer::kYes;
  ASSERT_TRUE(doc_.OnSave());
  prompts_.answer = Answer::kNo;
  EXPECT_TRUE(doc_.OnSave());
  EXPECT_EQ(SavedTbvo(ReadAll(file)), 2) << "the answer changed what is written";
  std::filesystem::remove(file);
  EXPECT_EQ(doc_.LookAtFile(), FileChange::kGone);
  EXPECT_TRUE(doc_.OnSave());
  EXPECT_EQ(ReadAll(file).size(), 23040U);

  const std::string theirs = HeaderV2() + Record("TECH", 0, "\x03");
  WriteAll(file, theirs);
  Set("SNUM", 5);
  EXPECT_FALSE(doc_.OnReload()) << "would lose a change";
  EXPECT_EQ(Int("SNUM"), 5);
  prompts_.answer = Answer::kYes;
  EXPECT_TRUE(doc_.OnReload());
  EXPECT_EQ(Int("TECH"), 3);
  EXPECT_EQ(Int("SNUM"), 0) << "a change that the file does not hold went too";
  EXPECT_FALSE(doc_.IsModified());

  prompts_.asked.clear();
  WriteAll(file, HeaderV2() + Record("TECH", 0, "\x05"));
  doc_.KeepMine();
  EXPECT_TRUE(doc_.IsModified());
  EXPECT_EQ(doc_.LookAtFile(), FileChange::kUnchanged) << "decided";
  WriteAll(file, theirs);
  EXPECT_EQ(doc_.LookAtFile(), FileChange::kChanged) << "not about this";
  doc_.KeepMine();
  std::filesystem::remove(file);
  doc_.KeepMine();
  EXPECT_EQ(doc_.LookAtFile(), FileChange::kUnchanged);
  EXPECT_TRUE(doc_.OnSave());
  EXPECT_TRUE(prompts_.asked.empty());
  EXPECT_EQ(ReadAll(file).size(), 23040U);
}

TEST_F(OrvaneDoc, OnlyWaveformNamesReachTheWaveformLoader) {
  std::vector<QString> handed;
  doc_.SetWaveformLoader([&handed](const QString& path) {
    handed.push_back(path);
    return true;
  });
  for (const char* name : {"a.tbl", "a.tss", "b.TSS", "c.ts1", "tss", "d.tss.tbl"}) {
    WriteAll(dir_ / name, HeaderV2() + Record("TECH", 0, "\x03"));
    EXPECT_TRUE(doc_.OnOpenDocument(Path(name)));
    const bool is_waveform = std::string(name) == "a.tss" || std::string(name) == "b.TSS";
    EXPECT_EQ(doc_.Kind(), is_waveform ? COrvaneDoc::kTimeSeries : COrvaneDoc::kTable) << name;
  }
  EXPECT_EQ(handed, (std::vector<QString>{Path("a.tss"), Path("b.TSS")}));
}

TEST_F(OrvaneDoc, AsksBeforeChangesAreLost) {
  int saves = 0;
  const auto save = [&saves] {
    ++saves;
    return false;
  };
  EXPECT_TRUE(doc_.SaveModified(save));
  EXPECT_TRUE(prompts_.asked.empty());
  Set("TECH", 4);
  prompts_.answer = Answer::kCancel;
  EXPECT_FALSE(doc_.SaveModified(save));
  prompts_.answer = Answer::kNo;
  EXPECT_TRUE(doc_.SaveModified(save));
  EXPECT_EQ(saves, 0);
  prompts_.answer = Answer::kYes;
  EXPECT_FALSE(doc_.SaveModified(save)) << "what could not be saved is not left";
  EXPECT_EQ(saves, 1);
}

}  // namespace
}  // namespace orvane
