// SPDX-License-Identifier: GPL-3.0-or-later
#include "bind.h"

namespace orvane::python {
namespace {

// The exception is a class of the package, with the parts of a message as attributes.
void Raise(const Fault& fault) {
  const py::object type = py::module_::import("orvane._errors").attr("Error");
  const py::object file = fault.file.empty()
                              ? py::object(py::none())
                              : py::module_::import("os").attr("fsdecode")(py::bytes(fault.file));
  const py::object place = fault.place.empty() ? py::object(py::none()) : py::cast(fault.place);
  const py::object reason = py::bytes(fault.reason).attr("decode")("utf-8", "backslashreplace");
  const py::object error = type(reason, file, place);
  PyErr_SetObject(type.ptr(), error.ptr());
}

void Translate(
    std::exception_ptr thrown) {  // NOLINT(performance-unnecessary-value-param): as asked
  try {
    if (thrown) {
      std::rethrow_exception(thrown);
    }
  } catch (const Fault& fault) {
    Raise(fault);
  }
}

}  // namespace
}  // namespace orvane::python

PYBIND11_MODULE(_core, module) {
  namespace py = pybind11;
  module.doc() = "The compiled part of orvane; use the package's own classes.";
  py::register_exception_translator(&orvane::python::Translate);
  orvane::python::BindTable(&module);
  orvane::python::BindWaveform(&module);
  orvane::python::BindCalibration(&module);
  orvane::python::BindAnalysis(&module);
  orvane::python::BindSurvey(&module);
}
