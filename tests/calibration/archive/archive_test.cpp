// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/archive/archive.h"

#include <gtest/gtest.h>

#include "calibration/archive/cal_objects.h"
#include "support/archive_bytes.h"
#include "support/cal_bytes.h"

namespace orvane::calobj {
namespace {

using namespace testing;  // NOLINT: the builders

CalData Example() {
  CalData data;
  data.header_numbers = {1, 2, 3, 4, 5};
  data.header_texts = {"ZLA5", "5.\xE9"};
  data.more_numbers = {6, 7, 8, 9, 10};
  data.more_text = "T";
  data.header_values = {0.5, 0.25, -1};
  data.last_number = 11;
  data.values = {1.5};
  CalPass pass;
  pass.number = 12;
  pass.frequency = 64;
  pass.settings = {1, 2, 3, 4};
  CalFileRecord record;
  record.frequency = 0.1F;
  record.step = -3;
  record.channels[2] = {{1, 2, 3, 4}, 5, 6};
  pass.records.emplace_back(record, 3);
  data.passes.push_back(pass);
  data.functions.emplace_back();
  data.functions[0].identifier = 7;
  data.functions[0].points.emplace_back();
  data.functions[0].points[0].response = {2, -2};
  return data;
}

std::unique_ptr<Object> Read(const std::string& bytes) {
  auto object = FromBytes(QByteArray::fromStdString(bytes));
  return object ? std::move(*object) : nullptr;
}

TEST(CalArchive, EveryFieldStandsInItsPlace) {
  EXPECT_EQ(ToBytes(Example()).toStdString(), ArchiveBytes());
  const auto read = Read(ArchiveBytes());
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(ToBytes(*read).toStdString(), ArchiveBytes());
  const auto empty = Read(ToBytes(CalData()).toStdString());
  const auto* data = dynamic_cast<CalData*>(empty.get());
  ASSERT_NE(data, nullptr);
  EXPECT_TRUE(data->values.empty() && data->passes.empty() && data->functions.empty());
  for (const char* name : {"CFreqResp", "CalFunc", "CalRecord", "CalPass", "CalData"}) {
    const auto made = MakeObject(name);
    ASSERT_NE(made, nullptr) << name;
    EXPECT_EQ(made->ClassName(), name);
    EXPECT_NE(Read(ToBytes(*made).toStdString()), nullptr) << name;
  }
}

TEST(CalArchive, WhatIsNotWhollyRightIsRefused) {
  EXPECT_EQ(Read(ArchiveBytes() + "x"), nullptr);
  EXPECT_EQ(Read(ArchivedText("CalOther") + IntBytes(1)), nullptr);
  EXPECT_EQ(Read(ArchivedText("CFreqResp") + IntBytes(2) + std::string(24, '\0')), nullptr);
  for (const std::int32_t count : {-1, 3, 1 << 30}) {
    EXPECT_EQ(Read(ArchivedText("CalFunc") + IntBytes(1) + IntBytes(0) + IntBytes(count)), nullptr);
    EXPECT_EQ(Read(IntBytes(count) + "Ca"), nullptr);
  }
}

TEST(CalArchive, CopiesAreDeepAndEqualityIsAsStated) {
  CalData original = Example();
  CalData copy = original;
  copy.passes[0].records[0].step = 99;
  EXPECT_EQ(original.passes[0].records[0].step, -3);
  original = copy;
  EXPECT_EQ(original.passes[0].records[0].step, 99);

  CalData fives;
  fives.header_numbers = {0, 5, 5, 0, 0};
  CalData five_seven;
  five_seven.header_numbers = {0, 5, 7, 0, 0};
  EXPECT_TRUE(fives == five_seven);
  EXPECT_FALSE(five_seven == fives);

  CalPass a = copy.passes[0];
  CalPass b = a;
  b.records.clear();
  EXPECT_TRUE(a == b);
  b.settings[3] = 0;
  EXPECT_FALSE(a == b);
}

}  // namespace
}  // namespace orvane::calobj
