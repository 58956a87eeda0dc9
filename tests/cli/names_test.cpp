// SPDX-License-Identifier: GPL-3.0-or-later
// Files and folders keep their names, whatever bytes these are.

#include <vector>

#include "support/cli_run.h"
#include "support/tbl_bytes.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

const std::vector<std::string> kAllNames = {"with space",
                                            "H\xC3\xA4user",
                                            "\xE6\xB8\xAC\xE7\xB7\x9A",
                                            "bad\xFF\xFE",
                                            "-dash",
                                            "--help",
                                            "[a,b]",
                                            "%s%n",
                                            "line\nbreak",
                                            "=TECH=1",
                                            "quote'\"`$HOME\\",
                                            std::string(251, 'n')};

// Windows has no control characters in names, no quotation marks and no bytes that are no text.
std::vector<std::string> Names() {
  std::vector<std::string> names = kAllNames;
  if (WindowsTool() != nullptr) {
    std::erase_if(names, [](const std::string& name) {
      return name.find_first_of("\n\"\xFF") != std::string::npos;
    });
  }
  return names;
}

std::string Quoted(const std::string& name) {
  std::string quoted = "'";
  for (const char c : name) {
    quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  }
  return quoted + "'";
}

// A table of one parameter, SNUM.
std::string Table(int serial) {
  return HeaderV2() + RecordV2("SNUM", kMaskAnyMode, IntPT, IntBytes(serial));
}

TEST(Names, OfFilesPassThroughUnchanged) {
  for (const std::string& stem : Names()) {
    const TempDir dir;
    const std::string name = stem + ".tbl";
    WriteAll(dir / name, Table(2417));
    EXPECT_EQ(RunCli(dir, "table get -- " + Quoted(name) + " SNUM").out, "SNUM=2417\n") << name;
    EXPECT_EQ(RunCli(dir, "table set " + Quoted("./" + name) + " SNUM=7").exit_code, 0) << name;
    EXPECT_EQ(RunCli(dir, "table get " + Quoted("./" + name) + " SNUM").out, "SNUM=7\n") << name;
    const Outcome text = RunCli(dir, "table text -- " + Quoted(name));
    EXPECT_EQ(text.exit_code, 0) << name << text.err;
    EXPECT_FALSE(ReadAll(dir / (stem + ".txt")).empty()) << name;
    // The two files, and what the shell wrote.
    std::size_t count = 0;
    for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(dir.Path())) {
      ++count;
    }
    EXPECT_EQ(count, 4U) << name;
    const Outcome none = RunCli(dir, "table show -- " + Quoted("no" + stem));
    EXPECT_EQ(none.exit_code, 1) << name;
    EXPECT_NE(none.err.find("no" + stem), std::string::npos) << name << none.err;
  }
}

TEST(Names, OfFoldersToo) {
  for (const std::string& name : Names()) {
    const TempDir dir;
    std::filesystem::create_directory(dir / name);
    WriteAll(dir / name / "a.tbl", Table(2417));
    const std::string folder = "./" + name;
    const Outcome text =
        RunCli(dir, "table text --out " + Quoted(folder) + " " + Quoted(folder + "/a.tbl"));
    EXPECT_EQ(Slashed(text.out), folder + "/a.txt\n");
    const Outcome startup = RunCli(dir, "table set " + Quoted(folder + "/a.tbl") + " SNUM=3 --to " +
                                            Quoted(folder + "/b.tbl"));
    EXPECT_EQ(startup.exit_code, 0) << startup.err;
    EXPECT_FALSE(ReadAll(dir / name / "b.tbl").empty()) << name;
  }
}

// Windows' shells leave that to the programs; elsewhere the name is taken as it is.
TEST(Names, WithWildcardsAreLookedUpWhereNoShellDoesSo) {
  const TempDir dir;
  std::filesystem::create_directory(dir / "d");
  for (const char* name : {"d/b.TBL", "d/a.tbl", "d/c.tbl_old", "d/d.tblx", "d/ab.tbl"}) {
    WriteAll(dir / name, Table(2417));
  }
  const Outcome outcome = RunCli(dir, "table text 'd/?b.tbl' 'd/?.tbl' 'd/*.none'");
  EXPECT_EQ(outcome.exit_code, 1);
  EXPECT_EQ(Slashed(outcome.out), WindowsTool() != nullptr ? "d/ab.txt\nd/a.txt\nd/b.txt\n" : "");
  EXPECT_NE(outcome.err.find("*.none: No such file"), std::string::npos) << outcome.err;
}

}  // namespace
}  // namespace orvane
