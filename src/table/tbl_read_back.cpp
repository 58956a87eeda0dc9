// SPDX-License-Identifier: GPL-3.0-or-later
#include "table/tbl_read_back.h"

#include <algorithm>

#include "base/number_text.h"
#include "files/file_io.h"
#include "table/table_diff.h"

namespace orvane {
namespace {

std::string DifferingNames(const ParamTable& meant, const std::filesystem::path& path) {
  constexpr std::size_t kMostNamed = 5;
  ParamTable held = meant;
  if (LoadParamFile(&held, path) != kOk) {
    return ", it is no readable table";
  }
  const std::vector<ParamKey> keys = DifferingKeys(meant, held);
  std::string names;
  for (std::size_t i = 0; i < std::min(keys.size(), kMostNamed); ++i) {
    names += (i == 0 ? ": " : ", ") + keys[i].Text();
  }
  return names + (keys.size() > kMostNamed ? " and more" : "");
}

}  // namespace

TblReadBack ReadBack(const std::filesystem::path& path, const ParamTable& meant,
                     const TblSaveOptions& options) {
  const std::vector<std::byte> image = TblImage(meant, options);
  TblReadBack result;
  result.size = image.size();
  result.is_from_disk = ReaderCalls().forget(path);
  InFile file;
  if (const Result<> opened = file.Open(path); !opened) {
    result.fault = "cannot be read back: " + opened.Message();
    return result;
  }
  std::vector<std::byte> held(image.size() + 1);
  held.resize(file.Read(held));
  if (!file.Outcome()) {
    result.fault = "cannot be read back: " + file.Outcome().Message();
  } else if (held != image) {
    const auto place =
        std::mismatch(held.begin(), held.end(), image.begin(), image.end()).first - held.begin();
    result.fault = "holds other bytes than were written, from byte " + FormatInt(place) + " on" +
                   DifferingNames(meant, path);
  }
  return result;
}

}  // namespace orvane
