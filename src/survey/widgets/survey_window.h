// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_SURVEY_WIDGETS_SURVEY_WINDOW_H_
#define ORVANE_SURVEY_WIDGETS_SURVEY_WINDOW_H_

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileSystemWatcher>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QWidget>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "survey/survey_scan.h"
#include "survey/widgets/coverage_view.h"
#include "survey/widgets/findings_pane.h"
#include "survey/widgets/site_map_pane.h"
#include "survey/widgets/survey_model.h"
#include "survey/widgets/survey_overview.h"
#include "survey/widgets/trace_pictures.h"

namespace orvane {

/// What can be done with files that are selected, in the order of the menu.
enum class SurveyConversion : std::uint8_t {
  kRestack,
  kWaveformText,
  kSpectra,
  kNetcdf,
  kMseed,
  kTimeDomainCsv,
  kFrequencyDomainCsv,
  kTableText,
  kScheduleText,
  kCalibrationText,
};

/// A survey's folder in a window of its own: recordings as a list, what was recorded when as a
/// picture, what is wrong as sentences. It only looks: nothing in the folder is changed.
class CSurveyWindow : public QWidget {
  Q_OBJECT

 public:
  explicit CSurveyWindow(QWidget* parent);

  /// Looks through a folder, from its beginning.
  void Open(const std::filesystem::path& folder);
  const SurveyModel& Model() const { return *model_; }
  /// Until all is shown.
  bool IsScanning() const { return scan_ != nullptr || !steps_.empty() || overview_->IsBusy(); }
  const std::vector<SurveyFinding>& Findings() const { return *findings_; }

 signals:
  void fileWanted(const QString& path);
  void conversionWanted(orvane::SurveyConversion conversion, const QStringList& paths);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QLayout* MakeTools();
  QWidget* MakeList();
  QWidget* MakeTabs();
  QLayout* MakeFoot();
  QMenu* MakeColumnsMenu();
  QMenu* MakeConvertMenu();
  void Start(bool is_again);
  void Look();
  void TakeChange(const QString& folder);
  std::filesystem::path FolderAbove() const;
  void End();
  void Then(std::function<void()> step);
  void Cancel();
  void Watch();
  void Regroup();
  void Refilter();
  void Arrange(const std::function<void(SurveyList*)>& change);
  void ShowState();
  void FitColumns();
  void AddFindings();
  void OpenRow(const QModelIndex& index);
  void Select(std::size_t row);
  void SelectFile(const std::string& name);
  void SelectRows(const SiteRows& rows);
  std::vector<std::size_t> SelectedRows() const;
  std::filesystem::path FileOf(const SurveyRow& row, const RowFile& file) const;
  QStringList FilesFor(SurveyConversion command) const;
  void ShowContextMenu(const QPoint& at);
  void SaveReport();

  std::filesystem::path folder_;
  std::unique_ptr<SurveyScan> scan_;
  bool has_widths_ = false;                  // of columns, the user's or fitted
  bool is_again_ = false;                    // rows are shown when all are there
  SurveyList coming_;                        // of such a scan
  std::deque<std::function<void()>> steps_;  // still to be done, each short
  QElapsedTimer drawn_;                      // since the overview was asked for
  SharedFindings findings_ = std::make_shared<const std::vector<SurveyFinding>>();
  std::vector<ScanNote> notes_;
  std::size_t hidden_ = 0;
  QString end_note_;
  bool was_there_ = true;  // the folder itself
  QTimer timer_;
  QTimer later_;  // files have changed
  QFileSystemWatcher watcher_;
  SurveyModel* model_;
  TracePictures* pictures_;
  SurveyOverview* overview_;
  QTreeView* list_ = nullptr;
  CoverageView* coverage_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  FindingsPane* sentences_ = nullptr;
  SiteMapPane* sites_ = nullptr;
  QComboBox* grouping_ = nullptr;
  QLineEdit* filter_ = nullptr;
  QCheckBox* deep_ = nullptr;
  QToolButton* convert_ = nullptr;
  QLabel* state_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QPushButton* cancel_ = nullptr;
  QPushButton* report_ = nullptr;
};

}  // namespace orvane

#endif  // ORVANE_SURVEY_WIDGETS_SURVEY_WINDOW_H_
