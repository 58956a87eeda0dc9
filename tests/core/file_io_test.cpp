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

/// Lets the writer's system calls fail until the end of the test.
class WriterFailures : public ::testing::Test {
 protected:
  ~WriterFailures() override { WriterCalls() = calls_; }

  static inline int failures_ = 0;  // calls that are going to fail
  static bool Fails(int error = EIO) { return failures_ > 0 && failures_-- > 0 && (errno = error); }
  static int ForbidSecondFile(const char*) { return errno = EACCES, -1; }

  // Each step fails as often as `failures_` says.
  using Step = void (*)(FileCalls* calls);
  static constexpr Step kWrite = [](FileCalls* calls) {
    // A full disk still takes a few bytes.
    calls->write = [](int handle, const void* bytes, std::size_t size) -> std::ptrdiff_t {
      return size <= 2 && Fails() ? -1 : ::write(handle, bytes, failures_ > 0 ? size / 2 : size);
    };
  };
  static constexpr Step kSync = [](FileCalls* calls) {
    calls->sync = [](int handle) { return Fails() ? -1 : ::fsync(handle); };
  };
  static constexpr Step kClose = [](FileCalls* calls) {
    calls->close = [](int handle) { return ::close(handle) == 0 && !Fails() ? 0 : -1; };
  };
  static constexpr Step kRename = [](FileCalls* calls) {
    calls->rename = [](const char* from, const char* to) {
      return Fails() ? -1 : std::rename(from, to);
    };
  };

  const FileCalls calls_ = WriterCalls();
  TempDir dir_;
};
using OutFileTest = WriterFailures;

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
  EXPECT_EQ(WriteFile(dir_ / "b", {}), "");
  EXPECT_EQ(fs::file_size(dir_ / "b"), 0U);
  EXPECT_EQ(dir_.Count(), 2U);
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
  EXPECT_EQ(WriteFile(dir_ / "loop", Bytes("x")), std::strerror(ELOOP));
  EXPECT_EQ(ReadAll(dir_ / "sub/file"), "new");
  EXPECT_EQ(ReadAll(dir_ / "sub/missing"), "made");
  for (const char* link : {"chain", "sub/link", "dangling", "loop"}) {
    EXPECT_TRUE(fs::is_symlink(dir_ / link)) << link;
  }
  EXPECT_EQ(dir_.Count(), 4U);
}

TEST_F(OutFileTest, AFailureAtAnyStepLeavesTheOldFile) {
  for (const Step step : {kWrite, kSync, kClose, kRename}) {
    for (const bool exists : {true, false}) {
      SCOPED_TRACE((step == kWrite   ? "write"
                    : step == kSync  ? "sync"
                    : step == kClose ? "close"
                                     : "rename") +
                   std::string(exists ? ", old file" : ""));
      const TempDir dir;
      if (exists) {
        WriteAll(dir / "a", "the old text");
      }
      WriterCalls() = calls_;
      step(&WriterCalls());
      failures_ = 1;
      OutFile file;
      EXPECT_EQ(file.Open(dir / "a"), "");
      const std::string written = file.Write(Bytes("new text"));
      EXPECT_EQ(written, step == kWrite ? std::strerror(EIO) : "");
      EXPECT_EQ(file.Commit(), std::strerror(EIO));
      EXPECT_EQ(file.Write(Bytes("x")), std::strerror(EIO));
      EXPECT_EQ(failures_, 0);
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
    for (const Step step : {kWrite, kSync, kClose}) {
      SCOPED_TRACE(step == kWrite ? "write" : step == kSync ? "sync" : "close");
      WriteAll(dir_ / "a", "the old text");
      WriterCalls() = calls_;
      WriterCalls().create_beside = ForbidSecondFile;
      step(&WriterCalls());
      failures_ = 1;
      EXPECT_EQ(WriteFile(dir_ / "a", Bytes(text)), std::strerror(EIO));
      EXPECT_EQ(failures_, 0);
      EXPECT_EQ(ReadAll(dir_ / "a"), "the old text");
    }
    {
      OutFile file;
      EXPECT_EQ(file.Open(dir_ / "a"), "");
      EXPECT_EQ(file.Write(Bytes(text)), "");
    }
    EXPECT_EQ(ReadAll(dir_ / "a"), "the old text");  // not without Commit()
    EXPECT_EQ(WriteFile(dir_ / "a", Bytes(text)), "");
    EXPECT_EQ(ReadAll(dir_ / "a"), text);
  }
  struct stat after {};
  ASSERT_EQ(stat((dir_ / "a").c_str(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
  EXPECT_EQ(WriteFile(dir_ / "b", Bytes("x")), std::strerror(EACCES));

  // A full disk is no reason to risk the old file.
  WriterCalls().create_beside = [](const char*) { return errno = ENOSPC, -1; };
  EXPECT_EQ(WriteFile(dir_ / "a", Bytes("x")), std::strerror(ENOSPC));
  EXPECT_EQ(ReadAll(dir_ / "a"), "something longer than before");
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
  EXPECT_EQ(WriteFile("/dev/full", Bytes("x")), std::strerror(ENOSPC));
  EXPECT_EQ(WriteFile("/dev/null", Bytes("x")), "");
  EXPECT_TRUE(fs::is_character_file("/dev/full") && fs::is_character_file("/dev/null"));
}

TEST_F(OutFileTest, TellsWhyATargetCannotBeOpened) {
  WriteAll(dir_ / "file", "old");
  const std::pair<fs::path, int> cases[] = {
      {dir_.Path(), EISDIR}, {dir_ / "none/a", ENOENT}, {dir_ / "file/a", ENOTDIR}, {"", ENOENT}};
  for (const auto& [path, error] : cases) {
    OutFile file;
    EXPECT_EQ(file.Open(path), std::strerror(error)) << path;
    EXPECT_EQ(file.Commit(), std::strerror(error)) << path;
  }
  EXPECT_NE(OutFile().Commit(), "");
  EXPECT_EQ(dir_.Count(), 1U);
}

TEST_F(OutFileTest, ShortAndInterruptedWritesAreContinued) {
  WriterCalls().write = [](int handle, const void* bytes, std::size_t size) -> std::ptrdiff_t {
    failures_ = failures_ == 0 ? 1 : 0;
    return Fails(EINTR) ? -1 : ::write(handle, bytes, std::min<std::size_t>(size, 3));
  };
  OutFile one;
  OutFile two;  // two writers in one folder do not meet
  EXPECT_EQ(one.Open(dir_ / "one"), "");
  EXPECT_EQ(two.Open(dir_ / "two"), "");
  failures_ = 1;
  EXPECT_EQ(one.Write(Bytes("a text of ")), "");
  EXPECT_EQ(one.Write(Bytes("two pieces")), "");
  EXPECT_EQ(two.Write(Bytes("another")), "");
  EXPECT_EQ(two.Commit(), "");
  EXPECT_EQ(one.Commit(), "");
  EXPECT_EQ(ReadAll(dir_ / "one"), "a text of two pieces");
  EXPECT_EQ(ReadAll(dir_ / "two"), "another");
  EXPECT_EQ(dir_.Count(), 2U);
}

TEST(InFile, ReadsInPiecesOfAnySize) {
  const TempDir dir;
  std::string content;
  while (content.size() < 300000) {
    content += std::to_string(content.size()) + ' ';
  }
  WriteAll(dir / "a", content);
  for (const std::size_t piece : {1U, 7919U, 131072U, 400000U}) {
    InFile file;
    ASSERT_EQ(file.Open(dir / "a"), "");
    std::string text;
    std::string bytes(piece, '\0');
    for (std::size_t count = piece; count == piece;) {
      count = file.Read(std::as_writable_bytes(std::span(bytes)));
      text.append(bytes, 0, count);
    }
    EXPECT_TRUE(text == content) << piece;
    EXPECT_EQ(file.Error(), "");
  }
  EXPECT_EQ(InFile().Open(dir / "none"), std::strerror(ENOENT));
  EXPECT_EQ(InFile().Open(dir.Path()), std::strerror(EISDIR));
  EXPECT_NE(InFile().Open("/dev/null"), "");
  EXPECT_EQ(FileMessage("a/b.tbl", "gone"), "a/b.tbl: gone");
}

}  // namespace
}  // namespace orvane
