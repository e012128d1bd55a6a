#include "DamagedLog.h"

#include <algorithm>

#include "support/RecordBuilder.h"

namespace mpuevent::support {

DamagedLog::DamagedLog(std::uint32_t seed, log::LogForm form, std::size_t units)
    : random_(seed), form_(form) {
  const auto first = static_cast<std::uint32_t>(random(1, 100000));
  for (std::size_t index = 0; index < units; ++index) {
    const std::uint32_t sequenceId = first + static_cast<std::uint32_t>(index);
    const std::string record = makeRecord(sequenceId);
    const std::string unit = form == log::LogForm::messages ? message(record) : record;
    if (record.size() < 3000) records_.push_back(record);
    units_.push_back({bytes_.size(), unit.size(), sequenceId});
    bytes_ += unit;
  }
}

std::string DamagedLog::noise(std::size_t size) {
  std::string bytes(size, '\0');
  for (char& byte : bytes) byte = static_cast<char>(random(0, 255));
  return bytes;
}

std::string DamagedLog::payload() {
  switch (random(0, 9)) {
    case 0:
      return std::string(random(0, 600), '\0');
    case 1:
      return std::string(random(0, 600), 'x');
    case 2:
      return noise(random(0, 1) * 40) + copy() + noise(random(0, 1) * 40);
    case 4:
      return random(0, 9) == 0 ? noise(random(2000, 20000)) : noise(4);
    default:
      return noise(random(0, 700));
  }
}

// A message of an earlier record or the record itself, as it was or with another sequence id.
std::string DamagedLog::copy() {
  if (records_.empty()) return {};
  std::string copied = records_[random(0, records_.size() - 1)];
  if (random(0, 1) == 0) copied.replace(136, 4, noise(4));
  return random(0, 1) == 0 ? copied : message(copied);
}

std::string DamagedLog::makeRecord(std::uint32_t sequenceId) {
  const auto byte = [this](std::size_t least, std::size_t most) {
    return static_cast<std::uint8_t>(random(least, most));
  };
  return RecordBuilder()
      .controllerSerial(random(0, 1) == 0 ? "CTL-0426-1189" : "CTL-0426-1190")
      .sequenceId(sequenceId)
      .timestamp(86400 + sequenceId * 3)
      .source(byte(0, 33))
      .type(byte(1, 3))
      .category(byte(1, 13))
      .id(static_cast<std::uint16_t>(random(0, 999)))
      .payload(payload())
      .str();
}

void DamagedLog::touch(std::size_t begin, std::size_t end) {
  for (Unit& unit : units_) {
    if (unit.at < end && begin < unit.at + unit.size) unit.touched = true;
  }
}

void DamagedLog::overwrite(int fill) {
  const std::size_t size = random(1, 4096);
  const std::size_t at = random(0, bytes_.size() - size);
  touch(at, at + size);
  bytes_.replace(at, size, fill < 0 ? noise(size) : std::string(size, static_cast<char>(fill)));
}

void DamagedLog::erase(std::size_t begin, std::size_t end) {
  touch(begin, end);
  bytes_.erase(begin, end - begin);
  for (Unit& unit : units_) {
    unit.headTouched = unit.headTouched || (begin <= unit.at && unit.at < end);
    if (unit.at >= end) unit.at -= end - begin;
  }
}

void DamagedLog::cut() {
  const std::size_t size = random(1, 4096);
  const std::size_t at = random(0, bytes_.size() - size);
  erase(at, at + size);
}

void DamagedLog::beginInsideARecord() {
  const Unit& unit = units_[random(0, 20)];
  erase(0, unit.at + random(1, unit.size - 1));
}

void DamagedLog::insert() {
  const std::size_t size = random(1, 4096);
  const std::size_t at = random(1, bytes_.size() - 1);
  for (Unit& unit : units_) {
    if (unit.at < at && at < unit.at + unit.size) unit.touched = true;
    if (unit.at >= at) unit.at += size;
  }
  bytes_.insert(at, noise(size));
}

void DamagedLog::changeALength() {
  Unit& unit = units_[random(0, units_.size() - 1)];
  if (unit.headTouched) return;
  unit.touched = true;
  const bool messages = form_ == log::LogForm::messages;
  const std::size_t at = unit.at + (messages && random(0, 1) == 0 ? 10 : messages ? 208 : 144);
  const std::size_t length = random(0, 1) == 0 ? random(0, 0xFFFF) : random(0, 1500);
  bytes_.replace(at, 2, Payload().u16(static_cast<std::uint16_t>(length)).str());
}

}  // namespace mpuevent::support
