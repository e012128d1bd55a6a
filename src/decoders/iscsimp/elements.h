#ifndef DECODERS_ISCSIMP_ELEMENTS_H
#define DECODERS_ISCSIMP_ELEMENTS_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/RecordView.h"
#include "event/Tables.h"

namespace mpuevent::iscsimp {

/// An element that is "Yes" if any bit of the mask is set in the byte, else "No".
struct Flag {
  std::string_view key;
  std::uint16_t offset;
  std::uint8_t mask;
};

constexpr Field socketNumber = {"Socket", 4, Width::u32, Format::udec};

constexpr std::string_view yesNo(bool value) { return value ? "Yes" : "No"; }

/// "Unknown (code)".
void writeUnknown(BodyWriter& out, std::uint32_t code);

template <std::size_t size>
void writeTextOf(BodyWriter& out, const std::string_view (&texts)[size], std::uint32_t code) {
  const std::string_view text = textAt(texts, code);
  if (text.empty()) return writeUnknown(out, code);
  out.text(text);
}

/// The element of a number that is shown by a word: left out if the number's bytes are not held.
void writeWord(BodyWriter& body, RecordView layout, std::string_view key, std::size_t at,
               Width width, std::string_view word);

/// The same, the word being the table's text of the number, which is `code`.
template <std::size_t size>
void writeCode(BodyWriter& body, RecordView layout, std::string_view key, std::size_t at,
               Width width, const std::string_view (&texts)[size], std::uint32_t code) {
  if (!layout.holds(at, byteCount(width))) return;
  body.openElement(key);
  writeTextOf(body, texts, code);
  body.closeElement(key);
}

void writeFlags(BodyWriter& body, RecordView layout, std::span<const Flag> flags);

/// The text of a payload's status code.
void writeStatus(BodyWriter& out, RecordView data);
void writeReason(BodyWriter& body, RecordView data);

/// ", Socket n", the end of a summary.
void writeSocketSuffix(BodyWriter& summary, RecordView data);

}  // namespace mpuevent::iscsimp

#endif
