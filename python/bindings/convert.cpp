// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/latin1.h"
#include "base/status.h"
#include "bind.h"
#include "files/path_text.h"
#include "table/param_time.h"

namespace orvane::python {

void Fail(const std::filesystem::path& file, std::string_view message, std::string place) {
  for (const std::string& name : {PrintableUtf8(PathText(file)), PathText(file)}) {
    if (!name.empty() && message.starts_with(name) &&
        message.substr(name.size()).starts_with(": ")) {
      message.remove_prefix(name.size() + 2);
      break;
    }
  }
  throw Fault{PathText(file), std::move(place), std::string(message)};
}

py::str FromLatin1(std::string_view text) {
  return py::reinterpret_steal<py::str>(
      PyUnicode_DecodeLatin1(text.data(), static_cast<Py_ssize_t>(text.size()), nullptr));
}

py::object FromTime(const ParamTime& time) {
  constexpr int kYears = 100;
  if (!IsValid(time)) {
    return py::none();
  }
  const int year = HasNoDate(time) ? 0 : time.century * kYears + time.year;
  return py::make_tuple(year, time.month, time.day, time.hour, time.minute, time.second);
}

Table::Table() {
  if (const Status status = table.BuildParamIndex(); status != kOk) {
    Fail({}, StatusText(status));
  }
}

py::dict FromFinding(const Finding& finding) {
  py::list keys;
  for (const ParamKey key : finding.keys) {
    keys.append(key.Text());
  }
  py::dict row;
  row["rule"] = std::string(finding.id);
  row["severity"] = std::string(SeverityName(finding.severity));
  row["sentence"] = finding.sentence;
  row["keys"] = keys;
  row["box"] = finding.box;
  return row;
}

}  // namespace orvane::python
