#ifndef EVENT_FIELDS_H
#define EVENT_FIELDS_H

#include <cstdint>
#include <span>
#include <string_view>

#include "event/BodyWriter.h"
#include "event/RecordView.h"

namespace mpuevent {

/// What lies at a field's offset.
enum class Width : std::uint8_t {
  u8,
  u16,
  u24,  ///< the low 24 bits of a word
  u32,
  u48,
  u64,
  wordPair,         ///< two words, printed in storage order
  wordPairSwapped,  ///< two words, the one at the higher offset printed first
  wordQuad,         ///< four words, printed in storage order
};

/// One row of a layout: the element that shows a number of fixed place.
struct Field {
  std::string_view key;
  std::uint16_t offset;
  Width width;
  Format format;
};

/// The bytes that a field of this width covers.
constexpr std::size_t byteCount(Width width) {
  switch (width) {
    case Width::u8:
      return 1;
    case Width::u16:
      return 2;
    case Width::u24:
    case Width::u32:
      return 4;
    case Width::u48:
      return 6;
    case Width::u64:
    case Width::wordPair:
    case Width::wordPairSwapped:
      return 8;
    case Width::wordQuad:
      break;
  }
  return 16;
}

/// Writes the element of a row. Its offset counts from the start of `layout`; it is left out if
/// its bytes are not all held.
void writeField(BodyWriter& body, RecordView layout, const Field& field);

/// Writes the element of each row, in order.
void writeFields(BodyWriter& body, RecordView layout, std::span<const Field> fields);

}  // namespace mpuevent

#endif
