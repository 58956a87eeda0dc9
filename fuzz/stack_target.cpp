// SPDX-License-Identifier: GPL-3.0-or-later
#include "support.h"
#include "timeseries/stack_csv.h"

namespace orvane::fuzz {

void FuzzStack(Bytes input) {
  const auto path = PutFile("a.trs", input);
  StackReader reader;
  Require(static_cast<bool>(reader.Open(path)), "a file that is there can be opened");
  StackRecord record;
  std::string again;
  while (reader.Next(&record)) {
    again.append(TextOf(BytesOf(record.header))).append(TextOf(record.extension));
    again.append(TextOf(record.items));
    static_cast<void>(record.ExtensionValue());
    Require(again.size() == reader.Offset(), "the offset is that of the next record");
  }
  Require(again == TextOf(input).substr(0, again.size()), "records are the bytes of the file");
  Require(reader.IsCut() == (again.size() < input.size()), "what is left is a cut record");
  for (const StackDomain domain : {StackDomain::kTime, StackDomain::kFrequency}) {
    const BatchResult result = Convert(StackCsv(domain), path, PathOf("a.csv"));
    Require(result.IsDone() || !result.text.empty(), "a failure has a reason");
  }
}

}  // namespace orvane::fuzz
