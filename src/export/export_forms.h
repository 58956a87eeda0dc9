// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked before recordings are written for other programs. The fields belong to no
// parameter.
#ifndef ORVANE_EXPORT_EXPORT_FORMS_H_
#define ORVANE_EXPORT_EXPORT_FORMS_H_

#include <optional>
#include <string>

#include "export/waveform_mseed.h"
#include "export/waveform_netcdf.h"
#include "forms/form_model.h"

namespace orvane {

class NetcdfForm {
 public:
  enum Control : int { kDeflate = 1711 };

  NetcdfForm();
  FormModel& Model() { return model_; }
  /// Passwords and the like are never among them.
  NetcdfOptions Options() const;

 private:
  ParamTable none_;
  FormModel model_;
};

class MseedForm {
 public:
  enum Control : int {
    kNetwork = 1721,
    kRecordLength,
    kKeepsBad,
    kHasStation,
    kFolder,
    kLatitude,
    kLongitude,
    kElevation,
  };

  /// What was used last.
  MseedForm(const std::string& network, const std::string& calibrations);
  FormModel& Model() { return model_; }
  /// What describes a station counts only where that is asked for.
  void Follow();
  /// What keeps the entries from being accepted, in the order of the fields.
  std::optional<FormModel::Fault> Fault() const;
  MseedOptions Options() const;

 private:
  std::optional<double> NumberIn(int control) const;

  ParamTable none_;
  FormModel model_;
};

}  // namespace orvane

#endif  // ORVANE_EXPORT_EXPORT_FORMS_H_
