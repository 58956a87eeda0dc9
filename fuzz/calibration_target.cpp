// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <vector>

#include "calibration/cal_text.h"
#include "response/box_model.h"
#include "response/cal_file.h"
#include "response/cal_view.h"
#include "response/uncertainty.h"
#include "response/verdict.h"
#include "support.h"

namespace orvane::fuzz {
namespace {

void RequireWhole(const CalRecords& cal) {
  Require(!cal.records.empty() && cal.records.size() <= kMaxCalRecords, "1 to 500 records");
  Require(cal.PassCount() >= 1 && cal.PassCount() <= kMaxCalPasses, "1 to 30 passes");
  std::size_t records = 0;
  for (std::size_t pass = 0; pass < cal.PassCount(); ++pass) {
    Require(cal.Pass(pass).size() <= kMaxPassRecords, "100 records in a pass at most");
    records += cal.Pass(pass).size();
  }
  Require(records == cal.records.size(), "every record is in a pass");
}

}  // namespace

void FuzzCalibration(Bytes input) {
  const auto path = PutFile("a.CLB", input);
  const int kind = CalKindIn(path).value_or(kBoxCal);
  CalReport report;
  const auto cal = ReadCalRecordsAt(kind, path, &report);
  Require((cal == nullptr) == (report.status != kOk) && (cal != nullptr || !report.message.empty()),
          "a calibration is read or refused with status and message");
  if (cal != nullptr) {
    RequireWhole(*cal);
  }
  const BatchResult text = Convert(ExportCalToText(), path, PathOf("a.txt"));
  Require(text.IsDone() || !text.text.empty(), "a failure has a reason");
  Require(text.IsDone() || cal == nullptr, "what can be read becomes text");
}

void FuzzCalibrationView(Bytes input) {
  const auto path = PutFile("a.CLB", input);
  CalDisplay display;
  CalView view(&display);
  if (!view.Open(path)) {
    return;
  }
  view.ShowAll();
  view.FitDisplay();
  view.SetCursor(10);
  view.MoveCursor(1);
  static_cast<void>(view.Readings());
  Require(static_cast<bool>(view.OpenReference(path)), "a file can be its own reference");
  view.SetRatio(true);
  for (const CalTrace& trace : view.Traces()) {
    const CalCurve& curve = trace.curve;
    Require(curve.frequency.size() == curve.amplitude.size() &&
                curve.frequency.size() == curve.phase.size(),
            "a curve has as many values of each");
  }
  view.FitDisplay();
}

void FuzzCalibrationFit(Bytes input) {
  constexpr std::size_t kMostRecords = 64;
  const std::size_t size =
      std::min(input.size(), sizeof(CalHeader) + kMostRecords * CalFileRecord::BytesFor(1));
  std::vector<std::byte> file(input.begin(), input.begin() + static_cast<std::ptrdiff_t>(size));
  if (file.size() < sizeof(CalHeader)) {
    return;
  }
  file[offsetof(CalHeader, nchn)] = std::byte{1};
  file[offsetof(CalHeader, nchn) + 1] = std::byte{0};
  file[offsetof(CalHeader, ctyp)] = std::byte{kBoxCal};
  const auto cal = ReadCalFileAt(kBoxCal, PutFile("a.CLB", file));
  if (cal == nullptr || cal->model.parameter_count == 0) {
    return;
  }
  const BoxModel::FitReport& fit = cal->model.fits[0];
  const FrontEndParameters parameters = ParametersOf(*cal, 0);
  const auto is_bad = [](double value) { return !std::isfinite(value); };
  if (fit.is_kept) {
    Require(std::isfinite(fit.rms) && std::isfinite(fit.max), "a fit that is kept has its error");
    // The drive is as measured: nothing is fitted to it.
    Require(std::none_of(parameters.begin(), parameters.begin() + kDrive, is_bad) &&
                !is_bad(parameters[kBias]),
            "a fit that is kept has numbers");
  }
  for (const double frequency : {0.0, 1.0, 1e4}) {
    static_cast<void>(
        FrontEnd(parameters, PassSetting(kSlotPasses[0], parameters[kDrive])).Response(frequency));
  }
  const ChannelVerdict verdict = JudgeChannel(*cal, 0);
  Require((verdict.usability == Usability::kWell) == verdict.reasons.empty(),
          "a doubt has a reason");
  Require(fit.is_kept || verdict.usability == Usability::kNotUsable, "no fit, no use");
  static_cast<void>(JudgeRecords(*cal, kBoxCal, 0, "1"));
  const ResponseBands bands = ModelUncertainty(*cal, 0).At({0, 80, 0, {}}, 1e3);
  Require(!fit.is_kept || bands.wider.amplitude >= bands.noise.amplitude * (1 - 1e-9),
          "drift and drive make a band wider");
}

}  // namespace orvane::fuzz
