#ifndef MPUEVENT_SUPPORT_RECORDBUILDER_H
#define MPUEVENT_SUPPORT_RECORDBUILDER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mpuevent::support {

/// Bytes written one value after another, numbers big-endian.
class Payload {
 public:
  Payload& u8(std::uint8_t value) { return bigEndian(value, 1); }
  Payload& u16(std::uint16_t value) { return bigEndian(value, 2); }
  /// The low 24 bits of `value`.
  Payload& u24(std::uint32_t value) { return bigEndian(value, 3); }
  Payload& u32(std::uint32_t value) { return bigEndian(value, 4); }
  Payload& u64(std::uint64_t value) { return bigEndian(value, 8); }
  /// The text and its NUL.
  Payload& text(std::string_view text);
  /// The text cut or filled up with NULs to `width` bytes; a text of full width has no NUL.
  Payload& field(std::string_view text, std::size_t width);
  Payload& bytes(std::string_view bytes);
  Payload& zeros(std::size_t count);
  /// Goes on at `offset`, over what stands there; a gap behind the bytes written is zeros.
  Payload& at(std::size_t offset);
  /// Goes on at the end, with zeros up to `size` bytes if there are fewer.
  Payload& padTo(std::size_t size);

  const std::string& str() const { return bytes_; }

 private:
  Payload& bigEndian(std::uint64_t value, unsigned width);

  std::string bytes_;
  std::size_t at_ = 0;
};

/// A raw event-log record: 152 bytes of header and the payload. Fields not set have the values
/// that stand here, all distinct; `structLength` is the size of the payload unless set.
class RecordBuilder {
 public:
  RecordBuilder& enclosureSerial(std::string_view serial) { return set(enclosureSerial_, serial); }
  RecordBuilder& controllerSerial(std::string_view serial) {
    return set(controllerSerial_, serial);
  }
  RecordBuilder& slot(std::uint32_t value) { return set(slot_, value); }
  RecordBuilder& logInstance(std::uint32_t value) { return set(logInstance_, value); }
  RecordBuilder& sequenceId(std::uint32_t value) { return set(sequenceId_, value); }
  RecordBuilder& timestamp(std::uint32_t value) { return set(timestamp_, value); }
  RecordBuilder& structLength(std::uint16_t value) { return set(structLength_, value); }
  RecordBuilder& source(std::uint8_t value) { return set(source_, value); }
  RecordBuilder& type(std::uint8_t value) { return set(type_, value); }
  RecordBuilder& category(std::uint8_t value) { return set(category_, value); }
  RecordBuilder& idVersion(std::uint8_t value) { return set(idVersion_, value); }
  RecordBuilder& id(std::uint16_t value) { return set(id_, value); }
  RecordBuilder& payload(const Payload& payload) { return set(payload_, payload.str()); }
  RecordBuilder& payload(const std::string& bytes) { return set(payload_, bytes); }

  std::string str() const;

 private:
  template <class Field, class Value>
  RecordBuilder& set(Field& field, const Value& value) {
    field = value;
    return *this;
  }

  std::string enclosureSerial_ = "ENC-0815-3307";
  std::string controllerSerial_ = "CTL-0426-1189";
  std::uint32_t slot_ = 1;
  std::uint32_t logInstance_ = 3;
  std::uint32_t sequenceId_ = 1042;
  std::uint32_t timestamp_ = 86407;
  std::optional<std::uint16_t> structLength_;
  std::uint8_t source_ = 11;
  std::uint8_t type_ = 1;
  std::uint8_t category_ = 2;
  std::uint8_t idVersion_ = 5;
  std::uint16_t id_ = 258;
  std::string payload_;
};

/// The 64 bytes of a CMAP message header, total length as given.
std::string messageHeader(std::uint16_t totalLength, std::uint32_t handle = 0x00010203);

/// The record with its message header before it. Throws `std::length_error` for a record longer
/// than a message can carry, 65,471 bytes.
std::string message(std::string_view record, std::uint32_t handle = 0x00010203);

}  // namespace mpuevent::support

#endif
