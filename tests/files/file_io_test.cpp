// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/file_io.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "support/failing_disk.h"
#include "support/temp_dir.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using namespace testing;  // NOLINT: the builders

std::span<const std::byte> Bytes(std::string_view text) { return std::as_bytes(std::span(text)); }

class OutFileTest : public ::testing::Test {
 protected:
  TempDir dir_;
};

TEST_F(OutFileTest, ReplacesTheFileAndKeepsItsMode) {
  for (const mode_t mode : {0600U, 0644U, 0755U, 0666U}) {
    WriteAll(dir_ / "a", "the old text");
    ASSERT_EQ(chmod((dir_ / "a").c_str(), mode), 0);
    EXPECT_EQ(WriteFile(dir_ / "a", Bytes("new")).Message(), "");
    struct stat info {};
    ASSERT_EQ(stat((dir_ / "a").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777U, mode);
    EXPECT_EQ(ReadAll(dir_ / "a"), "new");
  }
  {
    OutFile file;
    EXPECT_EQ(file.Open(dir_ / "a").Message(), "");
    EXPECT_EQ(file.Write(Bytes("never committed")).Message(), "");
  }
  EXPECT_EQ(ReadAll(dir_ / "a"), "new");
  EXPECT_EQ(dir_.Count(), 1U);
}

TEST_F(OutFileTest, FollowsSymbolicLinks) {
  fs::create_directory(dir_ / "sub");
  WriteAll(dir_ / "sub/file", "old");
  fs::create_symlink("file", dir_ / "sub/link");
  fs::create_symlink("sub/link", dir_ / "chain");
  fs::create_symlink("sub/missing", dir_ / "dangling");
  fs::create_symlink("loop", dir_ / "loop");
  EXPECT_EQ(WriteFile(dir_ / "chain", Bytes("new")).Message(), "");
  EXPECT_EQ(WriteFile(dir_ / "dangling", Bytes("made")).Message(), "");
  EXPECT_EQ(WriteFile(dir_ / "loop", Bytes("x")).Message(), "Too many levels of symbolic links");
  EXPECT_EQ(ReadAll(dir_ / "sub/file"), "new");
  EXPECT_EQ(ReadAll(dir_ / "sub/missing"), "made");
  for (const char* link : {"chain", "sub/link", "dangling", "loop"}) {
    EXPECT_TRUE(fs::is_symlink(dir_ / link)) << link;
  }
  EXPECT_EQ(dir_.Count(), 4U);
}

TEST_F(OutFileTest, RewritesInPlaceWhereTheFolderTakesNoSecondFile) {
  WriteAll(dir_ / "a", "the old text");
  struct stat before {};
  ASSERT_EQ(stat((dir_ / "a").c_str(), &before), 0);
  {
    FailingDisk disk;
    disk.Fail(FailingDisk::kCreate, EACCES);
    for (const std::string_view text : {"new", "something longer than before"}) {
      EXPECT_EQ(WriteFile(dir_ / "a", Bytes(text)).Message(), "");
      EXPECT_EQ(ReadAll(dir_ / "a"), text);
    }
    EXPECT_EQ(WriteFile(dir_ / "b", Bytes("x")).Message(), "Permission denied");
  }
  struct stat after {};
  ASSERT_EQ(stat((dir_ / "a").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);

  // A full disk must not put the old file at risk.
  FailingDisk disk;
  disk.Fail(FailingDisk::kCreate, ENOSPC);
  EXPECT_EQ(WriteFile(dir_ / "a", Bytes("x")).Message(), "No space left on device");
  EXPECT_EQ(ReadAll(dir_ / "a"), "something longer than before");
  EXPECT_EQ(dir_.Count(), 1U);
}

TEST_F(OutFileTest, RewritesWhatMayNotBeReplaced) {
  // As in a shared folder, where only the owner may replace a file that everybody may write.
  WriteAll(dir_ / "a", "the old text");
  FailingDisk disk;
  disk.Fail(FailingDisk::kRename, EPERM);
  EXPECT_EQ(WriteFile(dir_ / "a", Bytes("new")).Message(), "");
  EXPECT_EQ(ReadAll(dir_ / "a"), "new");
  EXPECT_EQ(WriteFile(dir_ / "b", Bytes("new")).Message(), "Operation not permitted");
  EXPECT_EQ(dir_.Count(), 1U);
}

TEST_F(OutFileTest, NeverReplacesPipesAndDevices) {
  const fs::path pipe = dir_ / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(WriteFile(pipe, Bytes("through")).Message(), "");
  char text[16] = {};
  EXPECT_EQ(read(reader, text, sizeof text), 7);
  EXPECT_STREQ(text, "through");
  close(reader);
  EXPECT_TRUE(fs::is_fifo(pipe));
  EXPECT_EQ(dir_.Count(), 1U);
  // Run by root, a faulty writer would replace the machine's devices: it must not get that far.
  FailingDisk disk;
  disk.Fail(FailingDisk::kRename, EIO);
  fs::create_symlink("/dev/full", dir_ / "full");
  EXPECT_EQ(WriteFile(dir_ / "full", Bytes("x")).Message(), "No space left on device");
  EXPECT_TRUE(fs::is_symlink(dir_ / "full"));
  EXPECT_EQ(WriteFile("/dev/full", Bytes("x")).Message(), "No space left on device");
  EXPECT_EQ(WriteFile("/dev/null", Bytes("x")).Message(), "");
}

// The save that comes to its end last wins; neither takes the other's bytes for its own.
TEST_F(OutFileTest, TwoSavesOfOneFileKeepApart) {
  WriteAll(dir_ / "a", "old");
  OutFile first;
  OutFile second;
  ASSERT_EQ(first.Open(dir_ / "a").Message(), "");
  ASSERT_EQ(second.Open(dir_ / "a").Message(), "");
  EXPECT_EQ(dir_.Count(), 3U);
  EXPECT_EQ(second.Write(Bytes("second")).Message(), "");
  EXPECT_EQ(first.Write(Bytes("the first")).Message(), "");
  EXPECT_EQ(second.Commit().Message(), "");
  EXPECT_EQ(ReadAll(dir_ / "a"), "second");
  EXPECT_EQ(WriteFile(dir_ / "a", Bytes("third")).Message(), "")
      << "while the first is still at it";
  EXPECT_EQ(first.Commit().Message(), "");
  EXPECT_EQ(ReadAll(dir_ / "a"), "the first");
  EXPECT_EQ(dir_.Count(), 1U);
}

TEST_F(OutFileTest, RemovesWhatKilledProgramsLeftAndNothingElse) {
  const fs::path target = dir_ / std::string(255, 'n');
  const auto name = [&](int i) { return BesideFile::NameFor(target, i); };
  EXPECT_EQ(name(0).filename(), name(0).filename().string().substr(0, 28));
  EXPECT_NE(name(0), BesideFile::NameFor(dir_ / std::string(254, 'n'), 0));
  for (const int i : {0, 3, BesideFile::kNames - 1}) {
    WriteAll(name(i), "half a");
  }
  WriteAll(dir_ / ".orvane-other.tmp", "another file's");
  EXPECT_EQ(WriteFile(target, Bytes("whole")).Message(), "");
  EXPECT_EQ(ReadAll(target), "whole");
  EXPECT_EQ(dir_.Count(), 2U);

  // Names that hold no leftover are let be, and another is taken.
  fs::create_directory(name(0));
  fs::create_symlink("elsewhere", name(1));
  ASSERT_EQ(mkfifo(name(2).c_str(), 0600), 0);
  std::vector<std::unique_ptr<OutFile>> others;
  for (int i = 3; i < BesideFile::kNames; ++i) {
    others.push_back(std::make_unique<OutFile>());
    EXPECT_EQ(others.back()->Open(target).Message(), "");
  }
  EXPECT_EQ(WriteFile(target, Bytes("one too many")).Message(),
            "is being changed by another program");
  others.clear();
  EXPECT_EQ(WriteFile(target, Bytes("again")).Message(), "");
  EXPECT_EQ(ReadAll(target), "again");
  EXPECT_EQ(dir_.Count(), 5U);
  EXPECT_TRUE(fs::is_symlink(name(1)));
}

// In the user's own folder by the name of the new file, in one for others too by the target's lock.
TEST_F(OutFileTest, UpdatesOfOneFileWaitForEachOther) {
  for (const mode_t mode : {0700U, 0777U}) {
    ASSERT_EQ(chmod(dir_.Path().c_str(), mode), 0);
    WriteAll(dir_ / "a", "old");
    OutFile first;
    ASSERT_EQ(first.OpenToUpdate(dir_ / "a").Message(), "");
    std::string seen;
    std::thread other([&] {
      OutFile second;
      EXPECT_EQ(second.OpenToUpdate(dir_ / "a").Message(), "");
      seen = ReadAll(dir_ / "a");
      EXPECT_EQ(second.Write(Bytes("second")).Message(), "");
      EXPECT_EQ(second.Commit().Message(), "");
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_EQ(first.Write(Bytes("first")).Message(), "");
    EXPECT_EQ(first.Commit().Message(), "");
    other.join();
    EXPECT_EQ(seen, "first");
    EXPECT_EQ(ReadAll(dir_ / "a"), "second");
    EXPECT_EQ(dir_.Count(), 1U);
  }
}

TEST_F(OutFileTest, AnUpdateNoticesThatOthersChangedTheFile) {
  for (const bool in_place : {false, true}) {
    FailingDisk disk;
    if (in_place) {
      disk.Fail(FailingDisk::kCreate, EACCES);
    }
    WriteAll(dir_ / "a", "old");
    OutFile file;
    ASSERT_EQ(file.OpenToUpdate(dir_ / "a").Message(), "");
    EXPECT_EQ(file.Write(Bytes("new")).Message(), "");
    WriteAll(dir_ / "a", "2nd");
    EXPECT_EQ(file.Commit().Message(), "another program has changed it");
    EXPECT_TRUE(file.WasOvertaken());
    EXPECT_EQ(ReadAll(dir_ / "a"), "2nd");
    EXPECT_EQ(dir_.Count(), 1U);
  }
}

TEST_F(OutFileTest, InFoldersOfOthersNamesCannotBeForeseen) {
  ASSERT_EQ(chmod(dir_.Path().c_str(), 0777), 0);
  WriteAll(dir_ / ".orvane-0123456789ABCDEF.tmp", "left by a killed program");
  OutFile file;
  EXPECT_EQ(file.Open(dir_ / "a").Message(), "");
  EXPECT_FALSE(fs::exists(BesideFile::NameFor(dir_ / "a", 0)));
  EXPECT_EQ(dir_.Count(), 1U) << "the other's is gone";
}

TEST_F(OutFileTest, MakesFoldersOrSaysWhyNot) {
  EXPECT_EQ(MakeFolders(dir_ / "a/b/c/").Message(), "");
  EXPECT_TRUE(fs::is_directory(dir_ / "a/b/c"));
  EXPECT_EQ(MakeFolders("").Message(), "");
  WriteAll(dir_ / "file", "");
  EXPECT_EQ(MakeFolders(dir_ / "file/x").Message(),
            FileMessage(dir_ / "file/x", "Not a directory"));
  for (const auto call : {FailingDisk::kMakeFolder, FailingDisk::kSyncFolder, FailingDisk::kLook}) {
    FailingDisk disk;
    disk.Fail(call, EACCES);
    EXPECT_EQ(MakeFolders(dir_ / "new").Message(), FileMessage(dir_ / "new", "Permission denied"))
        << call;
  }
}

// As where locks do not reach other computers.
TEST_F(OutFileTest, WhatTookTheNewFilesPlaceIsNotTakenForIt) {
  const fs::path beside = BesideFile::NameFor(dir_ / "a", 0);
  WriteAll(dir_ / "a", "old");
  OutFile file;
  EXPECT_EQ(file.Open(dir_ / "a").Message(), "");
  EXPECT_EQ(file.Write(Bytes("new")).Message(), "");
  fs::remove(beside);
  WriteAll(beside, "another's, half");
  EXPECT_EQ(file.Commit().Message(), "another program has removed the temporary file");
  EXPECT_EQ(ReadAll(dir_ / "a"), "old");
}

TEST_F(OutFileTest, InPlaceOneProgramAtATime) {
  WriteAll(dir_ / "a", "old");
  const int other = open((dir_ / "a").c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(TryLock(other), Lock::kTaken);
  FailingDisk disk;
  disk.Fail(FailingDisk::kCreate, EACCES);
  EXPECT_EQ(WriteFile(dir_ / "a", Bytes("new")).Message(), "is being changed by another program");
  EXPECT_EQ(ReadAll(dir_ / "a"), "old");
  close(other);
  EXPECT_EQ(WriteFile(dir_ / "a", Bytes("new")).Message(), "");
}

// Somebody else may write it, its group may not even read it.
TEST_F(OutFileTest, KeepsAnAccessList) {
  constexpr const char* kName = "system.posix_acl_access";
  constexpr std::string_view kList(
      "\2\0\0\0"
      "\1\0\6\0\xff\xff\xff\xff"
      "\2\0\6\0\xfe\xff\0\0"
      "\4\0\0\0\xff\xff\xff\xff"
      "\x10\0\6\0\xff\xff\xff\xff"
      "\x20\0\0\0\xff\xff\xff\xff",
      44);
  WriteAll(dir_ / "a", "old");
  if (setxattr((dir_ / "a").c_str(), kName, kList.data(), kList.size(), 0) != 0) {
    GTEST_SKIP() << "no access lists here";
  }
  EXPECT_EQ(WriteFile(dir_ / "a", Bytes("new")).Message(), "");
  std::string list(64, '\0');
  const auto size = getxattr((dir_ / "a").c_str(), kName, list.data(), list.size());
  EXPECT_EQ(list.substr(0, size < 0 ? 0 : static_cast<std::size_t>(size)), kList);

  // What a folder gives to all new files is not for one that has none.
  WriteAll(dir_ / "b", "old");
  ASSERT_EQ(
      setxattr(dir_.Path().c_str(), "system.posix_acl_default", kList.data(), kList.size(), 0), 0);
  EXPECT_EQ(WriteFile(dir_ / "b", Bytes("new")).Message(), "");
  EXPECT_LT(getxattr((dir_ / "b").c_str(), kName, nullptr, 0), 0);
}

TEST_F(OutFileTest, WhatTookTheTargetsPlaceMeanwhileIsNotLost) {
  const auto save_when = [this](const std::function<void()>& replace) {
    WriteAll(dir_ / "a", "old");
    OutFile file;
    EXPECT_EQ(file.Open(dir_ / "a").Message(), "");
    EXPECT_EQ(file.Write(Bytes("new")).Message(), "");
    fs::remove(dir_ / "a");
    replace();
    return file.Commit().Message();
  };
  EXPECT_EQ(save_when([] {}), "") << "removed meanwhile: made again";
  EXPECT_EQ(save_when([this] { WriteAll(dir_ / "a", "another's"); }), "");
  EXPECT_EQ(ReadAll(dir_ / "a"), "new") << "a file is saved over";

  const std::string refused = "it became a folder, a device or a link while it was written";
  EXPECT_EQ(save_when([this] { fs::create_directory(dir_ / "a"); }), refused);
  fs::remove(dir_ / "a");
  EXPECT_EQ(save_when([this] { fs::create_symlink("/dev/null", dir_ / "a"); }), refused);
  EXPECT_TRUE(fs::is_symlink(dir_ / "a"));
  fs::remove(dir_ / "a");
  FailingDisk disk;
  disk.Fail(FailingDisk::kCreate, EACCES);
  EXPECT_EQ(save_when([this] { WriteAll(dir_ / "a", "another's"); }),
            "another file took its place while it was written")
      << "in place the bytes would go to a file without a name";
  EXPECT_EQ(ReadAll(dir_ / "a"), "another's");
  EXPECT_EQ(dir_.Count(), 1U);
}

// What the rights of files and folders forbid, which a super-user never meets.
TEST_F(OutFileTest, ObeysRightsAndLimits) {
  WriteAll(dir_ / "writable", "old");
  WriteAll(dir_ / "not", "old");
  WriteAll(dir_ / "large", std::string(9000, 'o'));
  chmod((dir_ / "large").c_str(), 0666);
  chmod((dir_ / "writable").c_str(), 0666);
  chmod((dir_ / "not").c_str(), 0444);
  chmod(dir_.Path().c_str(), 0555);
  const pid_t child = fork();
  if (child == 0) {
    ReportSizeLimits();
    const rlimit most{4096, 4096};
    const bool is_plain = geteuid() != 0 || (setgid(65534) == 0 && setuid(65534) == 0);
    const std::string long_text(5000, 'x');
    const bool is_right =
        is_plain && WriteFile(dir_ / "writable", Bytes("new")) &&
        WriteFile(dir_ / "not", Bytes("new")).Message() == "Permission denied" &&
        WriteFile(dir_ / "none", Bytes("new")).Message() == "Permission denied" &&
        setrlimit(RLIMIT_FSIZE, &most) == 0 &&
        WriteFile(dir_ / "writable", Bytes(long_text)).Message() == "File too large" &&
        WriteFile(dir_ / "large", Bytes(long_text)).Message() == "File too large";
    _exit(is_right ? 0 : 1);
  }
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(ReadAll(dir_ / "writable"), "new");
  EXPECT_EQ(ReadAll(dir_ / "not"), "old");
  EXPECT_EQ(ReadAll(dir_ / "large"), std::string(9000, 'o'))
      << "the part within the limit put back";
  EXPECT_EQ(dir_.Count(), 3U);
  chmod(dir_.Path().c_str(), 0755);
}

}  // namespace
}  // namespace orvane
