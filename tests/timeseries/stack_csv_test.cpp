// SPDX-License-Identifier: GPL-3.0-or-later
#include "timeseries/stack_csv.h"

#include "support/batch_help.h"
#include "support/stack_bytes.h"

namespace orvane::testing {
namespace {

constexpr const char* kHead = "2009/06/30 14:05:00, 0007, 1, 0A,     0.125000, ";

std::string Csv(StackDomain domain, const std::string& file, BatchResult* result = nullptr) {
  const TempDir dir;
  WriteAll(dir / "a.trs", file);
  const BatchResult own = RunOne(StackCsv(domain), dir / "a.trs");
  if (result != nullptr) {
    *result = own;
  }
  return own.IsDone() ? ReadAll(dir / "a.csv") : "not done";
}

TEST(StackCsv, PrintsBothDomains) {
  const std::string two = FloatBytes(-1.5F) + FloatBytes(2.5e-12F);
  EXPECT_EQ(Csv(StackDomain::kTime, StackBytes("TX-1", Extension(1.25F), 8, 1, two)),
            std::string("    TX-1, ") + kHead + "1.250,   -1.50000e+00,    2.50000e-12,\n");
  EXPECT_EQ(Csv(StackDomain::kFrequency, StackBytes("TX-1", Extension(1.25F), 4, 2, two)),
            std::string("    TX-1, ") + kHead + "   1.25,   -1.50000e+00,    2.50000e-12, \n");
  // No items; an extension too short for its value, and the longest; a label without its NUL.
  const std::string label(36, 'L');
  EXPECT_EQ(
      Csv(StackDomain::kTime, StackBytes(label, std::string(19, '\x7F'), 255, 0, "") +
                                  StackBytes("", Extension(-2) + std::string(235, '?'), 8, 0, "")),
      label + ", " + kHead + "0.000, \n" + std::string(8, ' ') + ", " + kHead + "-2.000, \n");
}

// Items are printed at 8 or 4 bytes whatever their size is.
TEST(StackCsv, KeepsTheStrideWhateverTheItemSize) {
  const std::string one = FloatBytes(1);
  EXPECT_EQ(Csv(StackDomain::kTime, StackBytes("a", Extension(0), 4, 2, one + one)),
            std::string("       a, ") + kHead +
                "0.000,    1.00000e+00,    1.00000e+00,   0.00000e+00,    0.00000e+00,\n");
  EXPECT_EQ(Csv(StackDomain::kFrequency, StackBytes("a", Extension(0), 3, 2, "\x01\x02" + one)),
            std::string("       a, ") + kHead + "   0.00,    7.18866e-43,    2.27795e-41, \n");
  EXPECT_EQ(Csv(StackDomain::kFrequency, StackBytes("a", Extension(0), 0, 1, "")),
            std::string("       a, ") + kHead + "   0.00,    0.00000e+00, \n");
  // Items of the other domain's size are told.
  BatchResult result;
  const std::string record = StackBytes("a", Extension(0), 3, 1, "abc");
  Csv(StackDomain::kTime, StackBytes("a", Extension(0), 4, 1, one) + record, &result);
  EXPECT_EQ(result.text,
            "1 of 2 records have items of 4 bytes, as frequency-domain results have, but were "
            "converted as time domain");
  Csv(StackDomain::kFrequency, StackBytes("a", Extension(0), 8, 0, "") + record, &result);
  EXPECT_TRUE(result.text.starts_with("1 of 2 records have items of 8 bytes, as time-domain"));
  Csv(StackDomain::kFrequency, StackBytes("a", Extension(0), 4, 1, one) + record, &result);
  EXPECT_EQ(result.status, BatchStatus::kDone);
  for (const char* label : {"=1+1", "  +a", "-", "@x", "a\nb"}) {
    Csv(StackDomain::kFrequency,
        StackBytes("a", Extension(0), 4, 1, one) + StackBytes(label, Extension(0), 4, 1, one),
        &result);
    EXPECT_EQ(result.text,
              "1 label looks like a formula to a spreadsheet or has a line break, the first in "
              "record 2");
  }
  const std::string most(std::size_t{255} * 255, '\0');
  const std::string lines =
      Csv(StackDomain::kTime, StackBytes("a", Extension(0), 255, 255, most) +
                                  StackBytes("b", Extension(0), 255, 255, most));
  EXPECT_EQ(lines.size(), 2 * (10 + 48 + 7 + 255 * 31 + 1));
}

TEST(StackCsv, ACutFileKeepsItsWholeRecords) {
  const TempDir dir;
  const std::string record = StackBytes("a", Extension(1), 8, 2, std::string(16, '\0'));
  for (std::size_t size = 0; size <= 2 * record.size(); ++size) {
    WriteAll(dir / "cut.trs", (record + record).substr(0, size));
    StackReader reader;
    ASSERT_EQ(reader.Open(dir / "cut.trs").Message(), "");
    StackRecord read;
    std::size_t count = 0;
    while (reader.Next(&read)) {
      EXPECT_EQ(read.header.Label(), "a");
      ++count;
    }
    EXPECT_EQ(count, size / record.size());
    EXPECT_EQ(reader.Offset(), count * record.size());
    EXPECT_EQ(reader.IsCut(), size % record.size() != 0);
  }
  BatchResult result;
  const std::string line = Csv(StackDomain::kTime, record);
  EXPECT_EQ(Csv(StackDomain::kTime, record + record.substr(1), &result), line);
  EXPECT_NE(result.text.find("offset 106 "), std::string::npos) << result.text;
  Csv(StackDomain::kTime, "", &result);
  EXPECT_EQ(result.text, "no record");
  Csv(StackDomain::kTime, record.substr(1), &result);
  EXPECT_EQ(result.text, "no record");
}

}  // namespace
}  // namespace orvane::testing
