#ifndef EVENT_CODES_H
#define EVENT_CODES_H

#include <cstdint>
#include <string_view>

#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/RecordView.h"
#include "event/Tables.h"

namespace mpuevent {

/// What is shown for a code that its table does not have: by default its number alone.
struct Fallback {
  std::string_view before = {};  ///< the number
  std::string_view behind = {};
  bool showsNumber = true;
};

/// The fall-back to one word for all numbers.
constexpr Fallback toWord(std::string_view word) { return {word, {}, false}; }

/// Writes the text of a code. The format is that of the number in the fall-back.
void writeCodeText(BodyWriter& out, CodeTable texts, std::uint64_t code, Format format,
                   const Fallback& fallback);

/// Writes the element of a number that is a code. The number's format is that of the number in the
/// fall-back. The element is left out if the number's bytes are not all held.
void writeCode(BodyWriter& body, RecordView layout, std::string_view key, const Number& number,
               CodeTable texts, const Fallback& fallback);
[[gnu::always_inline]] inline void writeCode(BodyWriter& body, RecordView layout,
                                             const Field& field, CodeTable texts,
                                             const Fallback& fallback = {}) {
  writeCode(body, layout, field.key, field, texts, fallback);
}

}  // namespace mpuevent

#endif
