// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/orvane_app.h"

#include <QFile>
#include <QIcon>
#include <QTimer>
#include <clocale>

#include "app/key_tips.h"
#include "files/file_io.h"

// Resources of a static library are linked only when asked for, and that from no namespace.
static void InitResources() { Q_INIT_RESOURCE(icons); }

namespace orvane {

COrvaneApp::COrvaneApp(int& argc, char** argv) : QApplication(argc, argv) {
  InitResources();
  // Qt has set the user's locale; numbers keep their decimal point.
  std::setlocale(LC_NUMERIC, "C");
  setOrganizationName(QStringLiteral("Local AppWizard-Generated Applications"));
  setApplicationName(QStringLiteral("Orvane"));
  setApplicationVersion(QStringLiteral(ORVANE_VERSION));
  setDesktopFileName(QStringLiteral("orvane"));
  const QString drawing = QStringLiteral(":/icons/orvane.svg");
  const QString picture = QStringLiteral(":/icons/orvane.png");  // of builds without SVG
  setWindowIcon(QIcon(QFile::exists(drawing) ? drawing : picture));
}

bool COrvaneApp::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& error) {
    const char* reason = ReasonOf(error);
    // Later, where there is perhaps memory again, and no message box within another event.
    QTimer::singleShot(0, this, [this, reason = QByteArray(reason)] {
      prompts_.ShowWarning("Orvane", "The command failed: " + reason.toStdString());
    });
    return false;
  }
}

void COrvaneApp::InitInstance(const QString& path) {
  ShowKeyTips(&DocumentTable());
  doc_ = std::make_unique<COrvaneDoc>(&DocumentTable(), &prompts_, &notices_);
  frame_ = std::make_unique<CMainFrame>(doc_.get(), &prompts_, &notices_);
  emergency_copy_ =
      std::make_unique<EmergencyCopy>(EmergencyCopy::UsersFolder(), doc_.get(), &notices_);
  frame_->show();
  // A field file that is shown covers a new document.
  if (path.isEmpty() || !frame_->OpenAny(path) || frame_->Display() != nullptr) {
    doc_->OnNewDocument();
  }
  if (emergency_copy_->Offer(&prompts_)) {
    frame_->ShowTable();
  }
}

}  // namespace orvane
