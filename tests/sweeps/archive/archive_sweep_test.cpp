// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/archive/archive.h"
#include "support/archive_bytes.h"
#include "sweeps/sweep.h"

namespace orvane::testing {
namespace {

constexpr std::size_t kFront = 15;  // name of the class and schema: nothing but these will do

TEST(Sweeps, Archives) {
  const std::string whole = ArchiveBytes();
  RunSweep({"archive", "a.bin", whole, kFront,
            [](const std::filesystem::path& file) {
              const auto object = calobj::FromBytes(QByteArray::fromStdString(ReadAll(file)));
              return std::string(object ? "read" : "refused");
            },
            [&whole](const std::string& bytes) {
              return std::string(bytes == whole ? "read" : "refused");
            }},
           TempDir());
}

// A field behind the front may hold anything, but no count may ask for more than there is.
TEST(Sweeps, FieldsOfArchives) {
  const std::string whole = ArchiveBytes();
  for (std::size_t at = kFront; at < whole.size(); ++at) {
    for (const char value : {'\0', '\1', '\x7F', '\x80', '\xFF'}) {
      std::string bytes = whole;
      bytes[at] = value;
      const auto archived = QByteArray::fromStdString(bytes);
      const PeakMemory memory;
      const auto object = calobj::FromBytes(archived);
      EXPECT_LT(memory.Bytes(), 4 * bytes.size() + (std::size_t{16} << 20U));
      EXPECT_TRUE(!object || calobj::ToBytes(**object) == archived) << at;
    }
  }
}

// Nothing in a file is smaller for what it takes in memory.
TEST(Sweeps, AnArchiveOfEmptyFunctions) {
  constexpr int kFunctions = 1'000'000;
  std::string bytes = ArchiveBytes();
  constexpr std::size_t kOneFunction = 4 + 4 + 4 + 24;  // count, identifier, count, one point
  bytes.resize(bytes.size() - kOneFunction);
  bytes += IntBytes(kFunctions);
  bytes.resize(bytes.size() + 8 * std::size_t{kFunctions});
  const auto archived = QByteArray::fromStdString(bytes);
  const PeakMemory memory;
  EXPECT_EQ(calobj::FromBytes(archived).Message(), "");
  EXPECT_LT(memory.Bytes(), 4 * bytes.size() + (std::size_t{16} << 20U));
}

}  // namespace
}  // namespace orvane::testing
