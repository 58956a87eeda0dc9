// SPDX-License-Identifier: GPL-3.0-or-later
// What nearly every test of windows includes.
#ifndef ORVANE_TESTS_SUPPORT_GUI_H_
#define ORVANE_TESTS_SUPPORT_GUI_H_

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "support/qt_print.h"
#include "support/temp_dir.h"
#include "ui/qt_path.h"

#endif  // ORVANE_TESTS_SUPPORT_GUI_H_
