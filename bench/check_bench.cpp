// SPDX-License-Identifier: GPL-3.0-or-later
// All rules over a table with a long schedule against looking up all keys of a table by their text.
#include <benchmark/benchmark.h>

#include "check/check.h"
#include "table/param_access.h"
#include "table/param_time.h"

namespace {

// A spread of six boxes, all of whose channels are recorded, and 200 steps.
orvane::ParamTable FullTable() {
  orvane::ParamTable table;
  if (table.BuildParamIndex() != orvane::kOk) {
    std::abort();
  }
  orvane::PutInt(&table, "AUTO", 1);
  orvane::PutInt(&table, "NCHN", 8);
  orvane::PutInt(&table, "TPFR", 60);
  orvane::PutInt(&table, "FPOC", 200);
  orvane::PutReal(&table, "FRQ0", 9600);
  for (const char* key : {"SNUM", "SN01", "SN02", "SN03", "SN04", "SN05", "SNTX"}) {
    orvane::PutInt(&table, key, 1200);
  }
  return table;
}

void CheckTable(benchmark::State& state) {
  const orvane::ParamTable table = FullTable();
  const orvane::ParamTime now = orvane::ParseParamTime("2026/11/20 06:00");
  for (auto _ : state) {
    benchmark::DoNotOptimize(orvane::CheckTable(table, now));
  }
}

BENCHMARK(CheckTable);

}  // namespace
