// SPDX-License-Identifier: GPL-3.0-or-later
// In place of waveform_mseed.cpp where its libraries are not installed.
#include "export/waveform_mseed.h"

namespace orvane {

std::string_view WhyNoMseed() { return "this build is without libmseed and pugixml"; }

Conversion WaveformMseed(MseedOptions /*options*/) { return {}; }

}  // namespace orvane
