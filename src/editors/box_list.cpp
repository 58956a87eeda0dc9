// SPDX-License-Identifier: GPL-3.0-or-later
#include "editors/box_list.h"

#include "table/box_keys.h"
#include "table/tech.h"

namespace orvane {
namespace {

// 0 where the key is missing or of another type.
std::uint32_t Read(const ParamTable& table, ParamKey key) {
  return static_cast<std::uint32_t>(IntParam(table, key));
}

}  // namespace

int LoadBoxList(const ParamTable& table, BoxRows* rows) {
  *rows = {};
  int count = 0;
  const auto add = [rows, &count](BoxKind kind, std::uint32_t serial, std::uint32_t channels,
                                  std::uint32_t control) {
    (*rows)[static_cast<std::size_t>(count++)] = {kind, serial, channels, {}, control};
  };
  add(kTransmitterBox, Read(table, "SNTX"), 1, Read(table, "TXCTL"));
  add(kLocalBox, Read(table, "SNUM"), static_cast<std::uint32_t>(MainBoxChannels(table)), 0);
  for (const AuxiliaryKeys& keys : kAuxiliaryKeys) {
    std::uint32_t serial = 0;
    if (table.GetParam(keys.serial, IntPT, &serial) != kOk) {
      break;
    }
    if (serial != 0) {
      add(kAuxiliaryBox, serial, Read(table, keys.channels), Read(table, keys.control));
    }
  }
  const std::uint32_t reference = Read(table, "SNNR");
  if (reference != 0 && HasReferenceBox(TechOf(table))) {
    add(kReferenceBox, reference, 2, Read(table, "REFCTL"));
  }
  return count;
}

Status SaveBoxList(std::span<const BoxRow> rows, ParamTable* table) {
  Status status = kOk;
  const auto write = [table, &status](ParamKey key, std::uint32_t number) {
    status = table->SetParam(key, IntPT, &number);
  };
  const bool has_reference = HasReferenceBox(TechOf(*table));
  bool wrote_reference = false;
  std::size_t auxiliary = 0;
  for (const BoxRow& row : rows) {
    switch (row.kind) {
      case kAuxiliaryBox:
        if (auxiliary < kAuxiliaryKeys.size()) {
          write(kAuxiliaryKeys[auxiliary].serial, row.serial);
          write(kAuxiliaryKeys[auxiliary].channels, row.channels);
          write(kAuxiliaryKeys[auxiliary].control, row.control);
          ++auxiliary;
        }
        break;
      case kReferenceBox:
        if (has_reference) {
          write("SNNR", row.serial);
          write("REFCTL", row.control);
          wrote_reference = true;
        }
        break;
      case kLocalBox:
        write("SNUM", row.serial);
        write(kSetChannels, row.channels);
        break;
      case kTransmitterBox:
        write("SNTX", row.serial);
        write("TXCTL", row.control);
        break;
      default:
        break;
    }
  }
  for (; auxiliary < kAuxiliaryKeys.size(); ++auxiliary) {
    write(kAuxiliaryKeys[auxiliary].serial, 0);
  }
  if (has_reference && !wrote_reference) {
    write("SNNR", 0);
  }
  return status;
}

}  // namespace orvane
