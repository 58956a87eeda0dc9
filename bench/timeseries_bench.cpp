// SPDX-License-Identifier: GPL-3.0-or-later
// How fast time series are read, restacked, looked through, transformed and written as text: the
// least of several rounds in which every way takes its turn, as ratios to the plain ways and to the
// limits. Beside the time stands the processors' share of it, which another program's load changes
// less.
//
//   orvane-timeseries-bench [MEGABYTES [FOLDER]]      128 in memory, where /dev/shm is
//   orvane-timeseries-bench --decode FILE             only reads its samples, to be timed from
//   outside
//
// Files are timed without their flush to the disk. In a folder of a disk, writing one safely still
// flushes the folder, and reading from the disk is timed too.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "files/file_io.h"
#include "spectra/file_spectrum.h"
#include "table/tbl_file.h"
#include "timeseries/decay.h"
#include "timeseries/record_stats.h"
#include "timeseries/restack.h"
#include "timeseries/time_series_text.h"
#include "timeseries/view_filter.h"
#include "timeseries/waveform_view.h"

namespace {

constexpr int kFrequencies = 10;
constexpr std::uint16_t kScans = 24000;
constexpr std::size_t kPiece = std::size_t{128} * 1024;
constexpr std::size_t kManyRecords = 300;  // of one frequency: their sums take 64 bits
constexpr std::size_t kPlainPart = 16;     // the plain ways do a 16th, they would take minutes

[[noreturn]] void Stop(const std::string& reason) {
  std::fprintf(stderr, "orvane-timeseries-bench: %s\n", reason.c_str());
  std::exit(1);
}

orvane::TsHeader Header(std::uint8_t channels, std::size_t frequency) {
  orvane::TsHeader header;
  header.time = {.day = 21, .month = 11, .year = 26, .weekday = 6, .century = 20};
  header.scans = kScans;
  header.channels = channels;
  header.sample_width = 3;
  header.rate = std::uint16_t{24};
  header.rate_unit = -2;
  header.frequency = 0.25 * static_cast<double>(1U << frequency);
  return header;
}

// Noise of all sizes, so that texts have from one to eight characters.
void MakeWaveform(const std::filesystem::path& path, std::uint8_t channels, std::size_t records,
                  std::size_t frequencies = kFrequencies) {
  std::mt19937 random(1);
  std::vector<std::byte> samples(std::size_t{kScans} * channels * 3);
  for (std::size_t i = 0; i < samples.size(); i += 3) {
    const auto sample = static_cast<std::int32_t>(random()) >> (8 + random() % 20);
    for (std::size_t k = 0; k < 3; ++k) {
      samples[i + k] = static_cast<std::byte>(static_cast<std::uint32_t>(sample) >> (8 * k));
    }
  }
  orvane::OutFile out;
  orvane::Result<> done = out.Open(path);
  for (std::size_t i = 0; i < records && done; ++i) {
    done = out.Write(orvane::BytesOf(Header(channels, i % frequencies)));
    done = done ? out.Write(samples) : done;
  }
  done = done ? out.Commit() : done;
  orvane::ParamTable table;
  static_cast<void>(table.BuildParamIndex());
  if (!done ||
      orvane::SaveParamFile(&table, orvane::CompanionName(path.string()), {}) != orvane::kOk) {
    Stop(done.Message());
  }
}

void Convert(const orvane::Conversion& conversion, const std::filesystem::path& in,
             const std::filesystem::path& out, unsigned threads) {
  std::atomic<bool> stop = false;
  std::atomic<std::uint64_t> bytes = 0;
  orvane::BatchTask task(in, {out}, false, &stop, &bytes);
  task.AllowThreads(threads);
  if (const auto result = conversion.job(task); !result.IsDone()) {
    Stop(result.text);
  }
}

void ReadWhole(const std::filesystem::path& path) {
  std::vector<char> piece(kPiece);
  const int handle = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  while (read(handle, piece.data(), piece.size()) > 0) {
  }
  close(handle);
}

void WriteAgain(const std::filesystem::path& text, const std::filesystem::path& to) {
  std::vector<char> piece(2 * kPiece, ' ');
  std::uint64_t left = std::filesystem::file_size(text);
  const int handle = open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  while (left > 0) {
    const auto count = write(handle, piece.data(), std::min<std::uint64_t>(left, piece.size()));
    if (count <= 0) {
      Stop("cannot write");
    }
    left -= static_cast<std::uint64_t>(count);
  }
  close(handle);
  std::filesystem::remove(to);
}

// One call of the C library for each sample; `take` gets the sample and whether it ends a scan.
template <typename Take>
void ReadPlainly(const std::filesystem::path& path, Take take) {
  std::FILE* in = std::fopen(path.c_str(), "rb");
  orvane::TsHeader header;
  while (std::fread(&header, sizeof header, 1, in) == 1) {
    for (int scan = 0; scan < header.scans; ++scan) {
      for (int channel = 0; channel < header.channels; ++channel) {
        std::int32_t sample = 0;
        if (std::fread(&sample, header.sample_width, 1, in) != 1) {
          Stop("cannot read");
        }
        sample = static_cast<std::int32_t>(static_cast<std::uint32_t>(sample) << 8U);
        take(header, scan, channel, sample);
      }
    }
  }
  std::fclose(in);
}

void TextPlainly(const std::filesystem::path& path, const std::filesystem::path& to) {
  std::FILE* out = std::fopen(to.c_str(), "w");
  ReadPlainly(path, [out](const orvane::TsHeader& header, int, int channel, std::int32_t sample) {
    std::fprintf(out, " %16d ", sample / 256);
    if (channel + 1 == header.channels) {
      std::fprintf(out, "\n");
    }
  });
  std::fclose(out);
  std::filesystem::remove(to);
}

void RestackPlainly(const std::filesystem::path& path) {
  std::map<double, std::vector<std::int32_t>> sums;
  ReadPlainly(path,
              [&sums](const orvane::TsHeader& header, int scan, int channel, std::int32_t sample) {
                auto& sum = sums[header.frequency];
                sum.resize(std::size_t{header.scans} * header.channels);
                const auto at = std::size_t{header.channels} * static_cast<std::size_t>(scan) +
                                static_cast<std::size_t>(channel);
                sum[at] = static_cast<std::int32_t>(static_cast<std::uint32_t>(sum[at]) +
                                                    static_cast<std::uint32_t>(sample));
              });
}

void Decode(const std::filesystem::path& path) {
  orvane::TsFile file;
  if (!file.Open(path)) {
    Stop("cannot open");
  }
  orvane::TsWalker walker(&file.Bytes(), file.HeaderSize());
  orvane::CTsRec record;
  for (orvane::TsPlace place; walker.Next(&place);) {
    if (!record.Read(file.Bytes(), place)) {
      Stop("cannot read");
    }
  }
}

void DropFromCache(const std::filesystem::path& path) {
  const int handle = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  fsync(handle);
  posix_fadvise(handle, 0, 0, POSIX_FADV_DONTNEED);
  close(handle);
}

struct Way {
  const char* name;
  std::function<void()> run;
  std::function<void()> prepare = [] {};
  double scale = 1;
  double time = 1e300;  // milliseconds
  double processor_time = 1e300;
};

double ProcessorTime() {
  struct rusage usage {};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec);
  return 1e3 * seconds + static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e3;
}

void Measure(std::vector<Way>* ways, int rounds) {
  for (int round = 0; round < rounds; ++round) {
    for (Way& way : *ways) {
      way.prepare();
      const double processor = ProcessorTime();
      const auto start = std::chrono::steady_clock::now();
      way.run();
      const std::chrono::duration<double, std::milli> time =
          std::chrono::steady_clock::now() - start;
      way.time = std::min(way.time, time.count() * way.scale);
      way.processor_time = std::min(way.processor_time, (ProcessorTime() - processor) * way.scale);
    }
  }
  for (const Way& way : *ways) {
    std::printf("  %-42s %10.2f ms %10.2f ms\n", way.name, way.time, way.processor_time);
  }
}

void Ratio(const char* what, const Way& ours, const Way& other, double aim) {
  std::printf("  %-48s %6.3f  %6.3f  (aim: at most %g)\n", what, ours.time / other.time,
              ours.processor_time / other.processor_time, aim);
}

void ReportPeakMemory(const std::function<void()>& work) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child == 0) {
    work();
    _exit(0);
  }
  struct rusage usage {};
  int status = 0;
  wait4(child, &status, 0, &usage);
  std::printf("  %-48s %6.1f MB  (aim: at most 30)\n", "peak memory of restacking, 10 frequencies",
              static_cast<double>(usage.ru_maxrss) / 1024);
}

void LookThrough(const std::filesystem::path& path, unsigned threads) {
  orvane::RandomFile file;
  std::uint64_t saturated = 0;
  if (!file.Open(path) ||
      !orvane::StatsOfRecords(file, orvane::TsWalker(&file, orvane::TsHeaderSize::kFull),
                              {.threads = threads}, [&](const orvane::RecordStats& record) {
                                saturated += record.channels.front().saturated;
                              })) {
    Stop("cannot look through");
  }
}

void Transform(const std::filesystem::path& path, unsigned threads) {
  orvane::TsFile file;
  orvane::FileSpectrumOptions options;
  options.pass.threads = threads;
  if (!file.Open(path) || !orvane::SpectrumOfFile(file, options)) {
    Stop("cannot transform");
  }
}

std::vector<std::int32_t> HeldNoise(std::size_t scans) {
  std::mt19937 random(2);
  std::vector<std::int32_t> held(12 * scans);
  for (std::int32_t& value : held) {
    value = static_cast<std::int32_t>(random() & 0xFFFFFF00U);
  }
  return held;
}

// The file of spectra has a seventh of 1,000 records, which are 864 MB.
void RunGoodness(const std::filesystem::path& folder, std::size_t megabytes) {
  const auto stats = folder / "STATS.TSS";
  const auto spectra = folder / "SPECTRA.TSS";
  MakeWaveform(stats, 12, megabytes * 1000000 / (std::size_t{kScans} * 36));
  MakeWaveform(spectra, 12, 143);
  std::vector<Way> ways{
      {"statistics, one thread", [&] { LookThrough(stats, 1); }},
      {"statistics, two threads", [&] { LookThrough(stats, 2); }},
      {"read(2) of the same file", [&] { ReadWhole(stats); }},
      {"spectrum of 143 records, one thread", [&] { Transform(spectra, 1); }},
      {"spectrum of 143 records, two threads", [&] { Transform(spectra, 2); }},
      {"read(2) of the same file", [&] { ReadWhole(spectra); }},
  };
  Measure(&ways, 9);
  std::printf("\nRatios: time, processor time\n");
  Ratio("statistics, one thread / read(2)", ways[0], ways[2], 1.8);
  Ratio("statistics, two threads / read(2)", ways[1], ways[2], 1.1);
  Ratio("spectrum of a file, one thread / read(2)", ways[3], ways[5], 12);
  Ratio("spectrum of a file, two threads / read(2)", ways[4], ways[5], 7);
  for (const auto& [scans, aim] : {std::pair<std::size_t, double>{kScans, 12}, {65535, 30}}) {
    const auto held = HeldNoise(scans);
    std::vector<Way> one{{"spectrum of a record of 12 channels", [&held = held] {
                            if (!orvane::SpectrumOfScans(held, 12, 2400)) {
                              Stop("cannot transform");
                            }
                          }}};
    std::printf("\n%zu scans (aim: at most %g ms)\n", scans, aim);
    Measure(&one, 15);
  }
  std::filesystem::remove(stats);
  std::filesystem::remove(spectra);
}

// What the display works out of a record of 12 x 24000 between two presses of a key.
void RunSeen() {
  const auto held = HeldNoise(kScans);
  const std::vector<double> trace(held.begin(), held.begin() + kScans);
  const auto twelve_times = [&trace](const auto& work) {
    return [&trace, work] {
      for (int channel = 0; channel < 12; ++channel) {
        std::vector<double> values = trace;
        work(&values);
      }
    };
  };
  const orvane::DecayTiming timing{kScans, 25, 0.25};
  std::vector<orvane::DecayWindow> windows;
  for (int i = 0; i < 20; ++i) {
    windows.push_back({i * 0.0005, (i + 1) * 0.0005});
  }
  std::vector<Way> ways{
      {"high pass and low pass", twelve_times([](auto* values) {
         orvane::ViewFilter{.high_pass = 1, .low_pass = 1000}.Apply(kScans, values);
       })},
      {"20 notches",
       twelve_times([](auto* values) { orvane::ViewFilter{.mains = 50}.Apply(kScans, values); })},
      {"decay in 20 windows, with its edges", twelve_times([&](auto* values) {
         const auto edges = orvane::FindEdgesIn(*values, timing);
         if (!edges || !orvane::DecayOf(*values, timing, *edges, windows)) {
           Stop("no decay");
         }
       })},
  };
  std::printf("\nA record of 12 x %d\n", kScans);
  Measure(&ways, 15);
}

void Run(const std::filesystem::path& folder, std::size_t megabytes, bool is_on_disk) {
  const auto big = folder / "BIG.TSS";
  const auto part = folder / "PART.TSS";
  const auto wide = folder / "WIDE.TSS";
  const auto one = folder / "ONE.TSS";
  const auto out = folder / "out";
  const auto text = folder / "BIG.txt";
  const std::size_t record = sizeof(orvane::TsHeader) + std::size_t{kScans} * 6 * 3;
  const std::size_t records = megabytes * 1000000 / record;
  const std::size_t part_records = std::max<std::size_t>(1, records / kPlainPart);
  const double part_scale = static_cast<double>(records) / static_cast<double>(part_records);
  ReportPeakMemory([&] {
    MakeWaveform(part, 6, std::size_t{4} * kFrequencies);
    Convert(orvane::Restack(), part, out, 2);
  });
  MakeWaveform(big, 6, records);
  MakeWaveform(part, 6, part_records);
  MakeWaveform(wide, 12, 16);
  MakeWaveform(one, 6, kManyRecords, 1);
  orvane::WriterCalls().sync = [](int) { return 0; };

  std::printf("\n%zu records of 6 x %d samples, %zu MB\n", records, kScans, megabytes);
  orvane::WaveformView opened;
  orvane::WaveformView paged;
  if (!paged.Open(wide)) {
    Stop(paged.File().FailureText());
  }
  const auto draw = [](const orvane::WaveformView& view) {
    std::size_t points = 0;
    for (const auto& trace : view.Traces(1920)) {
      points += trace.times.size();
    }
    for (std::size_t i = 0; i < view.TraceCount(); ++i) {
      points += view.StatusText(i).size() + view.Channel(i).Label().size();
      points += view.ValuesOf(i).low < 0 ? 1 : 0;
    }
    return points + view.TitleText().size() == 0 ? Stop("nothing to draw") : void();
  };
  std::vector<Way> display{
      {"open, first record, its lines",
       [&] { opened.Open(big) ? draw(opened) : Stop("cannot open"); }},
      {"next record of 12 x 24000, its lines",
       [&] {
         if (!paged.Next()) {
           paged.First();
         }
         draw(paged);
       }},
  };
  Measure(&display, 15);

  const auto text_of = orvane::TimeSeriesText();
  const auto restack = orvane::Restack();
  Convert(text_of, big, text, 1);
  const auto remove_out = [&] { std::filesystem::remove(out); };
  std::vector<Way> texts{
      {"text, one thread", [&] { Convert(text_of, big, out, 1); }, remove_out},
      {"text, two threads", [&] { Convert(text_of, big, out, 2); }, remove_out},
      {"write(2) of the same bytes", [&] { WriteAgain(text, out); }, remove_out},
      {"text, fread and fprintf for each sample", [&] { TextPlainly(part, out); }, remove_out,
       part_scale},
  };
  Measure(&texts, 5);
  std::filesystem::remove(text);
  remove_out();

  std::vector<Way> stacks{
      {"restack, one thread", [&] { Convert(restack, big, out, 1); }},
      {"restack, two threads", [&] { Convert(restack, big, out, 2); }},
      {"read(2) in pieces, as cat does", [&] { ReadWhole(big); }},
      {"restack, fread for each sample", [&] { RestackPlainly(part); }, [] {}, part_scale},
      {"restack of one frequency, one thread", [&] { Convert(restack, one, out, 1); }, [] {},
       static_cast<double>(records) / kManyRecords},
  };
  Measure(&stacks, 9);
  const auto drop = [&] { DropFromCache(big); };
  std::vector<Way> cold{
      {"restack from the disk, one thread", [&] { Convert(restack, big, out, 1); }, drop},
      {"read(2) from the disk", [&] { ReadWhole(big); }, drop},
  };
  if (is_on_disk) {
    Measure(&cold, 5);
  }

  std::printf("\nRatios of this run: time, processor time\n");
  Ratio("text / fread and fprintf", texts[0], texts[3], 1.0 / 12);
  Ratio("text, one thread / write(2)", texts[0], texts[2], 2.0);
  Ratio("text, two threads / write(2)", texts[1], texts[2], 1.4);
  Ratio("restack / fread for each sample", stacks[0], stacks[3], 1.0 / 40);
  Ratio("restack, one thread / read(2)", stacks[0], stacks[2], 1.45);
  Ratio("restack, two threads / read(2)", stacks[1], stacks[2], 0.9);
  Ratio("restack of one frequency / of ten, one thread", stacks[4], stacks[0], 1.5);
  if (is_on_disk) {
    Ratio("restack from the disk / read(2) from the disk", cold[0], cold[1], 1.1);
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && std::string_view(argv[1]) == "--decode") {
    Decode(argv[2]);
    return 0;
  }
  const std::size_t megabytes = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 128;
  const std::filesystem::path memory = "/dev/shm";
  const bool is_on_disk = argc > 2 || !std::filesystem::is_directory(memory);
  std::string folder = (argc > 2     ? std::filesystem::path(argv[2])
                        : is_on_disk ? std::filesystem::temp_directory_path()
                                     : memory) /
                       "orvane-bench-XXXXXX";
  if (megabytes < 8 || mkdtemp(folder.data()) == nullptr) {
    Stop("usage: orvane-timeseries-bench [MEGABYTES [FOLDER]], at least 8");
  }
  Run(folder, megabytes, is_on_disk);
  RunGoodness(folder, megabytes);
  RunSeen();
  std::filesystem::remove_all(folder);
  return 0;
}
