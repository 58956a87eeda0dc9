// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter table against the plain ways of doing the same.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <unordered_map>

#include "files/file_io.h"
#include "ratio_report.h"
#include "table/param_dictionary.h"
#include "table/param_table.h"
#include "table/tbl_file.h"

namespace {

using orvane::kDictionarySize;
using orvane::ParamKey;
using orvane::ParamTable;

ParamTable BuiltTable() {
  ParamTable table;
  if (table.BuildParamIndex() != orvane::kOk) {
    std::abort();
  }
  return table;
}

std::vector<std::string> Keys(const char* suffix) {
  std::vector<std::string> keys;
  keys.reserve(kDictionarySize);
  for (const orvane::ParamEntry& entry : orvane::kParamDictionary) {
    keys.push_back(ParamKey(entry.key).Text() + suffix);
  }
  return keys;
}

using PlainMap = std::unordered_map<std::string, std::size_t>;

PlainMap MakePlainMap() {
  PlainMap map;
  for (const std::string& key : Keys("")) {
    map.emplace(key, map.size());
  }
  return map;
}

// Keys that are only known at run time: each is brought to normal form and looked up.
void LookUpText(benchmark::State& state, const char* suffix) {
  const ParamTable table = BuiltTable();
  const auto keys = Keys(suffix);
  for (auto _ : state) {
    for (const std::string& key : keys) {
      benchmark::DoNotOptimize(table.FindParam(key));
    }
  }
}

// Keys as the program has them, literals that the compiler has brought to normal form.
void LookUpLiteral(benchmark::State& state, const char* suffix) {
  const ParamTable table = BuiltTable();
  const auto texts = Keys(suffix);
  const std::vector<ParamKey> keys(texts.begin(), texts.end());
  for (auto _ : state) {
    for (const ParamKey key : keys) {
      benchmark::DoNotOptimize(table.FindParam(key));
    }
  }
}

// The plain way takes the case as it is: less work than ours.
void LookUpTextPlain(benchmark::State& state, const char* suffix) {
  const auto map = MakePlainMap();
  const auto keys = Keys(suffix);
  for (auto _ : state) {
    for (const std::string& key : keys) {
      benchmark::DoNotOptimize(map.find(key));
    }
  }
}

void LookUpLiteralPlain(benchmark::State& state, const char* suffix) {
  const auto map = MakePlainMap();
  const auto keys = Keys(suffix);
  for (auto _ : state) {
    for (const std::string& key : keys) {
      const char* literal = key.c_str();
      benchmark::DoNotOptimize(map.find(literal));
    }
  }
}

void HitText(benchmark::State& state) { LookUpText(state, ""); }
void HitTextPlain(benchmark::State& state) { LookUpTextPlain(state, ""); }
void MissText(benchmark::State& state) { LookUpText(state, "Q"); }
void MissTextPlain(benchmark::State& state) { LookUpTextPlain(state, "Q"); }
void HitLiteral(benchmark::State& state) { LookUpLiteral(state, ""); }
void HitLiteralPlain(benchmark::State& state) { LookUpLiteralPlain(state, ""); }
void MissLiteral(benchmark::State& state) { LookUpLiteral(state, "Q"); }
void MissLiteralPlain(benchmark::State& state) { LookUpLiteralPlain(state, "Q"); }

void BuildIndex(benchmark::State& state) {
  ParamTable table;
  for (auto _ : state) {
    benchmark::DoNotOptimize(table.BuildParamIndex());
  }
}

// The search that the built-in dictionary is spared.
void SearchIndexAtRunTime(benchmark::State& state) {
  std::vector<std::uint64_t> words;
  words.reserve(kDictionarySize);
  for (const orvane::ParamEntry& entry : orvane::kParamDictionary) {
    words.push_back(ParamKey(entry.key).Word());
  }
  std::vector<std::uint16_t> positions(orvane::IndexSize(words.size()));
  for (auto _ : state) {
    benchmark::DoNotOptimize(orvane::SearchIndex(words, positions));
  }
}

std::filesystem::path BenchFile() {
  return std::filesystem::temp_directory_path() /
         ("orvane-bench-" + std::to_string(getpid()) + ".tbl");
}

void Load(benchmark::State& state) {
  ParamTable table = BuiltTable();
  benchmark::DoNotOptimize(orvane::SaveParamFile(&table, BenchFile(), {}));
  for (auto _ : state) {
    benchmark::DoNotOptimize(orvane::LoadParamFile(&table, BenchFile()));
  }
}

void ReadBytes(benchmark::State& state) {
  ParamTable table = BuiltTable();
  benchmark::DoNotOptimize(orvane::SaveParamFile(&table, BenchFile(), {}));
  std::vector<std::byte> bytes(32 + 32 * kDictionarySize);
  for (auto _ : state) {
    const int handle = open(BenchFile().c_str(), O_RDONLY);
    benchmark::DoNotOptimize(read(handle, bytes.data(), bytes.size()));
    close(handle);
  }
  std::filesystem::remove(BenchFile());
}

void Save(benchmark::State& state) {
  ParamTable table = BuiltTable();
  for (auto _ : state) {
    benchmark::DoNotOptimize(orvane::SaveParamFile(&table, BenchFile(), {}));
  }
}

// The same safety for bytes that are ready: beside, synced, renamed.
void WriteBytes(benchmark::State& state) {
  const std::vector<std::byte> bytes = orvane::TblImage(BuiltTable(), {});
  for (auto _ : state) {
    benchmark::DoNotOptimize(orvane::WriteFile(BenchFile(), bytes));
  }
  std::filesystem::remove(BenchFile());
}

void MakeImage(benchmark::State& state) {
  const ParamTable table = BuiltTable();
  for (auto _ : state) {
    benchmark::DoNotOptimize(orvane::TblImage(table, {}));
  }
}

void CopyTable(benchmark::State& state) {
  const ParamTable table = BuiltTable();
  for (auto _ : state) {
    ParamTable copy = table;
    benchmark::DoNotOptimize(copy);
  }
}

BENCHMARK(HitLiteral);
BENCHMARK(HitLiteralPlain);
BENCHMARK(MissLiteral);
BENCHMARK(MissLiteralPlain);
BENCHMARK(HitText);
BENCHMARK(HitTextPlain);
BENCHMARK(MissText);
BENCHMARK(MissTextPlain);
BENCHMARK(BuildIndex);
BENCHMARK(SearchIndexAtRunTime);
BENCHMARK(Load);
BENCHMARK(ReadBytes);
BENCHMARK(Save);
BENCHMARK(WriteBytes);
BENCHMARK(MakeImage);
BENCHMARK(CopyTable);

constexpr auto kRatios = std::to_array<orvane::bench::Ratio>({
    {"hit, literal keys / std::unordered_map<std::string>", "HitLiteral", "HitLiteralPlain", 0.3},
    {"miss, literal keys / std::unordered_map<std::string>", "MissLiteral", "MissLiteralPlain",
     0.35},
    {"hit, run-time texts / std::unordered_map<std::string>", "HitText", "HitTextPlain", 0},
    {"miss, run-time texts / std::unordered_map<std::string>", "MissText", "MissTextPlain", 0},
    {"build the built-in index / search it at run time", "BuildIndex", "SearchIndexAtRunTime", 0},
    {"load a full table / read its bytes", "Load", "ReadBytes", 0},
    {"save a full table / write its bytes as safely", "Save", "WriteBytes", 0},
    {"schedule of 200 rows / its bare arithmetic", "StepTable", "StepTablePlain", 0},
    {"all rules over a table of 200 steps / looking up all its keys", "CheckTable", "HitText", 0},
});

}  // namespace

int main(int argc, char** argv) { return orvane::bench::RunAndReport(argc, argv, kRatios); }
