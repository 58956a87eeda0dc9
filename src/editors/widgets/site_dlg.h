// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_EDITORS_WIDGETS_SITE_DLG_H_
#define ORVANE_EDITORS_WIDGETS_SITE_DLG_H_

#include <QGroupBox>
#include <functional>
#include <memory>
#include <vector>

#include "editors/site_forms.h"
#include "editors/spread.h"
#include "editors/widgets/spread_map_view.h"
#include "editors/widgets/spread_panel.h"
#include "ui/form_dialog.h"

namespace orvane {

/// Dialogs 159, 161, 162 and 163: the site setup of a method.
class CSiteDlg : public CFormDialog {
  Q_OBJECT

 public:
  enum : int { kCalcCoord = 1150 };

  /// The form must be open and outlive the dialog.
  CSiteDlg(SiteForm* form, ParamTable* table, Prompts* prompts, QWidget* parent);

  /// What is wrong with a spread, as OK would leave the table: marked on the map after each edit.
  using Marker = std::function<std::vector<MapMark>(const ParamTable& table, const Spread& spread)>;
  void SetMarker(Marker marker);

  void accept() override;
  /// Brings the focus to the grid's cell of a key. False where there is none.
  bool GoTo(ParamKey key) { return panel_ != nullptr && panel_->GoTo(key); }

 signals:
  /// For the status bar.
  void told(const QString& text);

 private:
  void OnEdited(int control) override;
  void Commit() override;
  QGroupBox* SurveyGroup();
  QGroupBox* LayoutGroup();
  QGroupBox* MapGroup();
  void SetMapShown(bool is_shown);
  QDialogButtonBox* Buttons();
  void ConnectPanel();
  void ShowMap();
  void OnCalcCoord();

  SiteForm* form_;
  Marker marker_;
  std::unique_ptr<Spread> spread_;  // none for MT/AMT
  SpreadPanel* panel_ = nullptr;
  QLabel* coordinates_ = nullptr;  // what Calc. Coord. did
  SpreadMapView* map_ = nullptr;
  QGroupBox* survey_group_ = nullptr;
  QGroupBox* map_group_ = nullptr;
};

/// The four names of the transmitter type list, from the user's settings.
std::array<std::string, 4> TransmitterModels();

}  // namespace orvane

#endif  // ORVANE_EDITORS_WIDGETS_SITE_DLG_H_
