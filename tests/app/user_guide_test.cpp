// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/user_guide.h"

#include <filesystem>

#include "support/gui.h"
#include "support/told.h"

namespace orvane {
namespace {

using namespace testing;  // NOLINT: the builders

TEST(UserGuide, IsTheInstalledPageElseTheMarkdownElseTold) {
  const TempDir root;
  std::filesystem::create_directories(root / "bin");
  std::filesystem::create_directories(root / "share/orvane/guide");
  const QString programs = QString::fromStdString((root / "bin").string());
  testing::Told warnings;
  QString opened;
  bool has_browser = true;
  const auto show = [&] {
    opened.clear();
    warnings.warning.clear();
    ShowUserGuide(FindUserGuide(programs), &warnings, [&](const QUrl& url) {
      opened = url.toLocalFile();
      return has_browser;
    });
  };
  show();
  EXPECT_EQ(warnings.warning, "Orvane: The user guide is not installed.");
  EXPECT_EQ(opened, QString());

  for (const char* name : {"share/orvane/guide/README.md", "share/orvane/guide.html"}) {
    WriteAll(root / name, "guide");
    show();
    EXPECT_EQ(PathFromText(opened), std::filesystem::canonical(root / name));
    EXPECT_EQ(warnings.warning, "");
  }
  has_browser = false;
  show();
  EXPECT_EQ(warnings.warning,
            "Orvane: No program was found to show the user guide: " + opened.toStdString());
}

#ifndef Q_OS_WIN  // whose builds are not run where they are built
TEST(UserGuide, OfTheSourceTreeIsFoundFromTheBuildFolder) {
  const QString guide = FindUserGuide(QApplication::applicationDirPath());
  EXPECT_TRUE(guide.endsWith(QStringLiteral("/docs/guide/README.md"))) << guide.toStdString();
}
#endif

}  // namespace
}  // namespace orvane
