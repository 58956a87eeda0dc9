// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>
#include <vector>

#include "spectra/decay_listing.h"
#include "support.h"
#include "table/param_entry.h"
#include "timeseries/fold.h"
#include "timeseries/measure.h"
#include "timeseries/ts_file.h"
#include "timeseries/view_filter.h"

namespace orvane::fuzz {
namespace {

template <typename Value>
ParamEntry Named(std::string_view key, ValueType type, const Value& value) {
  ParamEntry entry;
  std::copy(key.begin(), key.end(), entry.key.begin());
  entry.type = type;
  std::memcpy(entry.value.data(), &value, sizeof value);
  return entry;
}

// The table of a recording of one named channel; the input chooses method, waveform and windows.
void PutCompanion(Bytes* input) {
  constexpr std::uint16_t kChannel = 'E' + 256 * 'x';
  std::vector<std::byte> bytes(32);
  for (const ParamEntry& entry :
       {Named("TECH", IntPT, Le<std::int32_t>(static_cast<int>(TakeByte(input) % 8))),
        Named("WFRM", IntPT, Le<std::int32_t>(static_cast<int>(TakeByte(input) % 14))),
        Named("NUMITEM", IntPT, Le<std::int32_t>(static_cast<int>(TakeByte(input)))),
        Named("FSCV", FltPT, Le<double>(2.5)), Named("EGNC", IntPT, Le<std::int32_t>(0)),
        Named("CHDEF1", StrPT, Le<std::uint16_t>(kChannel))}) {
    const auto of_entry = BytesOf(entry);
    bytes.insert(bytes.end(), of_entry.begin(), of_entry.end());
  }
  PutFile("D.TBL", bytes);
}

bool AreFinite(const std::vector<double>& values) {
  return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

// What the display does with a trace.
void Handle(const std::filesystem::path& path) {
  TsFile file;
  CTsRec record;
  if (!file.Open(path) || file.Count() == 0 || !file.Read(1, &record) || record.Channels() == 0) {
    return;
  }
  std::vector<double> values;
  for (std::size_t scan = 0; scan < record.Scans(); ++scan) {
    values.push_back(record.Row(scan).Held(0));
  }
  const double rate = SampleRate(record.Header());
  const double frequency = record.Header().frequency;
  for (const bool halves : {false, true}) {
    const auto fold = FoldTrace(values, rate, frequency, halves);
    Require(fold || !fold.Message().empty(), "a fold or a reason");
    Require(!fold || fold->means.size() == fold->spreads.size(), "a spread for each mean");
    Require(!fold || AreFinite(fold->spreads) || !AreFinite(fold->means),
            "where there is a mean there is a spread");
  }
  const auto measured = Measure(values, rate, frequency, 1);
  Require(!measured || (measured->min <= measured->max && measured->scans <= values.size()),
          "what is measured lies between least and greatest");
  const ViewFilter filter{true, frequency / 3, frequency, 50};
  if (filter.Check(rate)) {
    const std::size_t count = values.size();
    filter.Apply(rate, &values);
    Require(values.size() == count && AreFinite(values), "filters keep values finite");
  }
}

}  // namespace

void FuzzDecay(Bytes input) {
  PutCompanion(&input);
  const std::size_t choices = TakeByte(&input);
  DecayListingOptions options;
  if (choices % 2 == 1) {
    options.windows = {{1e-9, 0.001}, {0.0005, 0.01 * static_cast<double>(TakeByte(&input))}};
  }
  options.record = choices / 2 % 3;
  options.reference = choices / 8 % 3;
  options.most_harmonics = static_cast<int>(choices / 32) + 1;
  const auto path = PutFile("D.TSS", input);
  std::string text;
  ListingWork work;
  work.put = [&text](std::string_view piece) { text += piece; };
  const auto note = DecayListing(options)(path, work);
  Require(note || !note.Message().empty(), "a list or a reason");
  Require(!note || text.ends_with('\n'), "lines are whole");
  const auto tabs = [](std::string_view line) {
    return std::count(line.begin(), line.end(), '\t');
  };
  const auto expected = tabs(std::string_view(text).substr(0, text.find('\n')));
  for (std::size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) {
    Require(tabs(std::string_view(text).substr(at, text.find('\n', at) - at)) == expected,
            "lines have the columns of their titles");
  }
  Handle(path);
}

}  // namespace orvane::fuzz
