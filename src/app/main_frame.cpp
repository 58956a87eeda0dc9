// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/main_frame.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QSettings>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "app/about_dlg.h"
#include "app/decay_command.h"
#include "app/dock_command.h"
#include "app/glance_commands.h"
#include "app/lock_keys.h"
#include "app/record_command.h"
#include "app/spectrum_command.h"
#include "app/user_guide.h"
#include "editors/widgets/field_sheet_print.h"
#include "export/waveform_mseed.h"
#include "export/waveform_netcdf.h"
#include "ui/file_dialogs.h"
#include "ui/qt_path.h"
#include "ui/theme_icon.h"
#include "ui/themes.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

const QString kGeometry = QStringLiteral("Window/Geometry");
const QString kState = QStringLiteral("Window/State");
const QString kStatusBar = QStringLiteral("Window/StatusBar");

// Commands with a picture; those in the tool bar are in its order.
struct Picture {
  int id;
  const char* icon;
};
constexpr auto kPictures = std::to_array<Picture>({{kFileOpen, "open"},
                                                   {kFileSave, "save"},
                                                   {kSeparator, ""},
                                                   {kEditAcquisition, "acquisition"},
                                                   {kEditStepping, "stepping"},
                                                   {kEditRaw, "raw-table"},
                                                   {kSeparator, ""},
                                                   {kScrollBack, "scroll-back"},
                                                   {kScrollForward, "scroll-forward"},
                                                   {kSeparator, ""},
                                                   {kAppAbout, "about"}});

QString AskForTable(QWidget* parent, QFileDialog::AcceptMode mode, const QString& start) {
  const bool is_open = mode == QFileDialog::AcceptOpen;
  const QFileInfo info(start);
  CFileDialog dialog(is_open ? QStringLiteral("Open") : QStringLiteral("Save As"),
                     "Tbl Files (*.tbl)|*.tbl|All Files (*.*)|*.*||", info.absolutePath(), parent);
  dialog.setAcceptMode(mode);
  dialog.setFileMode(is_open ? QFileDialog::ExistingFile : QFileDialog::AnyFile);
  dialog.setDefaultSuffix(QStringLiteral("tbl"));
  if (!is_open) {
    dialog.selectFile(info.fileName());
  }
  dialog.exec();
  return dialog.Chosen();
}

QStringList DroppedFiles(const QMimeData* data) {
  QStringList files;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile()) {
      files << url.toLocalFile();
    }
  }
  return files;
}

constexpr const char* kIdle = "Ready";

}  // namespace

CMainFrame::CMainFrame(COrvaneDoc* doc, QtPrompts* prompts, StatusNotices* notices)
    : doc_(doc),
      prompts_(prompts),
      editors_(doc, prompts, notices, this),
      utilities_(doc, prompts, notices, this),
      changes_(new ChangeCommands(doc, notices, this)),
      check_(new CheckCommands(doc, this)),
      view_(new COrvaneView(doc, this)),
      changed_file_(new ChangedFileBar(doc, this)),
      stack_(new QStackedWidget(this)),
      displays_(new FieldDisplays(doc, prompts, stack_, this)) {
  setObjectName(QStringLiteral("main"));
  prompts->SetParent(this);
  setAcceptDrops(true);
  CreateCenter();
  CreateMenus();
  CreateToolBar();
  CreateStatusBar();
  ConnectCommands();
  connect(notices, &StatusNotices::shown, this, &CMainFrame::ShowNotice);
  connect(notices, &StatusNotices::ended, this, [this](const QString& text) {
    if (notice_->text() == text) {
      ShowNotice(QString::fromLatin1(kIdle));
    }
  });
  connect(doc_, &COrvaneDoc::changed, this, &CMainFrame::UpdateTitle);
  doc_->SetWaveformLoader([this](const QString& path) { return displays_->OpenWaveform(path); });
  utilities_.SetOpener([this](const QString& path) { OpenAny(path); });
  connect(displays_, &FieldDisplays::changed, this, &CMainFrame::FollowDisplay);
  connect(displays_, &FieldDisplays::told, this, &CMainFrame::ShowNotice);
  UpdateRecentFiles();
  UpdateTitle();
  RestoreLayout();
}

void CMainFrame::CreateCenter() {
  auto* center = new QWidget(this);
  auto* layout = new QVBoxLayout(center);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(changed_file_);
  layout->addWidget(stack_, 1);
  stack_->addWidget(view_);
  setCentralWidget(center);
  // What gives the focus to the center means what is shown in it.
  const auto follow = [this, center] { center->setFocusProxy(stack_->currentWidget()); };
  connect(stack_, &QStackedWidget::currentChanged, center, follow);
  follow();
  connect(changed_file_, &ChangedFileBar::focusLeft, this,
          [this] { stack_->currentWidget()->setFocus(); });
  connect(qApp, &QGuiApplication::applicationStateChanged, this,
          [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive) {
              LookAtFile();
            }
          });
}

// Back from another program's window or from a dialog.
void CMainFrame::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
    LookAtFile();
  }
}

void CMainFrame::LookAtFile() {
  changed_file_->Look();
  view_->Follow();
  changes_->Dock()->Follow();
  check_->Dock()->LookAtFiles();
}

QAction* CMainFrame::CreateCommand(const CommandRow& row) {
  const QString text = QString::fromLatin1(row.text);
  const QString prompt = QString::fromLatin1(row.prompt);
  auto* action = new QAction(text.section(QLatin1Char('\t'), 0, 0), this);
  action->setObjectName(QString::number(row.id));
  action->setShortcut(QKeySequence(text.section(QLatin1Char('\t'), 1)));
  action->setStatusTip(prompt.section(QLatin1Char('\n'), 0, 0));
  if (prompt.contains(QLatin1Char('\n'))) {
    action->setToolTip(prompt.section(QLatin1Char('\n'), 1));
  }
  action->setEnabled(false);
  commands_[row.id] = action;
  return action;
}

void CMainFrame::CreateMenus() {
  for (const MenuRows& rows : Menus()) {
    QMenu* menu = menuBar()->addMenu(QString::fromLatin1(rows.title));
    for (const CommandRow& row : rows.rows) {
      if (row.id == kSeparator) {
        menu->addSeparator();
        continue;
      }
      if (row.id == kViewTheme) {
        AddThemes(menu->addMenu(QString::fromLatin1(row.text)));
        continue;
      }
      menu->addAction(CreateCommand(row));
      if (row.id == kFileRecent) {
        recent_actions_[0] = commands_[row.id];
        for (int i = 1; i < RecentFiles::kMost; ++i) {
          const CommandRow next{row.id + i, row.text, row.prompt};
          recent_actions_[static_cast<std::size_t>(i)] = CreateCommand(next);
          menu->addAction(commands_[next.id]);
        }
      }
    }
  }
  for (const CommandRow& row : ToolBarCommands()) {
    CreateCommand(row);
  }
}

void CMainFrame::AddThemes(QMenu* menu) {
  auto* group = new QActionGroup(this);
  for (const CommandRow& row : ThemeCommands()) {
    QAction* theme = CreateCommand(row);
    theme->setCheckable(true);
    theme->setEnabled(true);
    group->addAction(theme);
    menu->addAction(theme);
  }
  const Theme saved = SavedTheme();
  ApplyTheme(saved);
  Command(kThemeSystem + static_cast<int>(saved))->setChecked(true);
  connect(group, &QActionGroup::triggered, this, [](const QAction* chosen) {
    const auto theme = static_cast<Theme>(chosen->objectName().toInt() - kThemeSystem);
    SaveTheme(theme);
    ApplyTheme(theme);
  });
}

void CMainFrame::CreateToolBar() {
  QToolBar* bar = addToolBar(QStringLiteral("Toolbar"));
  bar->setObjectName(QStringLiteral("toolbar"));
  bar->setAccessibleName(QStringLiteral("Toolbar"));
  bar->setMovable(false);
  for (const Picture& picture : kPictures) {
    if (picture.id == kSeparator) {
      bar->addSeparator();
      continue;
    }
    Command(picture.id)->setIcon(ThemeIcon(QString::fromLatin1(picture.icon)));
    bar->addAction(Command(picture.id));
  }
  QAction* shown = Command(kViewToolbar);
  shown->setCheckable(true);
  shown->setEnabled(true);
  connect(shown, &QAction::toggled, bar, &QToolBar::setVisible);
  connect(bar->toggleViewAction(), &QAction::toggled, shown, &QAction::setChecked);
  shown->setChecked(true);
}

void CMainFrame::CreateStatusBar() {
  notice_ = new NoticeLabel(QString::fromLatin1(kIdle), this);
  notice_->setObjectName(QStringLiteral("notice"));
  statusBar()->addWidget(notice_, 1);
  statusBar()->addPermanentWidget(check_->Counter());
  statusBar()->addPermanentWidget(changes_->Counter());
  new LockIndicators(statusBar());
  QAction* shown = Command(kViewStatusBar);
  shown->setCheckable(true);
  shown->setEnabled(true);
  shown->setChecked(true);
  connect(shown, &QAction::toggled, statusBar(), &QStatusBar::setVisible);
}

void CMainFrame::Handle(int id, std::function<void()> handler) {
  Command(id)->setEnabled(true);
  connect(Command(id), &QAction::triggered, this, std::move(handler));
}

void CMainFrame::ConnectCommands() {
  Handle(kFileNew, [this] { OnFileNew(); });
  Handle(kFileOpen, [this] { OnFileOpen(); });
  Handle(kFileSave, [this] { OnFileSave(); });
  Handle(kFileSaveAs, [this] { OnFileSaveAs(); });
  Handle(kAppExit, [this] { close(); });
  Handle(kFileSaveAllBoxes, [this] { editors_.SaveAllBoxes(); });
  ConnectSteps();
  ConnectChanges();
  ConnectCheck();
  ConnectGlance(view_,
                {doc_, &editors_, check_->Dock(), AddMapDock(doc_, Command(kViewMap), this)});
  new SpectrumCommand(displays_, Command(kViewSpectrum), this);
  new DecayCommand(displays_, Command(kViewDecay), this);
  ConnectStart();
  new RecordCommand(displays_, Command(kViewRecords), this);
  survey_ = new SurveyCommand(
      Command(kOpenSurvey), &utilities_, [this](const QString& path) { OpenAny(path); }, this);
  Handle(kPrintParameters, [this] { editors_.PrintRaw(); });
  Handle(kPrintSheets, [this] { AskAndPrintFieldSheets(doc_->Table(), view_->Steps(), this); });
  Handle(kEditAcquisition, [this] { editors_.EditAcquisition(); });
  Handle(kEditStepping, [this] { editors_.EditStepping(); });
  Handle(kListSchedules, [this] { utilities_.ListSchedules(); });
  Handle(kCreateFdemSchedule, [this] { editors_.CreateFdemSchedule(); });
  Handle(kEditRadio, [this] { editors_.EditRadio(); });
  Handle(kEditGsm, [this] { editors_.EditGsm(); });
  Handle(kEditFtp, [this] { editors_.EditFtp(); });
  Handle(kEditCurrentSensor, [this] { editors_.EditCurrentSensor(); });
  Handle(kEditCoil, [this] { editors_.EditCoil(); });
  Handle(kViewBoxStatus, [this] { editors_.ViewBoxStatus(); });
  Handle(kListTables, [this] { utilities_.ListTables(); });
  Handle(kConvertFrequencyDomainStacks, [this] { utilities_.ConvertFrequencyDomainStacks(); });
  Handle(kConvertTimeDomainStacks, [this] { utilities_.ConvertTimeDomainStacks(); });
  Handle(kConvertToVersion1, [this] { utilities_.ConvertToVersion1(); });
  Handle(kOpenWaveform, [this] { displays_->AskForWaveform(); });
  Handle(kOpenCalibration, [this] { displays_->AskForCalibration(); });
  Handle(kCalibrationSettings, [this] { displays_->EditCalibrationRanges(); });
  Handle(kListCalibrations, [this] { utilities_.ListCalibrations(); });
  Handle(kWaveformSettings, [this] { displays_->EditWaveformSettings(); });
  Handle(kWaveformToText, [this] { utilities_.ConvertWaveforms(); });
  Handle(kConvertToSpectra, [this] { utilities_.ConvertToSpectra(); });
  Handle(kConvertToNetcdf, [this] { utilities_.ConvertToNetcdf(); });
  Handle(kConvertToMseed, [this] { utilities_.ConvertToMseed(); });
  for (QObject* shows : Command(kConvertToNetcdf)->associatedObjects()) {
    if (auto* menu = qobject_cast<QMenu*>(shows)) {
      connect(menu, &QMenu::aboutToShow, this, [this, menu] { TellLacks(menu); });
    }
  }
  Handle(kRestack, [this] { utilities_.Restack(); });
  connect(Command(kScrollBack), &QAction::triggered, this, [this] { Display()->ScrollBack(); });
  connect(Command(kScrollForward), &QAction::triggered, this,
          [this] { Display()->ScrollForward(); });
  Handle(kEditRaw, [this] { editors_.EditRaw(); });
  Handle(kHelpGuide,
         [this] { ShowUserGuide(FindUserGuide(QApplication::applicationDirPath()), prompts_); });
  Handle(kAppAbout, [this] { CAboutDlg(this).exec(); });
  for (std::size_t i = 0; i < recent_actions_.size(); ++i) {
    connect(recent_actions_[i], &QAction::triggered, this,
            [this, i] { OpenFile(recent_files_.Paths().value(static_cast<int>(i))); });
  }
}

// When the menu opens: a library is looked for by loading it, and no start shall wait for that.
void CMainFrame::TellLacks(QMenu* menu) {
  const auto tell = [this, menu](int id, const std::string& why) {
    if (!why.empty()) {
      Command(id)->setEnabled(false);
      Command(id)->setStatusTip(QString::fromStdString(why));
      Command(id)->setToolTip(QString::fromStdString(why));
      menu->setToolTipsVisible(true);  // what is disabled has no status tip in every style
    }
  };
  tell(kConvertToNetcdf, CanWriteNetcdf().Message());
  tell(kConvertToMseed, std::string(WhyNoMseed()));
}

void CMainFrame::ConnectSteps() {
  Command(kEditRedo)->setShortcuts(
      {Command(kEditRedo)->shortcut(), QKeySequence(QStringLiteral("Ctrl+Shift+Z"))});
  connect(Command(kEditUndo), &QAction::triggered, doc_, &COrvaneDoc::Undo);
  connect(Command(kEditRedo), &QAction::triggered, doc_, &COrvaneDoc::Redo);
  const auto follow = [this](int id, auto changed) {
    QAction* command = Command(id);
    const auto show = [command, verb = command->text()](const QString& step) {
      command->setEnabled(!step.isEmpty());
      command->setText(step.isEmpty() ? verb : verb + QLatin1Char(' ') + step);
    };
    connect(&doc_->Steps(), changed, this, show);
  };
  follow(kEditUndo, &QUndoStack::undoTextChanged);  // there is no step yet
  follow(kEditRedo, &QUndoStack::redoTextChanged);
}

void CMainFrame::ConnectCheck() {
  CheckDock* dock = check_->Dock();
  ConnectDock(dock, Command(kViewCheck));
  connect(dock, &CheckDock::mendWanted, this, [this](ParamKey key) { editors_.EditKey(key); });
  connect(dock, &CheckDock::writeWanted, this, [this] { editors_.WriteAllBoxes(); });
  connect(dock, &CheckDock::guidedWriteWanted, this, [this] { editors_.SaveAllBoxes(); });
}

void CMainFrame::ConnectStart() {
  connect(view_->Start(), &StartPanel::openWanted, this, &CMainFrame::OnFileOpen);
  connect(view_->Start(), &StartPanel::newWanted, this, &CMainFrame::OnFileNew);
  connect(view_->Start(), &StartPanel::fileWanted, this, &CMainFrame::OpenFile);
}

void CMainFrame::ConnectChanges() {
  ChangesDock* dock = changes_->Dock();
  ConnectDock(dock, Command(kViewChanges));
  connect(dock, &ChangesDock::editWanted, this, [this](ParamKey key) { editors_.EditKey(key); });
  connect(changed_file_, &ChangedFileBar::compareWanted, dock,
          [dock] { dock->ShowAgainst(Against::kFile); });
  Handle(kSaveValues, [this] { changes_->SaveValues(); });
  Handle(kApplyValues, [this] { changes_->ApplyValues(); });
}

void CMainFrame::FollowDisplay() {
  Command(kScrollBack)->setEnabled(Display() != nullptr);
  Command(kScrollForward)->setEnabled(Display() != nullptr);
  UpdateTitle();
}

void CMainFrame::ShowNotice(const QString& text) { notice_->ShowNotice(text); }

void CMainFrame::UpdateTitle() {
  const QString shown =
      Display() == nullptr ? QString() : Display()->Title() + QStringLiteral(" - ");
  setWindowTitle(shown + doc_->Title() + QStringLiteral("[*] - Orvane"));
  setWindowModified(doc_->IsModified());
  setWindowFilePath(doc_->Path());
}

void CMainFrame::UpdateRecentFiles() {
  const QStringList& paths = recent_files_.Paths();
  view_->Start()->SetRecent(paths);
  for (int i = 0; i < RecentFiles::kMost; ++i) {
    QAction* action = recent_actions_[static_cast<std::size_t>(i)];
    const bool is_used = i < paths.size();
    if (is_used) {
      QString path = paths[i];
      action->setText(QStringLiteral("&%1 %2").arg(i + 1).arg(
          path.replace(QLatin1Char('&'), QLatin1String("&&"))));
    } else {
      action->setText(QStringLiteral("Recent &File"));
    }
    action->setEnabled(is_used);
    action->setVisible(is_used || i == 0);
  }
}

// Hidden first: docks that go with their window are not docks that the user closed.
CMainFrame::~CMainFrame() { hide(); }

void CMainFrame::RestoreLayout() {
  ResizeWithinScreen(this, QSize(1120, 690));
  const QSettings settings;
  restoreGeometry(settings.value(kGeometry).toByteArray());
  restoreState(settings.value(kState).toByteArray());
  Command(kViewToolbar)->setChecked(!findChild<QToolBar*>()->isHidden());
  Command(kViewStatusBar)->setChecked(settings.value(kStatusBar, true).toBool());
}

bool CMainFrame::OpenFile(const QString& path) {
  if (!doc_->SaveModified([this] { return OnFileSave(); })) {
    return false;
  }
  const bool is_open = doc_->OnOpenDocument(path);
  if (is_open) {
    if (doc_->Kind() == COrvaneDoc::kTable) {
      ShowTable();
    }
    recent_files_.Add(path);
  } else if (!QFileInfo::exists(path)) {
    recent_files_.Remove(path);
  }
  UpdateRecentFiles();
  return is_open;
}

void CMainFrame::OnFileNew() {
  if (doc_->SaveModified([this] { return OnFileSave(); })) {
    displays_->Close();
    doc_->OnNewDocument();
    view_->ShowStart(false);
  }
}

void CMainFrame::ShowTable() {
  const QString told = notice_->text();
  displays_->Close();
  ShowNotice(told);
}

void CMainFrame::OnFileOpen() {
  const QString recent = recent_files_.Paths().value(0);
  const QString start = doc_->Path().isEmpty() ? recent : doc_->Path();
  const QString path = AskForTable(this, QFileDialog::AcceptOpen, start);
  if (!path.isEmpty()) {
    OpenAny(path);
  }
}

bool CMainFrame::OpenAny(const QString& path) {
  if (const QString fault = UnknownName(path); !fault.isEmpty()) {
    prompts_->ShowWarning("Orvane", fault.toStdString());
    return false;
  }
  if (QFileInfo(path).isDir()) {
    survey_->Open(path);
    return false;  // it has a window of its own
  }
  switch (FieldDisplays::KindOf(path)) {
    case FieldDisplays::Kind::kWaveform:
      return displays_->OpenWaveform(path);
    case FieldDisplays::Kind::kCalibration:
      return displays_->OpenCalibration(path);
    case FieldDisplays::Kind::kStack:
      return displays_->OpenStack(path);
    case FieldDisplays::Kind::kNone:
      break;
  }
  return OpenFile(path);
}

bool CMainFrame::OnFileSave() {
  return doc_->Path().isEmpty() ? OnFileSaveAs() : doc_->OnSave() && NoteSaved();
}

bool CMainFrame::OnFileSaveAs() {
  const QString start = doc_->Path().isEmpty() ? QStringLiteral("Startup.tbl") : doc_->Path();
  const QString path = AskForTable(this, QFileDialog::AcceptSave, start);
  return !path.isEmpty() && doc_->OnSaveDocument(path) && NoteSaved();
}

bool CMainFrame::NoteSaved() {
  recent_files_.Add(doc_->Path());
  UpdateRecentFiles();
  return true;
}

void CMainFrame::closeEvent(QCloseEvent* event) {
  if (!doc_->SaveModified([this] { return OnFileSave(); })) {
    event->ignore();
    return;
  }
  QSettings settings;
  settings.setValue(kGeometry, saveGeometry());
  settings.setValue(kState, saveState());
  settings.setValue(kStatusBar, Command(kViewStatusBar)->isChecked());
  doc_->OnCloseDocument();
  event->accept();
}

void CMainFrame::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedFiles(event->mimeData()).isEmpty()) {
    event->setDropAction(Qt::CopyAction);  // never "move": the source would delete the file
    event->accept();
  }
}

void CMainFrame::dropEvent(QDropEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
  const QStringList files = DroppedFiles(event->mimeData());
  OpenAny(files.value(0));
  if (files.size() > 1) {  // there is one document, and one display
    QStringList others;
    for (const QString& file : files.mid(1)) {
      others << QFileInfo(file).fileName();
    }
    ShowNotice(notice_->text() + QStringLiteral("; not opened: ") +
               others.join(QStringLiteral(", ")));
  }
}

}  // namespace orvane
