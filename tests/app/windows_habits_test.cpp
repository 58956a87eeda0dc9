// SPDX-License-Identifier: GPL-3.0-or-later
// What is done for the crews' computers: the folders where they keep field files, and the type of
// the tables. Both in places of the test's own.

#include "app/field_folders.h"
#include "app/file_type.h"
#include "support/gui.h"
#include "support/table_help.h"
#include "support/told.h"

namespace orvane::testing {
namespace {

TEST(FieldFolders, AreUsedWhereTheyExist) {
  const TempDir dir;
  Told user;
  ParamTable table = NewTable();
  COrvaneDoc doc(&table, &user, &user);
  const QString root = TextFromPath(dir / "K3");
  const FieldFolders folders(&doc, root);
  EXPECT_EQ(folders.Calibrations(), "");
  ASSERT_TRUE(doc.OnSaveDocument(TextFromPath(dir / "a.tbl")));
  EXPECT_EQ(folders.Calibrations(), QFileInfo(doc.Path()).absolutePath());

  struct Case {
    int method;
    const char* folder;
  };
  for (const Case& c :
       {Case{1, "SIP"}, {2, "TDIP"}, {3, "TDEM"}, {4, "CSAMT"}, {5, "MT"}, {6, "FDEM"}}) {
    Set(&table, "TECH", std::to_string(c.method));
    EXPECT_EQ(folders.Data(), QFileInfo(doc.Path()).absolutePath()) << c.folder;
    const QString folder = QDir::fromNativeSeparators(root) + "/DATA/" + c.folder;
    ASSERT_TRUE(QDir().mkpath(folder));
    EXPECT_EQ(folders.Data(), folder);
  }
  EXPECT_EQ(folders.Data(kSip), QDir::fromNativeSeparators(root) + "/DATA/SIP");
  ASSERT_TRUE(QDir(root).mkdir("CAL"));
  EXPECT_EQ(folders.Calibrations(), QDir::fromNativeSeparators(root) + "/CAL");
}

TEST(FieldFolders, ARelativeRootIsNone) {
  const TempDir dir;
  Told user;
  ParamTable table = NewTable();
  const COrvaneDoc doc(&table, &user, &user);
  const QString before = QDir::currentPath();
  ASSERT_TRUE(QDir::setCurrent(TextFromPath(dir.Path())));
  ASSERT_TRUE(QDir().mkpath("C_/K3/CAL"));
  EXPECT_EQ(FieldFolders(&doc, "C_/K3").Calibrations(), "");
  QDir::setCurrent(before);
}

class FileType : public ::testing::Test {
 protected:
  QString Path(const char* name) const { return TextFromPath(dir_ / name); }
  QString Program(const char* name) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    return file.fileName();
  }

  TempDir dir_;
  QSettings user_{Path("user"), QSettings::IniFormat};
  QSettings machine_{Path("machine"), QSettings::IniFormat};
};

constexpr char kCommand[] = "Orvane.Document/shell/open/command/Default";  // NOLINT: a literal

TEST_F(FileType, IsWrittenOnceForAProgramAndAgainWhenItHasMoved) {
  const QString program = Program("orvane %1.exe");
  EXPECT_TRUE(DescribeFileType(&user_, machine_, program));
  EXPECT_EQ(user_.value(".tbl/Default"), "Orvane.Document");
  EXPECT_EQ(user_.value("Orvane.Document/Default"), "Tbl Document");
  const QString command = user_.value(kCommand).toString();
  EXPECT_EQ(command, '"' + QDir::toNativeSeparators(program) + "\" \"%1\"");
  EXPECT_FALSE(DescribeFileType(&user_, machine_, program));
  EXPECT_FALSE(DescribeFileType(&user_, machine_, Program("another.exe"))) << "the first is there";
  ASSERT_TRUE(QFile::remove(program));
  EXPECT_TRUE(DescribeFileType(&user_, machine_, Path("another.exe")));
  EXPECT_NE(user_.value(kCommand), command);
}

TEST_F(FileType, OfACopyThatIsGoneDoesNotHideTheInstalledProgram) {
  ASSERT_TRUE(DescribeFileType(&user_, machine_, Program("stick.exe")));
  ASSERT_TRUE(QFile::remove(Path("stick.exe")));
  machine_.setValue(kCommand, '"' + Program("installed.exe") + "\" \"%1\"");
  EXPECT_TRUE(DescribeFileType(&user_, machine_, Path("installed.exe")));
  EXPECT_EQ(user_.allKeys(), QStringList());
  EXPECT_FALSE(DescribeFileType(&user_, machine_, Path("installed.exe")));
}

TEST_F(FileType, OfAnotherProgramOrOfAnInstallationStays) {
  machine_.setValue(".tbl/Default", "Orvane.Document");
  machine_.setValue(kCommand, '"' + Program("installed.exe") + "\" \"%1\"");
  EXPECT_FALSE(DescribeFileType(&user_, machine_, Program("copied.exe")));
  machine_.clear();
  user_.setValue(".tbl/Default", "Ledger.Table");
  EXPECT_FALSE(DescribeFileType(&user_, machine_, Program("copied.exe")));
  EXPECT_FALSE(user_.contains(kCommand));
  EXPECT_EQ(user_.value(".tbl/Default"), "Ledger.Table");
}

}  // namespace
}  // namespace orvane::testing
