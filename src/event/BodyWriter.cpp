#include "event/BodyWriter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <utility>
#include <vector>

#include "event/HexDigits.h"
#include "event/Text.h"

namespace mpuevent {

namespace {

constexpr std::size_t longestNumber = 26;
constexpr std::size_t longestWord = 12;  // with what stands before it

template <std::size_t width>
void copyEnds(char* place, const char* from, std::size_t size) {
  std::memcpy(place, from, width);
  std::memcpy(place + size - width, from + size - width, width);
}

/// Copies a text and returns where it ends. Keys and words are short: moves of a fixed width cost
/// less than a call of memcpy.
[[gnu::always_inline]] inline char* put(char* place, std::string_view text) {
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

/// The same for a text whose length the compiler knows.
template <std::size_t size>
char* putLiteral(char* place, const char (&text)[size]) {
  std::memcpy(place, text, size - 1);
  return place + size - 1;
}

[[gnu::always_inline]] inline char* putOpening(char* place, std::string_view key) {
  *place = '<';
  place = put(place + 1, key);
  *place = '>';
  return place + 1;
}

[[gnu::always_inline]] inline char* putClosing(char* place, std::string_view key,
                                               Separator behind) {
  place[0] = '<';
  place[1] = '/';
  place = put(place + 2, key);
  *place++ = '>';
  if (behind == Separator::blank) *place++ = ' ';
  return place;
}

/// The most that the two tags of an element take up.
constexpr std::size_t tagSize(std::string_view key) { return 2 * key.size() + 6; }

unsigned hexLength(std::uint64_t value) {
  return std::max(1U, (static_cast<unsigned>(std::bit_width(value)) + 3) / 4);
}

/// Two digits for each byte of the value, from the highest of `count` on.
char* putHexBytes(char* place, std::uint64_t value, unsigned count) {
  for (unsigned i = count; i > 0; --i, place += 2) {
    std::memcpy(place, hexPairs[value >> (8 * (i - 1)) & 0xFF].data(), 2);
  }
  return place;
}

/// The bit that makes a small letter of a capital one is set in every decimal digit.
char* toLower(char* start, char* end) {
  for (char* place = start; place != end; ++place) *place = static_cast<char>(*place | 0x20);
  return end;
}

char* putHex(char* place, std::uint64_t value, unsigned digits) {
  const unsigned length = std::max(digits, hexLength(value));
  if (length % 2 != 0) *place++ = hexPairs[value >> (4 * (length - 1)) & 0xF][1];
  return putHexBytes(place, value, length / 2);
}

/// Eight digits: the commonest of all.
char* putWord(char* place, std::uint32_t value) { return putHexBytes(place, value, 4); }

char* putPrefix(char* place) { return putLiteral(place, "0x"); }

char* putMark(char* place) { return putLiteral(place, " (hex)"); }

template <class Number>
char* putDecimal(char* place, Number value) {
  return std::to_chars(place, place + longestNumber, value).ptr;
}

char* putNumber(char* place, Format format, std::uint64_t value) {
  switch (format) {
    case Format::dec:
      return putDecimal(place, static_cast<std::int32_t>(value));
    case Format::udec:
      return putDecimal(place, value);
    case Format::hexLower:
      return toLower(place, putHex(putPrefix(place), value, 1));
    case Format::hexUpper8:
      return putWord(putPrefix(place), static_cast<std::uint32_t>(value));
    case Format::hexLower8:
      return toLower(place, putHex(putPrefix(place), value, 8));
    case Format::hexUpper2:
      return putHex(putPrefix(place), value, 2);
    case Format::hexLower6:
      return toLower(place, putHex(putPrefix(place), value, 6));
    case Format::hexLower4:
      return toLower(place, putHex(putPrefix(place), value, 4));
    case Format::hexLower2:
      return toLower(place, putHex(putPrefix(place), value, 2));
    case Format::bareHexLower:
      return toLower(place, putHex(place, value, 1));
    case Format::markedHex2:
      return putMark(putHex(place, value, 2));
    case Format::markedHex8:
      return putMark(putHex(place, value, 8));
    case Format::markedHex16:
      return putMark(putHexBytes(place, value, 8));
    case Format::markedPair:
      place = putWord(putLiteral(place, "("), static_cast<std::uint32_t>(value >> 32));
      place = putWord(putLiteral(place, ", "), static_cast<std::uint32_t>(value));
      return putMark(putLiteral(place, ")"));
    case Format::trueFalse:
      return value != 0 ? putLiteral(place, "TRUE") : putLiteral(place, "FALSE");
    case Format::yesNo:
      return value != 0 ? putLiteral(place, "Yes") : putLiteral(place, "No");
    case Format::pointer:
      return value == 0 ? putLiteral(place, "(nil)") : putNumber(place, Format::hexLower, value);
    case Format::pointer0x:
      return putNumber(putPrefix(place), Format::pointer, value);
    case Format::seconds:
      break;
  }
  return putLiteral(putDecimal(place, static_cast<std::int32_t>(value)), " seconds");
}

char* putWords(char* place, Format format, std::initializer_list<std::uint32_t> words) {
  const bool lower = format == Format::hexLower8;
  char* end = putPrefix(place);
  for (const std::uint32_t* word = words.begin();;) {
    end = putWord(end, *word);
    if (++word == words.end()) break;
    end = lower ? putLiteral(end, "  0x") : putLiteral(end, ":");
  }
  return lower ? toLower(place, end) : end;
}

}  // namespace

std::size_t writeHex(char* place, std::string_view bytes) {
  for (const char byte : bytes) {
    std::memcpy(place, hexPairs[static_cast<unsigned char>(byte)].data(), 2);
    place += 2;
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

Pegasus::String BodyWriter::string() {
  Pegasus::String text = toString(view());
  if (marks_ != nullptr) {
    if (text.size() != size_) marks_->moveTo(unitPositions(view()));
    recording_->add(text, std::move(marks_));
  }
  return text;
}

void BodyWriter::takeMarks(BodyWriter& other, std::span<const Pegasus::Uint32> positions) {
  marks_ = std::move(other.marks_);
  marks_->moveTo(positions);
}

ElementMarks& BodyWriter::marks() {
  if (marks_ == nullptr) marks_ = recording_->blankMarks();
  return *marks_;
}

/// `write` writes one element with this key. It does so as if nothing recorded: the way without a
/// recorder has but one test to make.
template <class Write>
[[gnu::noinline, gnu::cold]] void BodyWriter::markElement(std::string_view key, Write write) {
  const std::size_t start = size_;
  Recording* const recording = std::exchange(recording_, nullptr);
  write();
  recording_ = recording;
  marks().add(start, key.size(), size_ - (separator_ == Separator::blank ? 1 : 0));
}

void BodyWriter::decimal(std::int32_t value) { endAt(putDecimal(claim(longestNumber), value)); }
void BodyWriter::decimal(std::uint32_t value) { endAt(putDecimal(claim(longestNumber), value)); }
void BodyWriter::decimal(std::uint64_t value) { endAt(putDecimal(claim(longestNumber), value)); }

void BodyWriter::hexDigits(std::uint64_t value, unsigned digits, bool upperCase) {
  constexpr unsigned most = 16;
  if (digits > most) {
    std::memset(claim(digits - most), '0', digits - most);
    digits = most;
  }
  char* place = claim(most);
  char* end = putHex(place, value, digits);
  if (!upperCase) toLower(place, end);
  endAt(end);
}

void BodyWriter::number(Format format, std::uint64_t value) {
  endAt(putNumber(claim(longestNumber), format, value));
}

[[gnu::noinline]] void BodyWriter::element(std::string_view key, std::string_view value) {
  if (recording_ != nullptr) [[unlikely]] {
    return markElement(key, [=, this] { element(key, value); });
  }
  char* place = claim(tagSize(key) + value.size());
  endAt(putClosing(put(putOpening(place, key), value), key, separator_));
}

[[gnu::noinline]] void BodyWriter::element(std::string_view key, Format format,
                                           std::uint64_t value) {
  if (recording_ != nullptr) [[unlikely]] {
    return markElement(key, [=, this] { element(key, format, value); });
  }
  char* place = claim(tagSize(key) + longestNumber);
  endAt(putClosing(putNumber(putOpening(place, key), format, value), key, separator_));
}

[[gnu::noinline]] void BodyWriter::element(std::string_view key, Format format,
                                           std::initializer_list<std::uint32_t> words) {
  if (recording_ != nullptr) [[unlikely]] {
    return markElement(key, [=, this] { element(key, format, words); });
  }
  char* place = claim(tagSize(key) + words.size() * longestWord);
  endAt(putClosing(putWords(putOpening(place, key), format, words), key, separator_));
}

void BodyWriter::openTag(std::string_view key) {
  if (recording_ != nullptr) marks().open(size_, key.size());
  putOpening(claim(key.size() + 2), key);
}

void BodyWriter::closeTag(std::string_view key, Separator behind) {
  const std::size_t valueEnd = size_;
  endAt(putClosing(claim(key.size() + 4), key, behind));
  if (recording_ != nullptr) marks().close(valueEnd, valueEnd + key.size() + 3);
}

}  // namespace mpuevent
