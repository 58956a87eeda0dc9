// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/archive/cal_objects.h"

namespace orvane::calobj {

void CFreqResp::Serialize(Archive& archive) { archive& frequency& response; }

void CalFunc::Serialize(Archive& archive) { archive& identifier& points; }

CalRecord::CalRecord(const CalFileRecord& record, int channel)
    : step(record.step), frequency(record.frequency) {
  const CalBlock& block = record.channels.at(static_cast<std::size_t>(channel - 1));
  value3 = block.values[2];
  value4 = block.values[3];
  input = {block.values[0], block.values[1]};
  response = {block.real, block.imaginary};
}

void CalRecord::Serialize(Archive& archive) {
  archive& step& frequency& value3& value4& input& response;
}

void CalPass::Serialize(Archive& archive) {
  archive& number& frequency;
  for (std::int32_t& setting : settings) {
    archive& setting;
  }
  archive& records;
}

void CalData::Serialize(Archive& archive) {
  for (std::int32_t& number : header_numbers) {
    archive& number;
  }
  archive& header_texts[0] & header_texts[1];
  for (std::int32_t& number : more_numbers) {
    archive& number;
  }
  archive& more_text;
  for (double& value : header_values) {
    archive& value;
  }
  archive& last_number& values& passes& functions;
}

}  // namespace orvane::calobj
