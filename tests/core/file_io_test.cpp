// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/file_io.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "support/temp_dir.h"

namespace orvane {
namespace {

namespace fs = std::filesystem;
using testing::ReadAll;
using testing::TempDir;
using testing::WriteAll;

std::span<const std::byte> Bytes(std::string_view text) { return std::as_bytes(std::span(text)); }

int failures = 0;  // calls of the writer that are going to fail
bool Fails(int error = EIO) { return failures > 0 && failures-- > 0 && (errno = error) != 0; }

// The system's calls, one of which fails as often as `failures` says.
FileCalls FailingAt(std::string_view step, FileCalls calls) {
  if (step == "write") {  // a failing disk still takes some bytes
    calls.write = [](int handle, const void* bytes, std::size_t size) -> std::ptrdiff_t {
      return size <= 2 && Fails() ? -1 : ::write(handle, bytes, failures > 0 ? size / 2 : size);
    };
  } else if (step == "sync") {
    calls.sync = [](int handle) { return Fails() ? -1 : ::fsync(handle); };
  } else if (step == "close") {
    calls.close = [](int handle) { return ::close(handle) == 0 && !Fails() ? 0 : -1; };
  } else {
    calls.rename = [](const char* from, const char* to) { return Fails() ? -1 : rename(from, to); };
  }
  return calls;
}

class OutFileTest : public ::testing::Test {
 protected:
  ~OutFileTest() override { WriterCalls() = calls_; }

  const FileCalls calls_ = WriterCalls();
  TempDir dir_;
};

TEST_F(OutFileTest, ReplacesTheFileAndKeepsItsMode) {
  for (const mode_t mode : {0600U, 0644U, 0755U, 0666U}) {
    WriteAll(dir_ / "a", "the old text");
    ASSERT_EQ(chmod((dir_ / "a").c_str(), mode), 0);
    EXPECT_EQ(WriteFile(dir_ / "a", Bytes("new")), "");
    struct stat info {};
    ASSERT_EQ(stat((dir_ / "a").c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777U, mode);
    EXPECT_EQ(ReadAll(dir_ / "a"), "new");
  }
  {
    OutFile file;
    EXPECT_EQ(file.Open(dir_ / "a"), "");
    EXPECT_EQ(file.Write(Bytes("never committed")), "");
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
  EXPECT_EQ(WriteFile(dir_ / "chain", Bytes("new")), "");
  EXPECT_EQ(WriteFile(dir_ / "dangling", Bytes("made")), "");
  EXPECT_EQ(WriteFile(dir_ / "loop", Bytes("x")), "Too many levels of symbolic links");
  EXPECT_EQ(ReadAll(dir_ / "sub/file"), "new");
  EXPECT_EQ(ReadAll(dir_ / "sub/missing"), "made");
  for (const char* link : {"chain", "sub/link", "dangling", "loop"}) {
    EXPECT_TRUE(fs::is_symlink(dir_ / link)) << link;
  }
  EXPECT_EQ(dir_.Count(), 4U);
}

TEST_F(OutFileTest, AFailureAtAnyStepLeavesTheOldFile) {
  for (const std::string step : {"write", "sync", "close", "rename"}) {
    for (const bool exists : {true, false}) {
      SCOPED_TRACE(step + (exists ? ", old file" : ""));
      const TempDir dir;
      if (exists) {
        WriteAll(dir / "a", "the old text");
      }
      WriterCalls() = FailingAt(step, calls_);
      failures = 1;
      OutFile file;
      EXPECT_EQ(file.Open(dir / "a"), "");
      const std::string written = file.Write(Bytes("new text"));
      EXPECT_EQ(written, step == "write" ? "Input/output error" : "");
      EXPECT_EQ(file.Commit(), "Input/output error");
      EXPECT_EQ(failures, 0);
      EXPECT_EQ(dir.Count(), exists ? 1U : 0U);
      EXPECT_EQ(ReadAll(dir / "a"), exists ? "the old text" : "");
    }
  }
}

TEST_F(OutFileTest, RewritesInPlaceWhereTheFolderTakesNoSecondFile) {
  WriteAll(dir_ / "a", "the old text");
  struct stat before {};
  ASSERT_EQ(stat((dir_ / "a").c_str(), &before), 0);
  for (const std::string_view text : {"new", "something longer than before"}) {
    for (const std::string step : {"write", "sync", "close"}) {
      SCOPED_TRACE(step);
      WriteAll(dir_ / "a", "the old text");
      WriterCalls() = FailingAt(step, calls_);
      WriterCalls().create_beside = [](const char*) { return errno = EACCES, -1; };
      failures = 1;
      EXPECT_EQ(WriteFile(dir_ / "a", Bytes(text)), "Input/output error");
      EXPECT_EQ(failures, 0);
      EXPECT_EQ(ReadAll(dir_ / "a"), "the old text");
    }
    EXPECT_EQ(WriteFile(dir_ / "a", Bytes(text)), "");
    EXPECT_EQ(ReadAll(dir_ / "a"), text);
  }
  struct stat after {};
  ASSERT_EQ(stat((dir_ / "a").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(WriteFile(dir_ / "b", Bytes("x")), "Permission denied");

  // A full disk is no reason to risk the old file.
  WriterCalls().create_beside = [](const char*) { return errno = ENOSPC, -1; };
  EXPECT_EQ(WriteFile(dir_ / "a", Bytes("x")), "No space left on device");
  EXPECT_EQ(ReadAll(dir_ / "a"), "something longer than before");
  EXPECT_EQ(dir_.Count(), 1U);
}

TEST_F(OutFileTest, RewritesWhatMayNotBeReplaced) {
  // As in a shared folder, where only the owner may replace a file that everybody may write.
  WriteAll(dir_ / "a", "the old text");
  WriterCalls().rename = [](const char*, const char*) { return errno = EPERM, -1; };
  EXPECT_EQ(WriteFile(dir_ / "a", Bytes("new")), "");
  EXPECT_EQ(ReadAll(dir_ / "a"), "new");
  EXPECT_EQ(WriteFile(dir_ / "b", Bytes("new")), "Operation not permitted");
  EXPECT_EQ(dir_.Count(), 1U);
}

TEST_F(OutFileTest, NeverReplacesPipesAndDevices) {
  const fs::path pipe = dir_ / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(WriteFile(pipe, Bytes("through")), "");
  char text[16] = {};
  EXPECT_EQ(read(reader, text, sizeof text), 7);
  EXPECT_STREQ(text, "through");
  close(reader);
  EXPECT_TRUE(fs::is_fifo(pipe));
  EXPECT_EQ(dir_.Count(), 1U);
  // Run by root, a faulty writer would replace the machine's devices: it must not get that far.
  WriterCalls().rename = [](const char*, const char*) { return errno = EIO, -1; };
  EXPECT_EQ(WriteFile("/dev/full", Bytes("x")), "No space left on device");
  EXPECT_EQ(WriteFile("/dev/null", Bytes("x")), "");
}

}  // namespace
}  // namespace orvane
