#include "event/Codes.h"

namespace mpuevent {

void writeCodeText(BodyWriter& out, CodeTable texts, std::uint64_t code, Format format,
                   const Fallback& fallback) {
  const std::string_view text = textOf(texts, code);
  if (!text.empty()) return out.words(text);
  out.words(fallback.before);
  if (fallback.showsNumber) out.number(format, code);
  out.words(fallback.behind);
}

void writeCode(BodyWriter& body, RecordView layout, std::string_view key, const Number& number,
               CodeTable texts, const Fallback& fallback) {
  if (!layout.holds(number.offset, byteCount(number.width))) return;
  body.openElement(key);
  writeCodeText(body, texts, numberAt(layout, number), number.format, fallback);
  body.closeElement(key);
}

}  // namespace mpuevent
