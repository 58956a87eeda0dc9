// SPDX-License-Identifier: GPL-3.0-or-later
#include "base/number_text.h"
#include "files/path_text.h"
#include "files/text_file.h"
#include "spectra/spectra_notes.h"
#include "spectra/spectra_writer.h"
#include "table/param_time.h"

namespace orvane {
namespace {

class TextWriter final : public SpectraWriter {
 public:
  Result<> Open(const std::filesystem::path& path) override { return out_.Open(path); }
  bool HasFailed() const override { return out_.HasFailed(); }
  Result<> Commit() override { return out_.Commit(); }

  void Head(const SpectraSource& source, const std::filesystem::path& input) override {
    out_.Text(" Calibrated spectra of ").Text(PathText(input)).Text("\n");
    out_.Text(" Box calibration:     ").Text(source.box_path).Text(".CLB\n");
    out_.Text(" Channels:            ").TextLeft(FormatInt(source.header.channels), 8).Text("\n");
    int number = 0;
    for (const CalibratedChannel& channel : source.channels) {
      out_.Text(" Channel ").Int(++number, 2).Text(":          ");
      out_.TextLeft(channel.definition, 8).Text(" ").TextLeft(channel.Unit(), 8);
      out_.Text(" gain x").TextLeft(FormatReal(channel.gain, 6), 6).Text(" ");  // "%g"
      out_.Text(channel.sensor_name).Text("\n");
    }
    for (const std::string& note : RecordingNotes(source)) {
      out_.Text(" Note:                ").Text(note).Text("\n");
    }
    channels_ = source.channels.size();
  }

  void Put(const SpectraRecord& record) override {
    out_.Text(" Record:              ").TextLeft(FormatInt(record.number), 8);
    out_.Text("\n Time:                ").TextLeft(FormatParamTime(record.header.time), 27);
    out_.Text("\n Base frequency (Hz): ").TextLeft(FormatFixed(record.base_frequency, 6), 16);
    out_.Text("\n Sample rate (Hz):    ").TextLeft(FormatFixed(record.sample_rate, 2), 12);
    out_.Text("\n Number of Scans:     ").TextLeft(FormatInt(record.header.scans), 8).Text("\n");
    for (const std::string& remark : record.remarks) {
      out_.Text(remark).Text("\n");
    }
    out_.Text(" Harm.  Frequency (Hz)");
    for (std::size_t c = 1; c <= channels_; ++c) {
      out_.Text("   Amplitude Ch").TextLeft(FormatInt(c), 2);
      out_.Text("    Phase Ch").TextLeft(FormatInt(c), 2);
    }
    out_.Text("\n");
    for (std::size_t k = 0; k < record.frequencies.size(); ++k) {
      out_.Int(record.numbers[k], 6).Text(" ").Fixed(record.frequencies[k], 6, 16);
      for (const SpectralLine& line : record.lines[k]) {
        out_.Text(" ").Exponent(line.amplitude, 8, 17).Text(" ").Fixed(line.phase, 4, 11);
      }
      out_.Text("\n");
    }
    out_.Text("\n");
  }

 private:
  TextFile out_;
  std::size_t channels_ = 0;
};

}  // namespace

std::shared_ptr<SpectraWriter> SpectraText() { return std::make_shared<TextWriter>(); }

}  // namespace orvane
