// SPDX-License-Identifier: GPL-3.0-or-later
#include "meaning/other_keys.h"

#include <array>

#include "base/number_text.h"
#include "editors/table_summary.h"
#include "table/box_keys.h"

namespace orvane {
namespace {

struct OtherKey {
  std::string_view key;
  std::string_view name;
  std::string_view unit = {};
};
constexpr auto kOthers = std::to_array<OtherKey>({
    {"TBVO", "Version of table files to write"},
    {"TBVI", "Version of the table file last read"},
    {"MODE", "Operating mode"},
    {"VER", "Version of the box"},
    {"HW", "Hardware of the box"},
    {"DPTH", "Folder of the box with its start-up table"},
    {"LPFR", "Low-pass filter and VLF trap"},
    {"Q2SR", "Converter's rate of older boxes; not above 0: 24000", "Hz"},
    {"TALS", "Stages of moving averages, 1 to 8"},
    {"TCMB", "Sharpness of the comb filter, 1 to 15"},
    {"FSCV", "Full scale of the converter", "V"},
    {"HATT", "Calibration value of a sensor"},
    {"CHEX", "Channel of Ex"},
    {"CHEY", "Channel of Ey"},
    {"CHEZ", "Channel of Ez"},
    {"CHHX", "Channel of Hx"},
    {"CHHY", "Channel of Hy"},
    {"CHHZ", "Channel of Hz"},
    {"EZR", "Ez contact resistivity", "ohm"},
    {"TXCTL", "Mode control word of the transmitter box"},
    {"REFCTL", "Mode control word of the reference box"},
    {kCountedChannels, "Channels of the main box, as it counted them"},
    {kSetChannels, "Channels of the main box, as set"},
    {"SRVY", "Project, for boxes that read version 1"},
    {"CMPY", "Company, for boxes that read version 1"},
    {"PMIT", "Client, for boxes that read version 1"},
    {"LOUT", "Operator, for boxes that read version 1"},
    {"LIFESTK", "Set to 0 after the transmitter's start-up file"},
    {"LIFESTN", "Set to 0 after the transmitter's start-up file"},
});

constexpr int kLastStoredRate = 15;  // of the bands that a table has a key for

void AddFilters(MeaningList* list) {
  constexpr int kStrengths = 5;
  list->AddValue("LPFR", 0, FilterName(0));
  for (const int weakest : {16, 80, 160}) {
    for (int code = weakest; code < weakest + kStrengths; ++code) {
      list->AddValue("LPFR", code, FilterName(code));
    }
  }
}

void AddBoxes(MeaningList* list) {
  int number = 0;
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    const std::string box = "auxiliary box " + FormatInt(++number);
    list->Name(keys.channels, "Channels of " + box);
    list->Name(keys.control, "Mode control word of " + box);
  }
}

}  // namespace

void AddOtherKeys(MeaningList* list) {
  for (const OtherKey& other : kOthers) {
    list->Name(other.key, other.name);
    list->AddUnit(other.key, other.unit);
  }
  AddFilters(list);
  AddBoxes(list);
  list->AddValue("MODE", 1, "Setup");
  for (const int version : {1, 2}) {
    list->AddValue("TBVO", version, "version " + FormatInt(version));
    list->AddValue("TBVI", version, "version " + FormatInt(version));
  }
  for (int band = 1; band <= kLastStoredRate; ++band) {
    const ParamKey key = "SRL" + FormatInt(band);
    list->Name(key, "Sample rate of band " + FormatInt(band));
    list->AddUnit(key, "Hz");
  }
}

}  // namespace orvane
