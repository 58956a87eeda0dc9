// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/startup_run.h"

#include <algorithm>
#include <cstring>
#include <span>

#include "files/file_system.h"
#include "files/path_text.h"
#include "support/table_help.h"
#include "support/temp_dir.h"
#include "support/told.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

class StartupFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::SetAll(&table_,
                    "TECH=1 SNTX=31 SNUM=24 SN01=1203 SN03=1207 SNNR=9 LIFESTN=5 FLEN=12 EXR=10");
  }
  ParamTable Loaded(const char* name) const {
    ParamTable table = NewTable();
    EXPECT_EQ(LoadParamFile(&table, dir_ / name), kOk) << name;
    return table;
  }
  // OK in every dialog, as it opens.
  void AcceptAll(StartupRun* run) {
    for (const StartupBox& box : run->Boxes()) {
      const StartupForm form(&table_, box, run->Choices());
      run->Accept(form);
    }
  }

  TempDir dir_;
  ParamTable table_ = NewTable();
  testing::Told answers_;
};

TEST_F(StartupFiles, EachBoxGetsItsOwnValuesAndTheTableKeepsItsOwn) {
  const ParamTable before = table_;
  StartupRun run(&table_, dir_ / "open.tbl", &answers_);
  AcceptAll(&run);
  EXPECT_EQ(dir_.Count(), 3U);
  EXPECT_EQ(Changes(before, table_), (std::set<std::string>{"EYR", "EZR", "CHDEFTX", "LIFESTN"}));
  EXPECT_EQ(Get(table_, "EYR") + Get(table_, "EXR"), "20010");
  using Keys = std::set<std::string>;
  EXPECT_EQ(Changes(table_, Loaded("31.tbl")),
            (Keys{"CHDEF1", "SNUM", "SNNR", "SN01", "SN03", "FLAG1", "FLAG2", "FLAG3", "LIFESTN"}));
  EXPECT_EQ(Get(Loaded("31.tbl"), "FLAG1") + Get(Loaded("31.tbl"), "CHDEF1"), "1Tx");
  EXPECT_EQ(Changes(table_, Loaded("24.tbl")), Keys());
  EXPECT_EQ(Changes(table_, Loaded("1203.tbl")), (Keys{"SNUM", "SNNR", "SN01", "SN03"}));
  EXPECT_EQ(
      run.StatusText(),
      "3 of 3 files written, 1 box without a file\nauxiliary 3, serial 1207: no file (after an "
      "empty place among the auxiliary boxes)");
  EXPECT_EQ(run.Document(), StartupRun::OwnFile::kAsBefore);
  EXPECT_EQ(answers_.asked, 0);
}

// A card that keeps other bytes than were written, and one whose bytes come from memory.
TEST_F(StartupFiles, WhatTheDiskFalsifiesIsFoundByReadingBack) {
  static ReadCalls usual_reads = ReaderCalls();
  static FileCalls usual_writes = WriterCalls();
  static std::vector<std::string> forgotten;
  static int files = 0;
  forgotten.clear();
  files = 0;
  ReaderCalls().forget = [](const std::filesystem::path& path) {
    forgotten.push_back(PathText(path.filename()));
    return forgotten.size() < 3;
  };
  WriterCalls().write = [](int handle, const void* bytes, std::size_t size) {
    std::vector<std::byte> copy(size);
    std::memcpy(copy.data(), bytes, size);
    if (++files == 2) {
      const auto key = std::as_bytes(std::span("LFRQ", 4));
      *(std::search(copy.begin(), copy.end(), key.begin(), key.end()) + 16) = std::byte{61};
    }
    return usual_writes.write(handle, copy.data(), size);
  };
  StartupRun run(&table_, dir_ / "open.tbl", &answers_);
  run.SetVerifies(true);
  AcceptAll(&run);
  ReaderCalls() = usual_reads;
  WriterCalls() = usual_writes;
  EXPECT_EQ(forgotten, (std::vector<std::string>{"31.tbl", "24.tbl", "1203.tbl"}));
  const auto& outcomes = run.Outcomes();
  EXPECT_EQ(outcomes[0].Details(),
            "version 2, 23040 bytes, verified, 9 values differ from the main table");
  EXPECT_EQ(outcomes[1].state, StartupOutcome::kFailed);
  EXPECT_EQ(outcomes[1].Text().find("failed (holds other bytes than were written, from byte "), 0U);
  EXPECT_NE(outcomes[1].Text().find(" on: LFRQ)"), std::string::npos) << outcomes[1].Text();
  EXPECT_EQ(outcomes[2].VerifiedText(), "read back from memory");
}

TEST_F(StartupFiles, EditsGoIntoTheFileOnly) {
  StartupRun run(&table_, {}, &answers_);
  StartupForm form(&table_, {1}, run.Choices());
  form.Model().SetText(StartupForm::kLocation, dir_.Path().string());
  form.Model().SetIndex(StartupForm::kSetup, 1);
  form.Model().SetIndex(StartupForm::kSlave, 1);
  form.Model().SetIndex(StartupForm::kFileClose, 5);
  form.Model().SetText(1113, "0.5");
  EXPECT_TRUE(form.CanEditGains() && !StartupForm(&table_, {0}, run.Choices()).CanEditGains());
  EXPECT_EQ(form.EditGain(2, "x"), "Enter a number.");
  EXPECT_EQ(form.EditGain(2, "1.25"), "");
  form.Model().SetIndex(StartupForm::kFixedName, 0);
  EXPECT_EQ(form.Title(), "Save DMU Startup File ( SIP )");
  const ParamTable before = table_;
  run.Accept(form);
  EXPECT_EQ(Changes(before, table_), std::set<std::string>());
  EXPECT_EQ(testing::Values(Loaded("StartUp.tbl"), "RQST MSTR FLEN HNOM GFC3 SNUM"),
            "13 1 6 0.5 1.25 1203");
}

TEST_F(StartupFiles, WhateverLastsCountsAsAChangeAndAllFiveBoxesCount) {
  testing::SetAll(&table_, "CHDEFTX=Tx LIFESTN=0 SN01=1 SN02=2 SN03=3 SN04=4 SN05=5");
  ASSERT_EQ(StartupBoxes(table_).size(), 7U);
  EXPECT_EQ(StoredSerial(table_, StartupBoxes(table_).back()), 5);
  EXPECT_EQ(Values(StartupForm(&table_, {5}, {}).Derive(), "SNUM SN01 SN05"), "5 0 0");
  for (const int control : {0, 1012, 1114, 1115, 1016}) {
    ParamTable table = table_;
    StartupForm form(&table, {StartupBox::kTransmitter}, {});
    if (control != 0) {
      form.Model().SetText(control, "7");
    }
    EXPECT_EQ(form.ApplyLasting(&table), control != 0) << control;
  }
}

TEST_F(StartupFiles, ToldBeforeWhatAFileWouldWriteOver) {
  StartupRun run(&table_, {}, &answers_, dir_.Path());
  const auto at = [this](std::string_view name) { return PathText(dir_ / name); };
  WriteAll(dir_ / "plain", "text");
  WriteAll(dir_ / "24.tbl", "no table");
  ParamTable other = table_;
  Set(&other, "SNUM", "7");
  ASSERT_EQ(SaveParamFile(&other, dir_ / "1203.tbl", {}), kOk);
  StartupForm monitor(&table_, run.Boxes()[0], run.Choices());
  StartupForm main(&table_, run.Boxes()[1], run.Choices());
  StartupForm auxiliary(&table_, run.Boxes()[2], run.Choices());
  EXPECT_EQ(run.Heading(monitor), "Box 1 of 3: transmitter monitor, serial 31");
  EXPECT_EQ(run.Heading(main), "Box 2 of 3: main receiver, serial 24");
  EXPECT_EQ(run.Heading(auxiliary), "Box 3 of 3: auxiliary 1, serial 1203");
  EXPECT_EQ(PathText(run.PathOf(monitor)), at("31.tbl")) << "no document: the folder proposed";
  EXPECT_EQ(run.WarningFor(monitor), "");
  EXPECT_EQ(run.WarningFor(main),
            at("24.tbl") + " is a file that is not a table and will be overwritten.");
  EXPECT_EQ(run.WarningFor(auxiliary),
            at("1203.tbl") + " is the file of serial 7 and will be overwritten.");
  WriteAll(dir_ / "1203.TSS", "");
  EXPECT_EQ(run.WarningFor(auxiliary), at("1203.tbl") +
                                           " is the table of the recording 1203.TSS "
                                           "and will be overwritten.");
  std::filesystem::remove(dir_ / "1203.TSS");
  auxiliary.Model().SetText(StartupForm::kReceiverSerial, "7");
  auxiliary.Model().SetIndex(StartupForm::kFixedName, 0);
  for (const auto& [folder, warning] :
       {std::pair{"none", "The folder " + at("none") + " does not exist."},
        {"plain", at("plain") + " is not a folder."}}) {
    auxiliary.Model().SetText(StartupForm::kLocation, folder);
    EXPECT_EQ(run.WarningFor(auxiliary), warning);
  }
  monitor.Model().SetText(StartupForm::kMonitorSerial, "0");
  EXPECT_NE(run.WarningFor(monitor).find("no file will be written"), std::string::npos);
  // One name for two boxes: one file, and the first box has none.
  auxiliary.Model().SetText(StartupForm::kLocation, "");
  main.Model().SetIndex(StartupForm::kFixedName, 0);
  run.Accept(main);
  EXPECT_EQ(run.WarningFor(auxiliary),
            at("StartUp.tbl") +
                " was already written for another box (main receiver, serial 24) and will be "
                "overwritten.");
  run.Accept(auxiliary);
  EXPECT_EQ(run.Headline(),
            "1 of 1 files written, 1 box overwritten, 1 box skipped, 1 box without a file");
  std::string texts;
  for (const StartupOutcome& outcome : run.Outcomes()) {
    texts += outcome.Name() + ": " + outcome.Text() + '|';
  }
  EXPECT_EQ(texts,
            "transmitter monitor, serial 31: skipped|"
            "main receiver, serial 24: overwritten by auxiliary 1|"
            "auxiliary 1, serial 7: written over the file of serial 24|"
            "auxiliary 3, serial 1207: no file (after an empty place among the auxiliary boxes)|");
}

TEST_F(StartupFiles, VersionAndModifiedMarkFollowTheAnswers) {
  testing::SetAll(&table_, "TECH=5 TBVO=1 EXR=100 EYR=100 EZR=100");
  answers_.yes_no = Answer::kYes;
  const ParamTable before = table_;
  StartupRun run(&table_, dir_ / "open.tbl", &answers_);
  AcceptAll(&run);
  EXPECT_EQ(answers_.asked, 2) << "once a file; no transmitter monitor for MT/AMT";
  EXPECT_EQ(std::filesystem::file_size(dir_ / "24.tbl"), 7150U);
  EXPECT_EQ(Changes(before, table_), std::set<std::string>());
  EXPECT_NE(run.StatusText().find("version 1: 285 of 719 records"), std::string::npos);
}

TEST_F(StartupFiles, OkWithoutAnEditChangesOnlyWhatLasts) {
  const std::set<std::string> lasting = {"EXR", "EYR", "EZR", "CHDEFTX", "LIFESTN", "LIFESTK"};
  for (unsigned seed = 1; seed <= 40; ++seed) {
    table_ = testing::RandomTable(seed);
    const auto tech = static_cast<std::int32_t>(seed % 6 + 1);
    ASSERT_EQ(table_.SetParam("TECH", IntPT, &tech), kOk);
    const ParamTable before = table_;
    SetDefaultResistances(&table_);
    for (const StartupBox& box : StartupBoxes(table_)) {
      const StartupForm form(&table_, box, {});
      form.ApplyLasting(&table_);
    }
    for (const std::string& key : Changes(before, table_)) {
      EXPECT_EQ(lasting.count(key), 1U) << key << " seed " << seed;
    }
  }
}

TEST_F(StartupFiles, AFailedWriteIsToldAndClearsNothing) {
  Set(&table_, "TECH", "5");
  StartupRun run(&table_, dir_ / "no" / "open.tbl", &answers_);
  const ParamTable before = table_;
  AcceptAll(&run);
  EXPECT_EQ(Changes(before, table_), std::set<std::string>());
  EXPECT_EQ(run.StatusText().find("0 of 2 files written, 2 boxes failed"), 0U) << run.StatusText();
  EXPECT_NE(run.StatusText().find("24.tbl (No such file or directory)"), std::string::npos);
}

TEST_F(StartupFiles, TheDocumentsFileIsNotWrittenAgainstTheUsersWill) {
  testing::WriteAll(dir_ / "24.tbl", "by another program");
  StartupRun run(&table_, dir_ / "24.tbl", &answers_);
  run.SetMayReplaceDocument([] { return false; });
  run.ForEachBox([&run](StartupForm* form) {
    run.Accept(*form);
    return true;
  });
  EXPECT_EQ(testing::ReadAll(dir_ / "24.tbl"), "by another program");
  EXPECT_EQ(run.Document(), StartupRun::OwnFile::kAsBefore);
  for (const StartupOutcome& outcome : run.Outcomes()) {
    EXPECT_EQ(outcome.state == StartupOutcome::kSkipped, outcome.box.number == StartupBox::kMain)
        << outcome.Name();
  }
}

TEST_F(StartupFiles, AMonitorsSerialGoesIntoTheOtherBoxesFilesAndNoneGetsNoFile) {
  Set(&table_, "SNTX", "0");
  for (const char* serial : {"0", "77"}) {
    StartupRun run(&table_, dir_ / "24.tbl", &answers_);
    const ParamTable before = table_;
    StartupForm monitor(&table_, run.Boxes()[0], run.Choices());
    monitor.Model().SetText(StartupForm::kMonitorSerial, serial);
    monitor.Model().SetText(StartupForm::kLocation, dir_.Path().string());
    run.Accept(monitor);
    EXPECT_EQ(run.Choices().folder, dir_.Path().string());
    run.Accept(StartupForm(&table_, run.Boxes()[1], run.Choices()));
    EXPECT_EQ(run.Document(), StartupRun::OwnFile::kWritten) << "the main box's is the document's";
    EXPECT_EQ(run.DocumentMemory().Size(), std::filesystem::file_size(dir_ / "24.tbl"));
    EXPECT_EQ(Get(Loaded("24.tbl"), "SNTX"), serial);
    EXPECT_EQ(Get(table_, "SNTX"), "0");
    const bool has_monitor = std::string_view(serial) != "0";
    EXPECT_EQ(std::filesystem::exists(dir_ / "77.tbl"), has_monitor);
    EXPECT_EQ(Changes(before, table_).empty(), !has_monitor);
    EXPECT_EQ(
        run.StatusText().find("serial 0: no file (the serial number is 0)") == std::string::npos,
        has_monitor);
  }
  EXPECT_FALSE(std::filesystem::exists(dir_ / "0.tbl"));
}

}  // namespace
}  // namespace orvane
