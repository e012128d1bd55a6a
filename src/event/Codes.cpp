#include "event/Codes.h"

namespace mpuevent {

void writeCodeText(BodyWriter& out, CodeTable texts, std::uint64_t code, Format format,
                   const Fallback& fallback) {
  const std::string_view text = textOf(texts, code);
  if (!text.empty()) return out.text(text);
  out.text(fallback.before);
  if (fallback.showsNumber) out.number(format, code);
  out.text(fallback.behind);
}

void writeCode(BodyWriter& body, RecordView layout, const Field& field, CodeTable texts,
               const Fallback& fallback) {
  if (!layout.holds(field.offset, byteCount(field.width))) return;
  body.openElement(field.key);
  writeCodeText(body, texts, numberAt(layout, field), field.format, fallback);
  body.closeElement(field.key);
}

}  // namespace mpuevent
