// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_TESTS_SUPPORT_FRAME_TEST_H_
#define ORVANE_TESTS_SUPPORT_FRAME_TEST_H_

#include <QSettings>

#include "app/main_frame.h"
#include "support/gui.h"

namespace orvane::testing {

/// The program without and with its main window, and a folder.
class DocTest : public ::testing::Test {
 protected:
  DocTest() { QSettings().clear(); }  // before the window reads them

  TempDir dir_;
  ParamTable table_;
  QtPrompts prompts_;
  StatusNotices notices_;
  COrvaneDoc doc_{&table_, &prompts_, &notices_};
};
class FrameTest : public DocTest {
 protected:
  CMainFrame frame_{&doc_, &prompts_, &notices_};
};

}  // namespace orvane::testing

#endif  // ORVANE_TESTS_SUPPORT_FRAME_TEST_H_
