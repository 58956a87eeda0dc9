// SPDX-License-Identifier: GPL-3.0-or-later
// Everything that writes files, with each call of the system failing in turn.

#include <array>
#include <functional>
#include <map>
#include <numeric>
#include <vector>

#include "files/batch.h"
#include "files/file_io.h"
#include "files/text_file.h"
#include "support/failing_disk.h"
#include "support/table_help.h"
#include "support/tbl_bytes.h"
#include "support/temp_dir.h"
#include "table/table_to_v1.h"

namespace orvane::testing {
namespace {

namespace fs = std::filesystem;
using Disk = FailingDisk;
using Files = std::map<std::string, std::string>;

constexpr std::string_view kInjected = "Input/output error";

Files Snapshot(const TempDir& dir) {
  Files files;
  for (const auto& entry : fs::recursive_directory_iterator(dir.Path())) {
    const std::string name = entry.path().lexically_relative(dir.Path()).generic_string();
    if (entry.is_symlink()) {
      files[name] = "link to " + fs::read_symlink(entry.path()).string();
    } else if (!entry.is_directory()) {
      files[name] = ReadAll(entry.path());
    }
  }
  return files;
}

std::string SaveInPieces(const fs::path& path) {
  OutFile file;
  Result<> done = file.Open(path);
  for (const std::string piece : {"the new text, ", "in two pieces"}) {
    done = done ? file.Write(std::as_bytes(std::span(piece))) : done;
  }
  return (done ? file.Commit() : done).Message();
}

std::string SaveText(const fs::path& path) {
  TextFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    return opened.Message();
  }
  for (int i = 0; i < 30000; ++i) {  // more than one piece
    file.Int(i, 9).Text("\n");
  }
  return file.Commit().Message();
}

std::string ConvertToV1(const TempDir& dir) {
  Batch batch({TableToV1(NewTable()), {dir / "A.TBL", dir / "b.tbl"}, {}, 1});
  batch.Start();
  batch.Wait();
  std::string failures;
  for (std::size_t i = 0; i < batch.Count(); ++i) {
    failures += batch.Result(i)->IsDone() ? std::string()
                                          : FileMessage(batch.Input(i), batch.Result(i)->text);
  }
  return failures;
}

struct User {
  const char* name;
  std::function<std::string(const TempDir&)> save;
};

// What each of them finds: old files of every name that it writes, and a link.
void MakeOldFiles(const TempDir& dir) {
  WriteAll(dir / "old", "what was in old");
  WriteAll(dir / "A.TBL", HeaderV2() + RecordV2("SITE", 0, 2, "S0400E"));
  WriteAll(dir / "b.tbl", HeaderV2() + RecordV2("SITE", 0, 2, "S0500E"));
  fs::create_directory(dir / "sub");
  WriteAll(dir / "sub/target", std::string(300000, 'o'));
  if (!MakeLink("sub/target", dir / "link")) {
    WriteAll(dir / "link", std::string(300000, 'o'));
  }
}

const std::vector<User>& Users() {
  static const std::vector<User> users = {
      {"pieces", [](const TempDir& dir) { return SaveInPieces(dir / "old"); }},
      {"a new file", [](const TempDir& dir) { return SaveInPieces(dir / "new"); }},
      {"through a link", [](const TempDir& dir) { return SaveInPieces(dir / "link"); }},
      {"text through a link", [](const TempDir& dir) { return SaveText(dir / "link"); }},
      {"backup", [](const TempDir& dir) { return KeepBackup(dir / "old").Message(); }},
      {"to version 1", ConvertToV1},
  };
  return users;
}

struct Way {
  const char* name;
  Disk::Call forbidden;
  int error;  // 0: nothing is forbidden
};
constexpr Way kWays[] = {{"beside", Disk::kCreate, 0},
                         {"no second file", Disk::kCreate, EACCES},
                         {"no replacing", Disk::kRename, EPERM}};

bool Contains(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

// Every file has its old or its new bytes, and there is no other.
void ExpectWholeFiles(const Files& found, const Files& before, const Files& after) {
  const auto has = [](const Files& files, const auto& file) {
    const auto at = files.find(file.first);
    return at != files.end() && *at == file;
  };
  for (const auto& file : found) {
    EXPECT_TRUE(has(before, file) || has(after, file))
        << file.first << " has " << file.second.size() << " bytes";
  }
  for (const auto& [name, bytes] : before) {
    EXPECT_EQ(found.count(name), 1U) << name << " is gone";
  }
}

TEST(SaveFaults, EachCallFailingLeavesWholeFilesAndAReason) {
  std::array<int, Disk::kCalls> faults{};  // of each kind
  for (const User& user : Users()) {
    Files after;
    {
      const TempDir dir;
      MakeOldFiles(dir);
      ASSERT_EQ(user.save(dir), "") << user.name;
      after = Snapshot(dir);
    }
    for (const Way& way : kWays) {
      for (int call = 0; call < Disk::kCalls; ++call) {
        for (int n = 1; call != way.forbidden || way.error == 0; ++n) {
          const auto kind = static_cast<Disk::Call>(call);
          SCOPED_TRACE(std::string(user.name) + ", " + way.name + ", call " + std::to_string(call) +
                       " number " + std::to_string(n));
          const TempDir dir;
          MakeOldFiles(dir);
          const Files before = Snapshot(dir);
          Disk disk;
          disk.Fail(way.forbidden, way.error);
          disk.Fail(kind, EIO, n, n);
          const std::string told = user.save(dir);
          if (Disk::Count(kind) < n) {
            break;
          }
          ++faults[static_cast<std::size_t>(call)];
          const Files found = Snapshot(dir);
          ExpectWholeFiles(found, before, after);
          if (kind >= Disk::kLock && told.empty()) {
            EXPECT_TRUE(found == after) << "a look that does not matter";
            continue;
          }
          EXPECT_TRUE(Contains(told, kInjected) ||
                      (way.error != 0 && Contains(told, SystemReason(way.error))))
              << told;
          EXPECT_FALSE(Contains(told, "put back")) << told;
        }
      }
    }
  }
  for (const int count : faults) {
    EXPECT_TRUE(count > 0 || count == faults[Disk::kList] || count == faults[Disk::kMakeFolder])
        << "a kind of call that nobody makes";
  }
  RecordProperty("faults", std::accumulate(faults.begin(), faults.end(), 0));
}

// Nothing takes the target's place before the disk has it, and nothing is done before the disk has
// the folder.
TEST(SaveFaults, TheDiskHasEachStepBeforeTheNext) {
  for (const auto& [way, order] :
       {std::pair{kWays[0], "ocwwsxmf"}, {kWays[1], "ocwrsx"}, {kWays[2], "ocwwsxmowrsx"}}) {
    const TempDir dir;
    MakeOldFiles(dir);
    Disk disk;
    disk.Fail(way.forbidden, way.error);
    EXPECT_EQ(SaveInPieces(dir / "old"), "");
    EXPECT_EQ(Disk::Order(), order) << way.name;
  }
}

TEST(SaveFaults, ADiskThatTakesLittleAtATimeIsNoFault) {
  for (const User& user : Users()) {
    SCOPED_TRACE(user.name);
    const TempDir plain;
    MakeOldFiles(plain);
    EXPECT_EQ(user.save(plain), "");
    const TempDir dir;
    MakeOldFiles(dir);
    Disk disk;
    disk.WriteShort();
    EXPECT_EQ(user.save(dir), "");
    EXPECT_EQ(Snapshot(dir), Snapshot(plain));
  }
}

TEST(SaveFaults, WhatCannotBePutBackIsTold) {
  const TempDir dir;
  MakeOldFiles(dir);
  {
    Disk disk;
    disk.Fail(Disk::kCreate, EACCES);
    disk.Fail(Disk::kWrite, ENOSPC);
    EXPECT_EQ(SaveInPieces(dir / "old"),
              "No space left on device; what the file held before could not be put back");
  }
  {
    Disk disk;
    disk.Fail(Disk::kCreate, EACCES);
    disk.Fail(Disk::kRead, EIO);
    WriteAll(dir / "old", "again");
    EXPECT_EQ(SaveInPieces(dir / "old"), kInjected) << "what cannot be read back stays";
    EXPECT_EQ(Disk::Order(), "ocx");
    EXPECT_EQ(ReadAll(dir / "old"), "again");
  }
  // The conversion then keeps the second copy that it made.
  const std::string table = ReadAll(dir / "b.tbl");
  Disk disk;
  disk.Fail(Disk::kRename, EPERM, 2);  // the copy arrives, its original cannot be replaced
  disk.Fail(Disk::kResize, EIO);
  Batch batch({TableToV1(NewTable()), {dir / "b.tbl"}, {}, 1});
  batch.Start();
  batch.Wait();
  EXPECT_NE(batch.Result(0)->text.find("could not be put back"), std::string::npos);
  EXPECT_EQ(ReadAll(dir / "b.tbl.bak"), table);
}

}  // namespace
}  // namespace orvane::testing
