#include "event/Fields.h"

namespace mpuevent {

void writeField(BodyWriter& body, RecordView layout, const Field& field) {
  const auto& [key, offset, width, format] = field;
  const std::size_t at = offset;
  if (!layout.holds(at, byteCount(width))) return;
  const auto word = [&](std::size_t index) { return layout.u32(at + 4 * index); };
  switch (width) {
    case Width::u8:
      return body.element(key, format, layout.u8(at));
    case Width::u16:
      return body.element(key, format, layout.u16(at));
    case Width::u24:
      return body.element(key, format, layout.u24(at));
    case Width::u32:
      return body.element(key, format, layout.u32(at));
    case Width::u48:
      return body.element(key, format, layout.u48(at));
    case Width::u64:
      return body.element(key, format, layout.u64(at));
    case Width::wordPair:
      return body.element(key, format, {word(0), word(1)});
    case Width::wordPairSwapped:
      return body.element(key, format, {word(1), word(0)});
    case Width::wordQuad:
      return body.element(key, format, {word(0), word(1), word(2), word(3)});
  }
}

void writeFields(BodyWriter& body, RecordView layout, std::span<const Field> fields) {
  for (const Field& field : fields) writeField(body, layout, field);
}

}  // namespace mpuevent
