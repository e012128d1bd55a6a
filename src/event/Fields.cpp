#include "event/Fields.h"

#include <cassert>

namespace mpuevent {

std::uint64_t numberAt(RecordView layout, const Field& field) {
  const std::size_t at = field.offset;
  assert(isOneNumber(field.width));
  switch (field.width) {
    case Width::u8:
      return layout.u8(at);
    case Width::u16:
      return layout.u16(at);
    case Width::u24:
      return layout.u24(at);
    case Width::u32:
      return layout.u32(at);
    case Width::u48:
      return layout.u48(at);
    default:
      return layout.u64(at);
  }
}

void writeField(BodyWriter& body, RecordView layout, const Field& field) {
  const auto& [key, offset, width, format] = field;
  if (!layout.holds(offset, byteCount(width))) return;
  const auto word = [&, at = std::size_t{offset}](std::size_t index) {
    return layout.u32(at + 4 * index);
  };
  switch (width) {
    case Width::wordPair:
      return body.element(key, format, {word(0), word(1)});
    case Width::wordPairSwapped:
      return body.element(key, format, {word(1), word(0)});
    case Width::wordQuad:
      return body.element(key, format, {word(0), word(1), word(2), word(3)});
    default:
      return body.element(key, format, numberAt(layout, field));
  }
}

void writeFields(BodyWriter& body, RecordView layout, std::span<const Field> fields) {
  for (const Field& field : fields) writeField(body, layout, field);
}

}  // namespace mpuevent
