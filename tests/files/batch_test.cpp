// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/batch.h"

#include <gtest/gtest.h>

#include "files/card_copy.h"
#include "files/file_io.h"
#include "files/path_names.h"
#include "files/path_text.h"
#include "support/temp_dir.h"

namespace orvane::testing {
namespace {

using std::chrono::milliseconds;

// Writes the input's text and its name to NAME.out; a text "bad" fails, "slow" goes on until
// stopped.
BatchResult CopyJob(BatchTask& task) {
  const std::string text = ReadAll(task.Input());
  if (text == "bad") {
    return BatchFailed("it is bad", 7);
  }
  OutFile out;
  Result<> done = out.Open(task.Outputs()[0]);
  const std::string written = task.Input().filename().string() + "=" + text;
  done = done ? out.Write(std::as_bytes(std::span(written))) : done;
  task.Advance(text.size());
  while (text == "slow") {
    if (task.Stopped()) {
      return BatchCancelled();
    }
    std::this_thread::sleep_for(milliseconds(1));
  }
  done = done ? out.Commit() : done;
  return done ? BatchDone(task.Outputs()) : BatchFailed(done.Message());
}

Conversion Copying() {
  Conversion copying;
  copying.outputs_of = [](const std::string& input) {
    return std::vector<std::string>{WithExtension(input, ".out")};
  };
  copying.job = CopyJob;
  return copying;
}

TEST(Batch, HasTheSameBytesWithAnyNumberOfWorkers) {
  for (const unsigned workers : {1U, 2U, 7U}) {
    const TempDir dir;
    BatchPlan plan{Copying(), {}, {}, workers};
    for (int i = 0; i < 40; ++i) {
      const auto path = dir / ("f" + std::to_string(i) + ".in");
      WriteAll(path, i % 8 == 5 ? "bad" : "text " + std::to_string(i));
      plan.inputs.push_back(path);
    }
    // Two that make one output; the last in the list is kept, wherever they are.
    for (const char* name : {"twin.b", "twin.a"}) {
      WriteAll(dir / name, name);
      plan.inputs.insert(plan.inputs.begin() + (name[5] == 'b' ? 20 : 3), dir / name);
    }
    Batch batch(plan);
    batch.Start();
    batch.Wait();
    EXPECT_EQ(batch.CountForMessage(), 37U);
    EXPECT_EQ(dir.Count(), 42U + 36U);
    EXPECT_EQ(ReadAll(dir / "twin.out"), "twin.b=twin.b");
    EXPECT_EQ(ReadAll(dir / "f39.out"), "f39.in=text 39");
    for (std::size_t i = 0; i < batch.Count(); ++i) {
      const BatchResult& result = *batch.Result(i);
      const std::string name = batch.Input(i).filename().string();
      const char* other = name == "twin.a" ? "twin.b" : name == "twin.b" ? "twin.a" : "";
      EXPECT_NE(result.text.find(other), std::string::npos) << name;
      EXPECT_EQ(result.status == BatchStatus::kFailed, result.text == "it is bad");
    }
    const BatchProgress progress = batch.Progress();
    EXPECT_EQ(progress.files_done, 42U);
    EXPECT_EQ(progress.bytes_done, progress.bytes_total);
    EXPECT_GT(progress.bytes_total, 200U);
  }
}

TEST(Batch, RefusesToWriteOverItsInputs) {
  const TempDir dir;
  for (const char* name : {"a.in", "b.out", "b.in", "c.in", "d.in", "d.tss"}) {
    WriteAll(dir / name, name);
  }
  const bool has_link = MakeLink(dir / "c.in", dir / "c.out");
  MakeLink(dir / "d.tss", dir / "d.out");
  Conversion copying = Copying();
  copying.same_file_code = 4;
  Batch batch(
      {copying, {dir / "a.in", dir / "b.out", dir / "b.in", dir / "c.in", dir / "d.in"}, {}, 2});
  batch.Start();
  batch.Wait();
  const auto text = [&batch](std::size_t i) { return batch.Result(i)->text; };
  EXPECT_EQ(text(0), "");
  EXPECT_EQ(text(1), (dir / "b.out").string() + ": is the input itself and was not overwritten");
  EXPECT_EQ(batch.Result(1)->code, 4);
  EXPECT_EQ(text(2),
            (dir / "b.out").string() + ": is another input of this batch and was not overwritten");
  if (has_link) {
    EXPECT_EQ(text(3), (dir / "c.out").string() + ": is the input itself and was not overwritten");
    EXPECT_EQ(text(4), (dir / "d.out").string() + ": leads to " + (dir / "d.tss").string() +
                           ", which is another kind of file; not overwritten");
    EXPECT_EQ(ReadAll(dir / "d.tss"), "d.tss");
  }
  EXPECT_EQ(ReadAll(dir / "b.out"), "b.out");
  EXPECT_EQ(ReadAll(dir / "c.in"), "c.in");
}

TEST(Batch, InAFolderTheFirstOfANameStays) {
  const TempDir dir;
  for (const char* folder : {"a", "b", "out"}) {
    std::filesystem::create_directory(dir / folder);
    WriteAll(dir / folder / "x.in", folder);
  }
  const auto first = dir / "a/x.in";
  for (const unsigned workers : {1U, 4U}) {
    Batch batch({Copying(), {first, dir / "b/x.in", first}, dir / "out", workers});
    batch.Start();
    batch.Wait();
    EXPECT_EQ(ReadAll(dir / "out/x.out"), "x.in=a");
    EXPECT_EQ(batch.Result(1)->status, BatchStatus::kFailed);
    EXPECT_EQ(batch.Result(1)->text, (dir / "out" / "x.out").string() + ": is the output of " +
                                         first.string() +
                                         ", which came earlier in the list; not overwritten");
    EXPECT_TRUE(batch.Result(0)->IsDone() && batch.Result(2)->IsDone()) << "one file, listed twice";
  }
}

TEST(Batch, StopAnswersAtOnceAndLeavesNoHalfFile) {
  const TempDir dir;
  BatchPlan plan{Copying(), {}, {}, 2};
  for (const char* name : {"1.in", "2.in", "3.in", "4.in"}) {
    WriteAll(dir / name, name[0] == '1' ? "quick" : "slow");
    plan.inputs.push_back(dir / name);
  }
  WriteAll(dir / "2.out", "old");
  Batch batch(plan);
  batch.Start();
  while (batch.Progress().files_done == 0 || batch.Progress().bytes_done < 13) {
    std::this_thread::sleep_for(milliseconds(1));
  }
  EXPECT_FALSE(batch.WaitFor(milliseconds(1)));
  batch.Stop();
  EXPECT_TRUE(batch.WaitFor(milliseconds(200)));
  EXPECT_EQ(batch.CountForMessage(), 1U);
  EXPECT_EQ(batch.Result(0)->status, BatchStatus::kDone);
  for (const std::size_t i : {1U, 2U, 3U}) {
    EXPECT_EQ(batch.Result(i)->status, BatchStatus::kCancelled);
  }
  EXPECT_EQ(ReadAll(dir / "2.out"), "old");
  EXPECT_EQ(dir.Count(), 6U);
}

TEST(PathNames, FollowTheirRules) {
  const auto check = [](const std::string& made, const char* expected) {
    EXPECT_EQ(made, expected);
  };
  check(WithExtension("C:\\DATA.V2\\1234", ".txt"), "C:\\DATA.V2\\1234.txt");
  check(WithExtension("/a.b/c\\d", ".txt"), "/a.b/c\\d.txt");
  check(WithExtension("/a.b/c.d.trs", ".csv"), "/a.b/c.d.csv");
  check(WithDefaultExtension("a.b/BOX", ".tbl"), "a.b/BOX.tbl");
  check(WithDefaultExtension("BOX.", ".tbl"), "BOX.");
  check(LowerCasedPath("C:\\DATA.1\\SITE"), "c:\\data.1\\site");
  check(LowerCasedPath("SITE.TS3"), "site.ts3");
  check(LowerCasedPath("/Data/C:\\X\\SITE"), "/Data/C:\\X\\site");
  check(ReplacedInName("/S.TBL/A.TBL.TBL", ".TBL", ".TB2"), "/S.TBL/A.TB2.TB2");
  check(ReplacedInName("S.TBL/a.tbl", ".TBL", ".TB2"), "S.TBL/a.tbl");
  check(InFolder("out", "D:\\x\\y.csv").generic_string(), "out/y.csv");
  check(CopyName("/d/a.tbl", 0), "/d/Copy of a.tbl");
  check(CopyName("/d/a.tbl", 12), "/d/Copy (12) of a.tbl");
  check(FirstFreeName("x", BackupName, [](const std::string& name) { return name != "x.bak2"; }),
        "x.bak2");
}

// A card that is not there is no reason to fill the computer's disk.
TEST(Batch, CopiesNothingToACardThatIsNotMounted) {
  const TempDir dir;
  WriteAll(dir / "1203.tbl", "table");
  const std::string input = PathText(dir / "1203.tbl");
  for (const auto& [card, reason] :
       {std::pair(dir / "absent", "No such file"), {dir / "1203.tbl", "is no folder"}}) {
    Batch batch({CardConversion({{input, card}}), {dir / "1203.tbl"}, {}, 1});
    batch.Start();
    batch.Wait();
    EXPECT_EQ(batch.Result(0)->status, BatchStatus::kFailed);
    EXPECT_NE(batch.Result(0)->text.find(reason), std::string::npos) << batch.Result(0)->text;
  }
  EXPECT_FALSE(std::filesystem::exists(dir / "absent"));
}

}  // namespace
}  // namespace orvane::testing
