#include "event/Fields.h"

#include <cassert>

#include "event/Tags.h"

namespace mpuevent {

namespace {

/// Of a number whose bytes are held.
inline std::uint64_t heldNumber(RecordView layout, const Number& number) {
  const std::size_t skipped = number.width == Width::u24 ? 1 : 0;
  return layout.number(number.offset + skipped, byteCount(number.width) - skipped);
}

[[gnu::noinline]] char* putWordsAt(char* place, RecordView layout, const Number& number) {
  const auto word = [&](std::size_t index) { return layout.u32(number.offset + 4 * index); };
  switch (number.width) {
    case Width::wordPair:
      return putWords(place, number.format, {word(0), word(1)});
    case Width::wordPairSwapped:
      return putWords(place, number.format, {word(1), word(0)});
    default:
      return putWords(place, number.format, {word(0), word(1), word(2), word(3)});
  }
}

[[gnu::always_inline]] inline char* putField(char* place, RecordView layout, const Number& number) {
  if (!isOneNumber(number.width)) return putWordsAt(place, layout, number);
  return putNumber(place, number.format, heldNumber(layout, number));
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
  ElementRun elements(body);
  for (const auto& [tag, number] : fields) {
    if (!layout.holds(number.offset, byteCount(number.width))) continue;
    const PackedTags tags{tag.view()};
    elements.close(tags, putField(elements.open(tags, longestField), layout, number));
  }
}

}  // namespace mpuevent
