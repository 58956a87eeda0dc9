// SPDX-License-Identifier: GPL-3.0-or-later
// The compiled part of the Python package: what reads, computes and writes. Classes that users see
// are made of it in Python.
#ifndef ORVANE_PYTHON_BINDINGS_BIND_H_
#define ORVANE_PYTHON_BINDINGS_BIND_H_

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/result.h"
#include "check/finding.h"
#include "table/param_entry.h"
#include "table/param_table.h"

namespace orvane::python {

namespace py = pybind11;

void BindTable(py::module_* module);
void BindWaveform(py::module_* module);
void BindCalibration(py::module_* module);
void BindAnalysis(py::module_* module);
void BindSurvey(py::module_* module);

/// What becomes an `orvane.Error`.
struct Fault {
  std::string file;    ///< bytes of a path; empty: of none
  std::string place;   ///< such as "record 3"; mostly empty
  std::string reason;  ///< UTF-8
};

/// Ends a call with an `orvane.Error`. A message that begins with the file's name loses it.
[[noreturn]] void Fail(const std::filesystem::path& file, std::string_view message,
                       std::string place = {});

template <typename T>
void Check(const Result<T>& result, const std::filesystem::path& file) {
  if (!result) {
    Fail(file, result.Message());
  }
}

/// Texts of tables and files are Latin-1.
py::str FromLatin1(std::string_view text);
/// (year, month, day, hour, minute, second); a time of day has no date: year 0. None where it is
/// not valid.
py::object FromTime(const ParamTime& time);

/// A new array that owns its memory.
template <typename T>
py::array_t<T> ArrayOf(const std::vector<T>& values) {
  return py::array_t<T>(static_cast<py::ssize_t>(values.size()), values.data());
}
template <typename T>
py::array_t<T> NewArray(std::vector<std::size_t> shape) {
  return py::array_t<T>(std::vector<py::ssize_t>(shape.begin(), shape.end()));
}

/// A parameter table and the file that it came from.
struct Table {
  Table();
  explicit Table(const ParamTable& other) : table(other) {}

  ParamTable table;
};

py::dict FromFinding(const Finding& finding);

}  // namespace orvane::python

#endif  // ORVANE_PYTHON_BINDINGS_BIND_H_
