#ifndef EVENT_RECORDVIEW_H
#define EVENT_RECORDVIEW_H

#include <MPUEvent/EmpEvLogMsg.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace mpuevent {

/// Bytes of a record and how many of them are held: the only code that reads them.
///
/// Every read is checked against the bytes held, in a form that cannot wrap. A number that they
/// do not hold whole reads as 0, a text or run of bytes ends where they end.
///
/// How many they are is not known of an unbounded view: there all that is asked for is held, and
/// a text ends at its NUL alone.
class RecordView {
 public:
  static constexpr std::size_t toEnd = static_cast<std::size_t>(-1);

  constexpr RecordView() = default;
  RecordView(const void* bytes, std::size_t size)
      : bytes_(static_cast<const unsigned char*>(bytes)), size_(bytes == nullptr ? 0 : size) {}

  /// For bytes of which the caller of the library knows that whatever is read of them is there. A
  /// null pointer holds none.
  static RecordView unbounded(const void* bytes) { return {bytes, toEnd}; }

  /// `toEnd` if the view is unbounded.
  std::size_t size() const { return size_; }
  const unsigned char* data() const { return bytes_; }

  bool holds(std::size_t at, std::size_t width) const { return at <= size_ && width <= size_ - at; }

  std::uint8_t u8(std::size_t at) const { return holds(at, 1) ? bytes_[at] : std::uint8_t{0}; }
  std::uint16_t u16(std::size_t at) const {
    return static_cast<std::uint16_t>(holds(at, 2) ? bigEndian<2>(at) : 0);
  }
  /// The low 24 bits of the word at `at`.
  std::uint32_t u24(std::size_t at) const { return u32(at) & 0x00FFFFFF; }
  std::uint32_t u32(std::size_t at) const {
    return static_cast<std::uint32_t>(holds(at, 4) ? bigEndian<4>(at) : 0);
  }
  std::int32_t s32(std::size_t at) const { return static_cast<std::int32_t>(u32(at)); }
  std::uint64_t u48(std::size_t at) const { return holds(at, 6) ? bigEndian<6>(at) : 0; }
  std::uint64_t u64(std::size_t at) const { return holds(at, 8) ? bigEndian<8>(at) : 0; }

  /// The word before `end`, which is held.
  std::uint32_t u32Before(std::size_t end) const {
    return static_cast<std::uint32_t>(bigEndian<4>(end - 4));
  }
  /// The number of `width` bytes, 1 to 8, before `end`, that are all held.
  std::uint64_t numberBefore(std::size_t end, std::size_t width) const {
    if (size_ >= 8 && size_ != toEnd) {
      // One load does, which begins before the number, or ends behind it where there is too little
      // before it: the other bytes are shifted out.
      const std::size_t start = std::max<std::size_t>(end, 8) - 8;
      const std::size_t unused = 64 - 8 * width;
      return bigEndian<8>(start) >> 8 * (start + 8 - end) << unused >> unused;
    }
    std::uint64_t value = 0;
    for (std::size_t at = end - width; at < end; ++at) value = value << 8 | bytes_[at];
    return value;
  }

  /// The text from `at` up to its NUL, at most `limit` bytes.
  std::string_view text(std::size_t at, std::size_t limit = toEnd) const {
    const RecordView field = from(at, limit);
    if (field.size_ == 0) return {};
    const char* start = reinterpret_cast<const char*>(field.bytes_);
    return {start, field.size_ == toEnd ? std::strlen(start) : strnlen(start, field.size_)};
  }

  /// The bytes from `at`, as many of `count` as are held. Of an unbounded view only a count can be
  /// had.
  std::string_view bytes(std::size_t at, std::size_t count = toEnd) const {
    const RecordView part = from(at, count);
    return {reinterpret_cast<const char*>(part.bytes_), part.size_};
  }

  /// A view on the bytes from `at`, as many of `count` as are held.
  RecordView from(std::size_t at, std::size_t count = toEnd) const {
    if (at >= size_) return {};
    return {bytes_ + at, size_ == toEnd ? count : std::min(count, size_ - at)};
  }

 private:
  template <std::size_t width>
  std::uint64_t bigEndian(std::size_t at) const {
    // One load, where the loop would cost as many as there are bytes.
    if constexpr (width == 4) {
      const auto word = loaded<std::uint32_t>(at);
      return std::endian::native == std::endian::big ? word : __builtin_bswap32(word);
    }
    if constexpr (width == 8) {
      const auto word = loaded<std::uint64_t>(at);
      return std::endian::native == std::endian::big ? word : __builtin_bswap64(word);
    }
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < width; ++i) value = value << 8 | bytes_[at + i];
    return value;
  }

  template <class Word>
  Word loaded(std::size_t at) const {
    Word word = 0;
    std::memcpy(&word, bytes_ + at, sizeof word);
    return word;
  }

  const unsigned char* bytes_ = nullptr;
  std::size_t size_ = 0;
};

/// A record: its header fields, and its payload.
class Record : public RecordView {
 public:
  static constexpr std::size_t serialSize = 64;  ///< of each of the two serial number fields
  static constexpr std::size_t headerSize = 152;

  /// Where each field of the header stands.
  enum Offset : std::size_t {
    enclosureSerialNumberAt = 0,
    controllerSerialNumberAt = 64,
    controllerSlotAt = 128,
    logInstanceAt = 132,
    sequenceIdAt = 136,
    timestampAt = 140,
    structLengthAt = 144,
    sourceAt = 146,
    typeAt = 147,
    categoryAt = 148,
    idVersionAt = 149,
    idAt = 150,
  };

  /// The header of a record that is not null is there whole: `length` only tells how much of the
  /// payload is held behind it, below 152 nothing.
  Record(const Pegasus::EmpEvLogMsg_s* record, int length)
      : RecordView(record, length < 0 ? headerSize
                                      : std::max(static_cast<std::size_t>(length), headerSize)) {}

  /// A record whose holder does not say how long it is: its own `evStructLength` is trusted.
  static Record trusting(const Pegasus::EmpEvLogMsg_s* record) {
    return {record, static_cast<int>(headerSize + Record(record, 0).structLength())};
  }

  std::string_view enclosureSerialNumber() const {
    return text(enclosureSerialNumberAt, serialSize);
  }
  std::string_view controllerSerialNumber() const {
    return text(controllerSerialNumberAt, serialSize);
  }
  std::uint32_t controllerSlot() const { return u32(controllerSlotAt); }
  std::uint32_t logInstance() const { return u32(logInstanceAt); }
  std::uint32_t sequenceId() const { return u32(sequenceIdAt); }
  std::uint32_t timestamp() const { return u32(timestampAt); }
  std::uint16_t structLength() const { return u16(structLengthAt); }
  std::uint8_t source() const { return u8(sourceAt); }
  std::uint8_t type() const { return u8(typeAt); }
  std::uint8_t category() const { return u8(categoryAt); }
  std::uint8_t idVersion() const { return u8(idVersionAt); }
  std::uint16_t id() const { return u16(idAt); }

  /// All that is held behind the header, whatever `evStructLength` says.
  RecordView payload() const { return from(headerSize); }
};

}  // namespace mpuevent

#endif
