#include "event/BodyWriter.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "event/HexDigits.h"
#include "event/Tags.h"
#include "event/Text.h"

namespace mpuevent {

std::size_t writeHex(char* place, std::string_view bytes) {
  for (const char byte : bytes) {
    std::memcpy(place, hexPairs[static_cast<unsigned char>(byte)].data(), 2);
    place += 2;
  }
  return 2 * bytes.size();
}

void BodyWriter::grow(std::size_t count) {
  const std::size_t before = size();
  assert(count <= SIZE_MAX - slack - before);
  const std::size_t capacity = std::max(2 * (before + room()), before + count);
  // What is large already is not copied but gets other addresses.
  auto* const grown = static_cast<char*>(std::realloc(grown_.get(), capacity + slack));
  if (grown == nullptr) throw std::bad_alloc();
  if (grown_ == nullptr) std::memcpy(grown, buffer_, before);
  static_cast<void>(grown_.release());
  grown_.reset(grown);
  buffer_ = grown;
  next_ = buffer_ + before;
  limit_ = buffer_ + capacity;
}

Pegasus::String BodyWriter::string() {
  assert(!ascii_ || isAscii(view()));
  Pegasus::String text = ascii_ ? asciiString(view()) : toString(view());
  if (marks_ != nullptr) {
    if (text.size() != size()) marks_->moveTo(unitPositions(view()));
    recording_->add(text, std::move(marks_));
  }
  return text;
}

void BodyWriter::takeMarks(BodyWriter& other, std::span<const Pegasus::Uint32> positions) {
  marks_ = std::move(other.marks_);
  marks_->moveTo(positions);
}

ElementMarks& BodyWriter::firstMarks() {
  marks_ = recording_->blankMarks();
  return *marks_;
}

void BodyWriter::markElement(std::size_t start, std::size_t keySize) {
  marks().add(start, keySize, size() - (separator_ == Separator::blank ? 1 : 0), size());
}

void BodyWriter::decimal(std::int32_t value) { endAt(putDecimal(reserve(longestNumber), value)); }
void BodyWriter::decimal(std::uint32_t value) { endAt(putDecimal(reserve(longestNumber), value)); }
void BodyWriter::decimal(std::uint64_t value) { endAt(putDecimal(reserve(longestNumber), value)); }

void BodyWriter::hexDigits(std::uint64_t value, unsigned digits, bool upperCase) {
  constexpr unsigned most = 16;
  if (digits > most) {
    std::memset(claim(digits - most), '0', digits - most);
  }
  digits = std::clamp(digits, 1U, most);
  endAt(putHexDigits(reserve(most), value, digits, upperCase ? Letters::capital : Letters::small));
}

void BodyWriter::number(Format format, std::uint64_t value) {
  endAt(putNumber(reserve(longestNumber), format, value));
}

void BodyWriter::words(std::string_view value) { endAt(putText(reserve(value.size()), value)); }

void BodyWriter::element(std::string_view key, std::string_view value) {
  note(value);
  writeElement(*this, key, value.size(), [value](char* place) { return putText(place, value); });
}

void BodyWriter::element(std::string_view key, Format format, std::uint64_t value) {
  writeElement(*this, key, longestNumber,
               [=](char* place) { return putNumber(place, format, value); });
}

void BodyWriter::openTag(std::string_view key) {
  if (recording_ != nullptr) marks().open(size(), key.size());
  endAt(KeyTags{key}.putOpening(reserve(key.size() + 2)));
}

void BodyWriter::closeTag(std::string_view key, Separator behind) {
  const std::size_t valueEnd = size();
  endAt(KeyTags{key}.putClosing(reserve(key.size() + 4), behind));
  if (recording_ != nullptr) marks().close(valueEnd, valueEnd + key.size() + 3, size());
}

}  // namespace mpuevent
