#include "event/Fields.h"

namespace mpuevent {

namespace {

/// "0x%08x  0x%08x" in lower case, else "0x%08X:%08X" and so on for further words.
void writeWords(BodyWriter& body, Format format, std::initializer_list<std::uint32_t> words) {
  const bool lower = format == Format::hex8Lower;
  bool first = true;
  for (const std::uint32_t word : words) {
    if (!first) body.text(lower ? "  " : ":");
    body.number(lower ? Format::hex8Lower : first ? Format::hex8 : Format::bareHex8, word);
    first = false;
  }
}

void writeValue(BodyWriter& body, RecordView layout, const Field& field) {
  const std::size_t at = field.offset;
  switch (field.width) {
    case Width::u8:
      return body.number(field.format, layout.u8(at));
    case Width::u16:
      return body.number(field.format, layout.u16(at));
    case Width::u24:
      return body.number(field.format, layout.u24(at));
    case Width::u32:
      return body.number(field.format, layout.u32(at));
    case Width::u48:
      return body.number(field.format, layout.u48(at));
    case Width::u64:
      return body.number(field.format, layout.u64(at));
    case Width::pairHighFirst:
      return writeWords(body, field.format, {layout.u32(at), layout.u32(at + 4)});
    case Width::pairHighSecond:
      return writeWords(body, field.format, {layout.u32(at + 4), layout.u32(at)});
    case Width::quad:
      return writeWords(
          body, field.format,
          {layout.u32(at), layout.u32(at + 4), layout.u32(at + 8), layout.u32(at + 12)});
  }
}

}  // namespace

void writeField(BodyWriter& body, RecordView layout, const Field& field) {
  if (!layout.holds(field.offset, byteCount(field.width))) return;
  body.openElement(field.key);
  writeValue(body, layout, field);
  body.closeElement(field.key);
}

void writeFields(BodyWriter& body, RecordView layout, std::span<const Field> fields) {
  for (const Field& field : fields) writeField(body, layout, field);
}

}  // namespace mpuevent
