// SPDX-License-Identifier: GPL-3.0-or-later
#include <optional>

#include "base/latin1.h"
#include "base/status.h"
#include "bind.h"
#include "check/check.h"
#include "files/path_text.h"
#include "meaning/explain.h"
#include "meaning/meanings.h"
#include "stepping/tfs_file.h"
#include "table/clock.h"
#include "table/param_text.h"
#include "table/param_time.h"
#include "table/table_diff.h"
#include "table/tbl_file.h"
#include "table/values_text.h"

namespace orvane::python {
namespace {

const Meanings& AllMeanings() {
  static const Meanings meanings;
  return meanings;
}

const ParamEntry& EntryOf(const Table& self, const std::string& key) {
  const ParamEntry* entry = self.table.FindParam(ParamKey(key));
  if (entry == nullptr || ParamKey(key).Text() != key) {
    throw py::key_error(key);
  }
  return *entry;
}

// The key is there: who calls has looked.
void Store(Table* self, const std::string& key, const ParamValue& value) {
  if (const Status status = self->table.SetStoredValue(ParamKey(key), value); status != kOk) {
    Fail({}, StatusText(status), key);
  }
}

py::dict Load(Table* self, const std::string& name) {
  const auto path = PathOf(name);
  TblReport report;
  Status status = kOk;
  {
    const py::gil_scoped_release free;
    status = LoadParamFile(&self->table, path, &report);
  }
  if (status != kOk) {
    Fail(path, report.message);
  }
  py::dict told;
  told["version"] = report.version;
  told["records"] = report.records;
  told["held"] = report.held;
  told["missing"] = report.missing.size();
  told["cut_at"] = report.cut_at;
  return told;
}

// What is written is a copy, so that another thread may go on with the table; "TBVI" and "TBVO"
// come back.
void Save(Table* self, const std::string& name, std::uint32_t version, bool is_filtered) {
  const auto path = PathOf(name);
  ParamTable table = self->table;
  TblReport report;
  Status status = kOk;
  {
    const py::gil_scoped_release free;
    status = SaveParamFile(&table, path, {.version = version, .filtered = is_filtered}, &report);
  }
  if (status != kOk) {
    Fail(path, report.message);
  }
  for (const char* key : {"TBVI", "TBVO"}) {
    if (const ParamEntry* entry = table.FindParam(key); entry != nullptr) {
      Store(self, key, entry->value);
    }
  }
}

py::bytes Image(const Table& self) {
  const auto bytes = TblImage(self.table, {});
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// A text that begins here, whole; of a later link its own part.
py::object LongText(const Table& self, const std::string& key, const ParamEntry& entry) {
  std::array<char, kMaxLongText> text{};
  if (self.table.LongParamCapacity(ParamKey(key)) > 0 &&
      self.table.GetLongParam(ParamKey(key), text) == kOk) {
    return FromLatin1(text.data());
  }
  return FromLatin1(CharactersOf(entry.value, kValueSize));
}

py::object Get(const Table& self, const std::string& key) {
  const ParamEntry& entry = EntryOf(self, key);
  std::string text;
  switch (entry.type) {
    case IntPT:
      return py::cast(IntOf(entry.value));
    case FltPT:
      return py::cast(RealOf(entry.value));
    case AmxPT:
      return FromTime(TimeOf(entry.value));
    case RawPT:
      return py::bytes(reinterpret_cast<const char*>(entry.value.data()), 4);
    case LStPT:
      return LongText(self, key, entry);
    default:
      FormatParamValue(static_cast<ValueType>(entry.type), entry.value, &text);
      return FromLatin1(text);
  }
}

void SetInt(Table* self, const std::string& key, std::int32_t number) {
  ParamValue value = EntryOf(*self, key).value;
  PutInt(number, &value);
  Store(self, key, value);
}

void SetReal(Table* self, const std::string& key, double number) {
  ParamValue value = EntryOf(*self, key).value;
  PutReal(number, &value);
  Store(self, key, value);
}

// Texts, addresses and times as people write them; refused where they do not fit.
void SetText(Table* self, const std::string& key, const std::string& text) {
  const ParamEntry& entry = EntryOf(*self, key);
  const auto latin1 = Latin1FromUtf8(text);
  if (!latin1) {
    Fail({}, latin1.Message(), key);
  }
  if (self->table.LongParamCapacity(ParamKey(key)) > 0) {
    if (const Status status = self->table.SetLongParam(ParamKey(key), *latin1); status != kOk) {
      Fail({}, StatusText(status), key);
    }
    return;
  }
  const auto value = ParseParamValueStrictly(*latin1, static_cast<ValueType>(entry.type));
  if (!value) {
    Fail({}, value.Message(), key);
  }
  Store(self, key, *value);
}

py::list Keys(const Table& self) {
  py::list keys;
  for (const ParamKey key : AllKeys(self.table)) {
    keys.append(key.Text());
  }
  return keys;
}

py::dict Explain(const Table& self, const std::string& key) {
  const ParamEntry& entry = EntryOf(self, key);
  const KeyMeaning unknown{.name = std::string(kNotUsed)};
  const KeyMeaning* found = AllMeanings().Find(ParamKey(key));
  const KeyMeaning& meaning = found == nullptr ? unknown : *found;
  py::dict values;
  for (const CodedValue& coded : meaning.values) {
    values[py::int_(coded.stored)] = coded.text;
  }
  py::dict told;
  told["key"] = key;
  told["type"] = std::string(ValueTypeName(entry.type));
  told["name"] = meaning.name;
  told["unit"] = meaning.unit;
  told["range"] = meaning.range;
  told["values"] = values;
  told["places"] = PlacesText(meaning);
  told["meaning"] = AllMeanings().ValueText(entry);
  told["caution"] = AllMeanings().Caution(entry);
  return told;
}

py::list Differing(const Table& self, const Table& other) {
  py::list keys;
  for (const ParamKey key : DifferingKeys(self.table, other.table)) {
    keys.append(key.Text());
  }
  return keys;
}

// `paths`: of the table, the calibrations, the card and the set of start-up files; all may be
// empty.
py::list CheckTableOf(const Table& self, const std::string& now,
                      const std::array<std::string, 4>& paths) {
  ParamTime time;
  if (!ParseParamTimeStrictly(now, &time)) {
    Fail({}, "not a time: " + now);
  }
  Places places;
  places.table = PathOf(paths[0]);
  places.calibrations = PathOf(paths[1]);
  places.card = PathOf(paths[2]);
  places.set = PathOf(paths[3]);
  const ParamTable copy = self.table;
  std::vector<Finding> findings;
  {
    const py::gil_scoped_release free;
    findings = CheckAll(copy, time, places);
  }
  py::list rows;
  for (const Finding& finding : findings) {
    rows.append(FromFinding(finding));
  }
  return rows;
}

py::list ReadSchedule(const std::string& name) {
  const auto path = PathOf(name);
  ScheduleRows read;
  {
    const py::gil_scoped_release free;
    read = ReadScheduleRows(path);
  }
  orvane::python::Check(read.outcome, path);
  if (!read.refusal.empty()) {
    Fail(path, read.refusal, "row " + std::to_string(read.bad_row));
  }
  py::list rows;
  for (const ScheduleRow& row : read.rows) {
    if (row.end_time != 0) {
      rows.append(py::make_tuple(std::int32_t(row.end_time), WaveformName(row.waveform),
                                 double(row.frequency), double(row.current)));
    }
  }
  return rows;
}

using StepTuple = std::tuple<std::int32_t, std::string, double, double>;

void WriteSchedule(const std::string& name, const std::vector<StepTuple>& steps) {
  const auto path = PathOf(name);
  std::vector<ScheduleRow> rows;
  for (const auto& [end_time, waveform, frequency, current] : steps) {
    const auto* const code = std::find(kWaveforms.begin(), kWaveforms.end(), waveform);
    const std::string place = "row " + std::to_string(rows.size() + 1);
    if (code == kWaveforms.end()) {
      Fail(path, "no waveform is called " + waveform, place);
    }
    ScheduleRow row;
    row.end_time = end_time;
    row.waveform = static_cast<std::int16_t>(code - kWaveforms.begin());
    row.frequency = frequency;
    row.current = current;
    rows.push_back(row);
  }
  if (const std::string refusal = WhyUnreadable(rows); !refusal.empty()) {
    Fail(path, refusal);
  }
  Result<> written;
  {
    const py::gil_scoped_release free;
    written = WriteScheduleFile(path, rows);
  }
  orvane::python::Check(written, path);
}

}  // namespace

void BindTable(py::module_* module) {
  py::class_<Table>(*module, "Table")
      .def(py::init<>())
      .def("copy", [](const Table& self) { return Table(self); })
      .def("load", &Load)
      .def("save", &Save)
      .def("image", &Image)
      .def("keys", &Keys)
      .def("kind",
           [](const Table& self, const std::string& key) {
             return std::string(ValueTypeName(EntryOf(self, key).type));
           })
      .def("has",
           [](const Table& self, const std::string& key) {
             return ParamKey(key).Text() == key && self.table.FindParam(ParamKey(key)) != nullptr;
           })
      .def("get", &Get)
      .def("set_int", &SetInt)
      .def("set_real", &SetReal)
      .def("set_text", &SetText)
      .def("explain", &Explain)
      .def("differing", &Differing)
      .def("check", &CheckTableOf);
  module->def("is_secret", [](const std::string& key) { return IsSecretKey(ParamKey(key)); });
  module->def("is_read_only", [](const std::string& key) { return IsReadOnlyKey(ParamKey(key)); });
  module->def("read_schedule", &ReadSchedule);
  module->def("write_schedule", &WriteSchedule);
}

}  // namespace orvane::python
