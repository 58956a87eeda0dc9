// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <string_view>
#include <vector>

#include "spectra/calibrated_spectra.h"
#include "support.h"
#include "table/param_entry.h"

namespace orvane::fuzz {
namespace {

// The first bytes, so many as two bytes before them tell.
Bytes TakePart(Bytes* input) {
  const std::size_t low = TakeByte(input);
  const std::size_t size = std::min(low + 256 * TakeByte(input), input->size());
  const Bytes part = input->first(size);
  *input = input->subspan(size);
  return part;
}

ParamEntry Named(std::string_view key, ValueType type, std::string_view value) {
  ParamEntry entry;
  std::copy(key.begin(), key.end(), entry.key.begin());
  entry.type = type;
  std::copy(value.begin(), value.end(), entry.value.begin());
  return entry;
}

}  // namespace

void FuzzSpectra(Bytes input) {
  const Bytes settings = TakePart(&input);
  std::vector<std::byte> companion(settings.begin(), settings.end());
  // Whatever the recording tells, its box and sensors are those of the input.
  companion.resize(std::max<std::size_t>(companion.size() / 32 * 32, 32));
  for (const ParamEntry& entry : {Named("SNUM", IntPT, std::string_view("\7\0\0\0", 4)),
                                  Named("HXSN", StrPT, "7"), Named("CSSN", StrPT, "7")}) {
    const auto bytes = BytesOf(entry);
    companion.insert(companion.end(), bytes.begin(), bytes.end());
  }
  PutFile("C.TBL", companion);
  PutFile("7.CLB", TakePart(&input));
  PutFile("7.CLC", TakePart(&input));
  SpectraOptions options;
  options.ask = [](const std::string&, const BatchTask&) { return Answer::kYes; };
  const BatchResult result =
      Convert(CalibratedSpectra(options), PutFile("C.TSS", input), PathOf("C_cal.txt"));
  Require(result.IsDone() || !result.text.empty() || !result.box.empty(), "a failure has a reason");
}

}  // namespace orvane::fuzz
