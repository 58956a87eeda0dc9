// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folder_dialog.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

#include "support/qt_print.h"
#include "support/temp_dir.h"

namespace orvane {
namespace {

TEST(FolderDialog, GivesTheFolderThatWasTyped) {
  const testing::TempDir dir;
  const auto folder = QString::fromStdString(dir.Path().string());
  testing::WriteAll(dir / "file", "");
  ASSERT_TRUE(QDir(folder).mkdir("sub"));
  struct Case {
    const char* typed;  // null: cancel
    QString chosen;
  };
  for (const auto& c : std::vector<Case>{{"sub", folder + "/sub"}, {nullptr, ""}}) {
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&] {
      auto* dialog = qobject_cast<CFolderDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      EXPECT_EQ(dialog->directory().absolutePath(), folder) << "the nearest that exists";
      EXPECT_TRUE(dialog->testOption(QFileDialog::ShowDirsOnly));
      const auto* prompt = dialog->findChild<QLabel*>("prompt");
      ASSERT_NE(prompt, nullptr);
      EXPECT_EQ(prompt->text(), "Where <to>?");
      EXPECT_TRUE(prompt->isVisible() && prompt->geometry().bottom() < 60);
      if (c.typed) {
        dialog->findChild<QLineEdit*>()->setText(c.typed);
      }
      c.typed ? static_cast<QDialog*>(dialog)->accept() : dialog->reject();
    });
    timer.start(0);
    EXPECT_EQ(CFolderDialog::AskForFolder(nullptr, "Where <to>?", folder + "/gone/deeper"),
              c.chosen);
  }
}

}  // namespace
}  // namespace orvane
