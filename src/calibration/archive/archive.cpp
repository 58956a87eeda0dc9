// SPDX-License-Identifier: GPL-3.0-or-later
#include "calibration/archive/archive.h"

#include <QIODevice>
#include <map>

#include "base/number_text.h"
#include "calibration/archive/cal_objects.h"

namespace orvane::calobj {
namespace {

// Later versions of the stream write some types otherwise.
constexpr int kStreamVersion = QDataStream::Qt_6_0;

template <typename Class>
std::unique_ptr<Object> Make() {
  return std::make_unique<Class>();
}

std::map<std::string, Maker, std::less<>>& Makers() {
  static std::map<std::string, Maker, std::less<>> makers = {{"CFreqResp", Make<CFreqResp>},
                                                             {"CalFunc", Make<CalFunc>},
                                                             {"CalRecord", Make<CalRecord>},
                                                             {"CalPass", Make<CalPass>},
                                                             {"CalData", Make<CalData>}};
  return makers;
}

void SetUp(QDataStream* stream) {
  stream->setVersion(kStreamVersion);
  stream->setByteOrder(QDataStream::LittleEndian);
  stream->setFloatingPointPrecision(QDataStream::DoublePrecision);
}

}  // namespace

Archive Archive::Storing(QByteArray* bytes) {
  Archive archive(true);
  archive.stream_ = std::make_unique<QDataStream>(bytes, QIODevice::WriteOnly);
  SetUp(archive.stream_.get());
  return archive;
}

Archive Archive::Loading(const QByteArray& bytes) {
  Archive archive(false);
  archive.stream_ = std::make_unique<QDataStream>(bytes);
  SetUp(archive.stream_.get());
  return archive;
}

std::int64_t Archive::Left() const { return stream_->device()->bytesAvailable(); }

void Archive::Refuse(std::string_view reason) {
  if (outcome_) {
    outcome_ =
        Failure("at offset " + FormatInt(stream_->device()->pos()) + ": " + std::string(reason));
  }
}

bool Archive::IsPossible(std::int32_t count, std::int64_t least_bytes) {
  if (outcome_ && (count < 0 || count > Left() / least_bytes)) {
    Refuse("a count of " + FormatInt(count) + " with " + FormatInt(Left()) + " bytes left");
  }
  return static_cast<bool>(outcome_);
}

template <typename Value>
Archive& Archive::Number(Value& value) {
  if (is_storing_) {
    *stream_ << value;
  } else if (outcome_) {
    Value read{};
    *stream_ >> read;
    if (stream_->status() == QDataStream::Ok) {
      value = read;
    } else {
      Refuse("the bytes end within a value");
    }
  }
  return *this;
}

Archive& Archive::operator&(std::int32_t& value) { return Number(value); }
Archive& Archive::operator&(double& value) { return Number(value); }

Archive& Archive::operator&(std::complex<double>& value) {
  double real = value.real();
  double imaginary = value.imag();
  *this& real& imaginary;
  if (outcome_) {
    value = {real, imaginary};
  }
  return *this;
}

Archive& Archive::operator&(std::string& text) {
  auto count = static_cast<std::int32_t>(text.size());
  *this& count;
  if (is_storing_) {
    stream_->writeRawData(text.data(), count);
  } else if (IsPossible(count, 1)) {
    std::string read(static_cast<std::size_t>(count), '\0');
    stream_->readRawData(read.data(), count);
    text = std::move(read);
  }
  return *this;
}

void RegisterClass(std::string_view name, Maker maker) {
  Makers().insert_or_assign(std::string(name), maker);
}

std::unique_ptr<Object> MakeObject(std::string_view name) {
  const auto found = Makers().find(name);
  return found == Makers().end() ? nullptr : found->second();
}

QByteArray ToBytes(const Object& object) {
  QByteArray bytes;
  Archive archive = Archive::Storing(&bytes);
  std::string name(object.ClassName());
  std::int32_t schema = kSchema;
  archive& name& schema;
  const_cast<Object&>(object).Serialize(archive);  // storing changes nothing
  return bytes;
}

Result<std::unique_ptr<Object>> FromBytes(const QByteArray& bytes) {
  Archive archive = Archive::Loading(bytes);
  std::string name;
  std::int32_t schema = 0;
  archive& name& schema;
  auto object = MakeObject(name);
  if (archive.Outcome() && object == nullptr) {
    archive.Refuse("the class named at the start is not known");
  } else if (archive.Outcome() && schema != kSchema) {
    archive.Refuse("schema " + FormatInt(schema) + ", not 1");
  }
  if (archive.Outcome()) {
    object->Serialize(archive);
  }
  if (archive.Outcome() && archive.Left() > 0) {
    archive.Refuse("there are bytes after the object");
  }
  if (!archive.Outcome()) {
    return Failure(archive.Outcome().Message());
  }
  return object;
}

}  // namespace orvane::calobj
