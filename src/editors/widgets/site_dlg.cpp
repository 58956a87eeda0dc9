// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/widgets/site_dlg.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "editors/line_layout.h"
#include "ui/byte_text.h"
#include "ui/content_scroll_area.h"
#include "ui/settings_names.h"
#include "ui/window_size.h"

namespace orvane {
namespace {

constexpr int kWide = 1100;  // room for three groups, pixels

bool IsSurveyText(int control) {
  return control >= SiteForm::kProject && control <= SiteForm::kComment;
}

bool IsSurvey(int control) {
  return IsSurveyText(control) || control == SiteForm::kLine || control == SiteForm::kSite;
}

// Two lines, however long the text: one that grew with it would move everything below.
class TwoLines : public QLabel {
 public:
  explicit TwoLines(QWidget* parent) : QLabel(parent) {
    setWordWrap(true);
    setFixedHeight(2 * fontMetrics().lineSpacing());
  }
  bool hasHeightForWidth() const override { return false; }
};

}  // namespace

CSiteDlg::CSiteDlg(SiteForm* form, ParamTable* table, Prompts* prompts, QWidget* parent)
    : CFormDialog(&form->Model(), prompts, parent), form_(form) {
  setObjectName(QString::number(form->Dialog()));
  setWindowTitle(TextFromBytes(form->Title()));
  // On a small screen the groups scroll, the buttons stay.
  auto* page = new QWidget(this);
  auto* groups = new QHBoxLayout;
  groups->addWidget(SurveyGroup(), 1);
  groups->addWidget(LayoutGroup(), 1);
  groups->addWidget(MapGroup(), 1);
  auto* page_layout = new QVBoxLayout(page);
  page_layout->addLayout(groups);
  if (form->HasSpread()) {
    spread_ = std::make_unique<Spread>(table);
    panel_ = new SpreadPanel(spread_.get(), prompts, page);
    panel_->setMinimumHeight(260);
    page_layout->addWidget(panel_, 1);
    ConnectPanel();
  }
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new ContentScrollArea(page, this), 1);
  ResizeWithinScreen(this, QSize(1180, form->HasSpread() ? 712 : 620));
  layout->addWidget(Buttons());
  ShowMap();
}

QGroupBox* CSiteDlg::SurveyGroup() {
  auto* group = new QGroupBox(QStringLiteral("Survey"), this);
  survey_group_ = group;
  auto* rows = new QFormLayout;
  group->setLayout(rows);
  for (const Field& field : Model().Fields()) {
    if (IsSurveyText(field.control)) {
      AddCountedRow(rows, field.control);
    }
  }
  AddRow(rows, SiteForm::kLine);
  AddRow(rows, SiteForm::kSite);
  return group;
}

QGroupBox* CSiteDlg::LayoutGroup() {
  auto* group = new QGroupBox(QStringLiteral("Layout"), this);
  auto* rows = new QFormLayout;
  group->setLayout(rows);
  for (const Field& field : Model().Fields()) {
    if (!IsSurvey(field.control)) {
      AddRow(rows, field.control);
    }
  }
  if (form_->HasLine()) {
    auto* calculate = new QPushButton(QStringLiteral("Calc. Coord."), group);
    calculate->setObjectName(QString::number(kCalcCoord));
    calculate->setAutoDefault(false);
    calculate->setToolTip(
        QStringLiteral("Fills the electrode positions of all boxes, along the line"));
    connect(calculate, &QPushButton::clicked, this, &CSiteDlg::OnCalcCoord);
    coordinates_ = new TwoLines(group);
    coordinates_->setObjectName(QStringLiteral("coordinates"));
    coordinates_->setTextFormat(Qt::PlainText);
    auto* row = new QHBoxLayout;
    row->addWidget(calculate);
    row->addWidget(coordinates_, 1);
    rows->addRow(row);
  }
  return group;
}

QGroupBox* CSiteDlg::MapGroup() {
  map_group_ = new QGroupBox(QStringLiteral("Map"), this);
  map_ = new SpreadMapView(map_group_);
  (new QVBoxLayout(map_group_))->addWidget(map_);
  return map_group_;
}

// The map is there at once where it has room beside the groups; else it takes the survey's place.
void CSiteDlg::SetMapShown(bool is_shown) {
  map_group_->setVisible(is_shown);
  survey_group_->setVisible(!is_shown || width() >= kWide);
}

QDialogButtonBox* CSiteDlg::Buttons() {
  QDialogButtonBox* buttons = OkAndCancel();
  QPushButton* shown = buttons->addButton(QStringLiteral("&Map"), QDialogButtonBox::ResetRole);
  shown->setObjectName(QStringLiteral("show-map"));
  shown->setToolTip(QStringLiteral("Shows where the electrodes are, beside the fields"));
  shown->setCheckable(true);
  shown->setAutoDefault(false);
  connect(shown, &QPushButton::toggled, this, &CSiteDlg::SetMapShown);
  shown->setChecked(screen()->availableSize().width() >= kWide);
  map_group_->setVisible(shown->isChecked());
  return buttons;
}

void CSiteDlg::ConnectPanel() {
  connect(panel_, &SpreadPanel::changed, this, &CSiteDlg::ShowMap);
  connect(panel_, &SpreadPanel::chosen, map_, &SpreadMapView::Choose);
  connect(map_, &SpreadMapView::chosen, panel_, &SpreadPanel::Choose);
}

// As OK would leave it.
void CSiteDlg::ShowMap() {
  const ParamTable site = form_->Shown();
  map_->SetMap(spread_ == nullptr ? MapOf(site) : MapOf(*spread_, site));
  if (panel_ != nullptr) {
    map_->Choose(panel_->CurrentBox(), panel_->CurrentChannel());
  }
  if (marker_ && spread_ != nullptr) {
    ParamTable saved = site;
    spread_->SaveTo(&saved);
    map_->SetMarked(marker_(saved, *spread_));
  }
}

void CSiteDlg::SetMarker(Marker marker) {
  marker_ = std::move(marker);
  ShowMap();
}

void CSiteDlg::OnEdited(int control) {
  form_->OnEdited(control);
  ShowMap();
}

void CSiteDlg::OnCalcCoord() {
  if (panel_->CommitEdits() && IsAcceptable()) {
    const QString text = TextFromBytes(CalculateCoordinates(*form_, spread_.get()));
    panel_->ShowChannels();
    coordinates_->setText(text);
    coordinates_->setToolTip(text);
    emit told(text);
  }
}

void CSiteDlg::accept() {
  if (panel_ == nullptr || panel_->CommitEdits()) {
    survey_group_->show();  // a field in it may be at fault
    CFormDialog::accept();
  }
}

void CSiteDlg::Commit() {
  form_->Commit();
  if (spread_ != nullptr) {
    spread_->Save();
  }
  form_->CommitAfterGrids();
}

std::array<std::string, 4> TransmitterModels() {
  std::array<std::string, 4> names;
  std::copy(kTransmitterModels.begin(), kTransmitterModels.end(), names.begin());
  ReadNames("Transmitter Models", names);
  return names;
}

}  // namespace orvane
