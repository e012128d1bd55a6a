#include "event/Fields.h"

#include <cassert>

#include "event/Tags.h"

namespace mpuevent {

namespace {

/// Of a number whose bytes are held.
inline std::uint64_t heldNumber(RecordView layout, const Number& number) {
  if (number.width == Width::u24) return layout.number(number.offset + std::size_t{1}, 3);
  return layout.number(number.offset, byteCount(number.width));
}

char* putField(char* place, RecordView layout, const Number& number) {
  const auto word = [&](std::size_t index) { return layout.u32(number.offset + 4 * index); };
  switch (number.width) {
    case Width::wordPair:
      return putWords(place, number.format, {word(0), word(1)});
    case Width::wordPairSwapped:
      return putWords(place, number.format, {word(1), word(0)});
    case Width::wordQuad:
      return putWords(place, number.format, {word(0), word(1), word(2), word(3)});
    default:
      return putNumber(place, number.format, heldNumber(layout, number));
  }
}

constexpr std::size_t longestField = 4 * longestWord;

}  // namespace

std::uint64_t numberAt(RecordView layout, const Number& number) {
  assert(isOneNumber(number.width));
  if (!layout.holds(number.offset, byteCount(number.width))) return 0;
  return heldNumber(layout, number);
}

void writeNumber(BodyWriter& body, RecordView layout, std::string_view key, const Number& number) {
  if (!layout.holds(number.offset, byteCount(number.width))) return;
  writeElement(body, key, longestField,
               [&](char* place) { return putField(place, layout, number); });
}

void writeFields(BodyWriter& body, RecordView layout, Fields fields) {
  for (const auto& [text, number] : fields) {
    const std::string_view key = text.view();
    if (!layout.holds(number.offset, byteCount(number.width))) continue;
    const std::size_t start = body.size();
    char* place = body.reserve(tagSize(key) + longestField);
    place = putField(putOpening(place, key, putPackedText), layout, number);
    body.endAt(putClosing(place, key, body.separator(), putPackedText));
    body.tellElement(start, key);
  }
}

}  // namespace mpuevent
