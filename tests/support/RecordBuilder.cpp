#include "support/RecordBuilder.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace mpuevent::support {

namespace {

constexpr std::size_t kMessageHeaderSize = 64;
constexpr std::size_t kSerialWidth = 64;

}  // namespace

Payload& Payload::bigEndian(std::uint64_t value, unsigned width) {
  std::string digits;
  for (unsigned shift = width * 8; shift != 0;) {
    shift -= 8;
    digits += static_cast<char>(static_cast<unsigned char>(value >> shift));
  }
  return bytes(digits);
}

Payload& Payload::text(std::string_view text) { return bytes(text).zeros(1); }

Payload& Payload::field(std::string_view text, std::size_t width) {
  const std::string_view cut = text.substr(0, width);
  return bytes(cut).zeros(width - cut.size());
}

Payload& Payload::bytes(std::string_view bytes) {
  bytes_.resize(std::max(bytes_.size(), at_ + bytes.size()));
  std::copy(bytes.begin(), bytes.end(), bytes_.begin() + static_cast<std::ptrdiff_t>(at_));
  at_ += bytes.size();
  return *this;
}

Payload& Payload::zeros(std::size_t count) { return bytes(std::string(count, '\0')); }

Payload& Payload::at(std::size_t offset) {
  at_ = offset;
  return *this;
}

Payload& Payload::padTo(std::size_t size) {
  bytes_.resize(std::max(bytes_.size(), size));
  return at(bytes_.size());
}

std::string RecordBuilder::str() const {
  return Payload()
      .field(enclosureSerial_, kSerialWidth)
      .field(controllerSerial_, kSerialWidth)
      .u32(slot_)
      .u32(logInstance_)
      .u32(sequenceId_)
      .u32(timestamp_)
      .u16(structLength_.value_or(static_cast<std::uint16_t>(payload_.size())))
      .u8(source_)
      .u8(type_)
      .u8(category_)
      .u8(idVersion_)
      .u16(id_)
      .bytes(payload_)
      .str();
}

std::string messageHeader(std::uint16_t totalLength, std::uint32_t handle) {
  constexpr std::uint8_t notification = 3;
  constexpr std::uint8_t version = 1;
  constexpr std::uint8_t protocol = 2;
  constexpr std::uint32_t eventLogged = 0x000107;
  constexpr std::uint8_t eventLogProcess = 27;
  constexpr std::uint16_t managementAgent = 0x0021;
  return Payload()
      .zeros(8)  // list head, used in memory only
      .u8(notification)
      .u8(version)
      .u16(totalLength)
      .u8(protocol)
      .u24(eventLogged)
      .u8(eventLogProcess)
      .u8(0)  // control
      .u16(managementAgent)
      .at(40)
      .u32(handle)
      .padTo(kMessageHeaderSize)
      .str();
}

std::string message(std::string_view record, std::uint32_t handle) {
  const std::size_t totalLength = kMessageHeaderSize + record.size();
  if (totalLength > std::numeric_limits<std::uint16_t>::max()) {
    throw std::length_error("record too long for one message");
  }
  return messageHeader(static_cast<std::uint16_t>(totalLength), handle).append(record);
}

}  // namespace mpuevent::support
