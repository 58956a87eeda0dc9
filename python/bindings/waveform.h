// SPDX-License-Identifier: GPL-3.0-or-later
#ifndef ORVANE_PYTHON_BINDINGS_WAVEFORM_H_
#define ORVANE_PYTHON_BINDINGS_WAVEFORM_H_

#include <string>

#include "timeseries/leave_out.h"
#include "timeseries/ts_file.h"

namespace orvane::python {

/// The records of a file that "bad", "beside", numbers or a list leave out; empty: none.
LeaveOut LeftOut(const TsFile& file, const std::string& choice);

}  // namespace orvane::python

#endif  // ORVANE_PYTHON_BINDINGS_WAVEFORM_H_
