#include "event/Fields.h"

#include <cassert>

#include "event/Tags.h"

namespace mpuevent {

namespace {

constexpr std::size_t wordSize = 4;

/// Of a number whose bytes are held, the last one before `end`.
inline std::uint64_t heldNumber(RecordView layout, std::size_t end, Width width) {
  if (width == Width::u32) return layout.u32Before(end);  // most are
  return layout.numberBefore(end, width == Width::u24 ? 3 : byteCount(width));
}

[[gnu::noinline]] char* putWordsBefore(char* place, RecordView layout, std::size_t end, Width width,
                                       Format format) {
  const bool small = format == Format::hexLower8;
  const Letters letters = small ? Letters::small : Letters::capital;
  const bool swapped = width == Width::wordPairSwapped;
  std::size_t at = swapped ? end - wordSize : end - byteCount(width);
  place = putLiteral(place, "0x");
  for (std::size_t left = byteCount(width);;) {
    place = putEightHexDigits(place, layout.u32(at), letters);
    left -= wordSize;
    if (left == 0) return place;
    place = small ? putLiteral(place, "  0x") : putLiteral(place, ":");
    at = swapped ? at - wordSize : at + wordSize;
  }
}

[[gnu::always_inline]] inline char* putField(char* place, RecordView layout, std::size_t end,
                                             Width width, Format format) {
  if (!isOneNumber(width)) return putWordsBefore(place, layout, end, width, format);
  return putNumber(place, format, heldNumber(layout, end, width));
}

constexpr std::size_t longestWord = 12;  // of several, with what stands before it
constexpr std::size_t longestField = 4 * longestWord;

}  // namespace

std::uint64_t numberAt(RecordView layout, const Number& number) {
  assert(isOneNumber(number.width));
  if (number.end() > layout.size()) return 0;
  return heldNumber(layout, number.end(), number.width);
}

void writeNumber(BodyWriter& body, RecordView layout, std::string_view key, const Number& number) {
  if (number.end() > layout.size()) return;
  writeElement(body, key, longestField, [&](char* place) {
    return putField(place, layout, number.end(), number.width, number.format);
  });
}

void writeFields(BodyWriter& body, RecordView layout, Fields fields) {
  ElementRun elements(body);
  for (const auto& [tag, end, width, format] : fields) {
    if (end > layout.size()) continue;
    const PackedTags tags{tag.view()};
    char* const value = elements.open(tags, longestField);
    elements.close(tags, putField(value, layout, end, width, format));
  }
}

}  // namespace mpuevent
