#include "event/BodyWriter.h"

#include <algorithm>
#include <bit>
#include <charconv>

#include "event/Text.h"

namespace mpuevent {

namespace {

constexpr char lowerDigits[] = "0123456789abcdef";
constexpr char upperDigits[] = "0123456789ABCDEF";
constexpr std::size_t longestDecimal = 20;

template <class Number>
void writeDecimal(BodyWriter& writer, Number value) {
  const std::size_t before = writer.size();
  char* place = writer.claim(longestDecimal);
  const char* end = std::to_chars(place, place + longestDecimal, value).ptr;
  writer.cut(before + static_cast<std::size_t>(end - place));
}

template <std::size_t width>
void copyEnds(char* place, const char* from, std::size_t size) {
  std::memcpy(place, from, width);
  std::memcpy(place + size - width, from + size - width, width);
}

/// Copies a text and returns where it ends. Keys and words are short: moves of a fixed width cost
/// less than a call of memcpy.
char* put(char* place, std::string_view text) {
  const char* from = text.data();
  const std::size_t size = text.size();
  if (size > 32) {
    std::memcpy(place, from, size);
  } else if (size >= 16) {
    copyEnds<16>(place, from, size);
  } else if (size >= 8) {
    copyEnds<8>(place, from, size);
  } else if (size >= 4) {
    copyEnds<4>(place, from, size);
  } else {
    for (std::size_t i = 0; i < size; ++i) place[i] = from[i];
  }
  return place + size;
}

char* putOpening(char* place, std::string_view key) {
  *place = '<';
  place = put(place + 1, key);
  *place = '>';
  return place + 1;
}

void putClosing(char* place, std::string_view key, Separator behind) {
  place[0] = '<';
  place[1] = '/';
  place = put(place + 2, key);
  *place = '>';
  if (behind == Separator::blank) place[1] = ' ';
}

constexpr std::size_t sizeOf(Separator separator) { return separator == Separator::blank ? 1 : 0; }

unsigned hexLength(std::uint64_t value) {
  return std::max(1U, (static_cast<unsigned>(std::bit_width(value)) + 3) / 4);
}

}  // namespace

std::size_t writeHex(char* place, std::string_view bytes) {
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    *place++ = upperDigits[value >> 4];
    *place++ = upperDigits[value & 0xF];
  }
  return 2 * bytes.size();
}

BodyWriter::BodyWriter(Separator separator, std::size_t expectedSize)
    : buffer_(std::make_unique_for_overwrite<char[]>(expectedSize)),
      capacity_(expectedSize),
      separator_(separator) {}

void BodyWriter::grow(std::size_t count) {
  const std::size_t capacity = std::max(2 * capacity_, size_ + count);
  auto buffer = std::make_unique_for_overwrite<char[]>(capacity);
  std::memcpy(buffer.get(), buffer_.get(), size_);
  buffer_ = std::move(buffer);
  capacity_ = capacity;
}

Pegasus::String BodyWriter::string() const { return toString(view()); }

void BodyWriter::decimal(std::int32_t value) { writeDecimal(*this, value); }
void BodyWriter::decimal(std::uint32_t value) { writeDecimal(*this, value); }
void BodyWriter::decimal(std::uint64_t value) { writeDecimal(*this, value); }

void BodyWriter::hexDigits(std::uint64_t value, unsigned digits, bool upperCase) {
  const char* digitTexts = upperCase ? upperDigits : lowerDigits;
  const unsigned length = std::max(digits, hexLength(value));
  char* place = claim(length) + length;
  for (unsigned i = 0; i < length; ++i, value >>= 4) *--place = digitTexts[value & 0xF];
}

void BodyWriter::number(Format format, std::uint64_t value) {
  switch (format) {
    case Format::dec:
      return decimal(static_cast<std::int32_t>(value));
    case Format::udec:
      return decimal(value);
    case Format::hex:
      text("0x");
      return hexDigits(value, 1, false);
    case Format::hex8:
      text("0x");
      return hexDigits(value, 8, true);
    case Format::hex8Lower:
      text("0x");
      return hexDigits(value, 8, false);
    case Format::hex2:
      text("0x");
      return hexDigits(value, 2, true);
    case Format::hex6Lower:
      text("0x");
      return hexDigits(value, 6, false);
    case Format::hex4Lower:
      text("0x");
      return hexDigits(value, 4, false);
    case Format::hex2Lower:
      text("0x");
      return hexDigits(value, 2, false);
    case Format::bareHex:
      return hexDigits(value, 1, false);
    case Format::bareHex8:
      return hexDigits(value, 8, true);
    case Format::bareHex2:
      return hexDigits(value, 2, true);
    case Format::trueFalse:
      return text(value != 0 ? "TRUE" : "FALSE");
    case Format::pointer:
      return value == 0 ? text("(nil)") : number(Format::hex, value);
    case Format::pointer0x:
      text("0x");
      return number(Format::pointer, value);
    case Format::seconds:
      number(Format::dec, value);
      return text(" seconds");
  }
}

void BodyWriter::element(std::string_view key, std::string_view value) {
  char* place = claim(2 * key.size() + value.size() + 5 + sizeOf(separator_));
  putClosing(put(putOpening(place, key), value), key, separator_);
}

void BodyWriter::element(std::string_view key, Format format, std::uint64_t value) {
  openElement(key);
  number(format, value);
  closeElement(key);
}

void BodyWriter::openTag(std::string_view key) { putOpening(claim(key.size() + 2), key); }

void BodyWriter::closeTag(std::string_view key, Separator behind) {
  putClosing(claim(key.size() + 3 + sizeOf(behind)), key, behind);
}

}  // namespace mpuevent
