#ifndef EVENT_FIELDS_H
#define EVENT_FIELDS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>

#include "event/BodyWriter.h"
#include "event/Packed.h"
#include "event/RecordView.h"
#include "event/Tags.h"

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

/// The bytes that a field of each width covers.
inline constexpr std::uint8_t byteCounts[] = {1, 2, 4, 4, 6, 8, 8, 8, 16};
static_assert(std::size(byteCounts) == static_cast<std::size_t>(Width::wordQuad) + 1);

constexpr std::size_t byteCount(Width width) { return byteCounts[static_cast<std::size_t>(width)]; }

/// Whether the width is that of one number, not of several words shown side by side.
constexpr bool isOneNumber(Width width) { return width < Width::wordPair; }

/// Whether a format shows all of a field of this width, each digit where the format puts it.
constexpr bool suits(Format format, Width width) {
  switch (format) {
    case Format::hexUpper8:
    case Format::hexLower8:
      return !isOneNumber(width) || byteCount(width) <= 4;
    case Format::dec:
    case Format::seconds:
    case Format::markedHex8:
      return isOneNumber(width) && byteCount(width) <= 4;
    case Format::markedHex16:
    case Format::markedPair:
      return width == Width::u64;
    default:
      return isOneNumber(width);
  }
}

/// A number of fixed place, and the form that it is shown in.
struct Number {
  std::uint16_t offset;
  Width width;
  Format format;

  constexpr std::size_t end() const { return offset + byteCount(width); }
};

/// A tag as packed tables hold it: "</Key> ".
class ClosingTag {
 public:
  constexpr explicit ClosingTag(std::string_view key) : size_(key.size() + 4) {
    text_[0] = '<';
    text_[1] = '/';
    std::copy(key.begin(), key.end(), text_ + 2);
    text_[size_ - 2] = '>';
    text_[size_ - 1] = ' ';
  }
  constexpr std::string_view view() const { return {text_, size_}; }

 private:
  char text_[64] = {};
  std::size_t size_;
};

/// One row of a layout: the element that shows a number of fixed place.
struct Field : Number {
  struct Packed {
    constexpr std::size_t end() const { return numberEnd; }
    Number number() const {
      return {static_cast<std::uint16_t>(numberEnd - byteCount(width)), width, format};
    }
    std::string_view key() const { return PackedTags{closingTag.view()}.key(); }

    TextBefore closingTag;  ///< with a blank behind it
    std::uint16_t numberEnd;
    Width width;
    Format format;
  };
  constexpr Packed packed(auto place) const {
    return {place(ClosingTag(key).view()), static_cast<std::uint16_t>(end()), width, format};
  }

  /// Does not compile for a width that the format would cut or could not show.
  consteval Field(std::string_view name, std::uint16_t at, Width size, Format form)
      : Number{at, size, form}, key(name) {
    if (!suits(form, size)) throw "the format does not suit the width";
  }

  std::string_view key;
};

/// The rows of a layout, in the order of the output.
using Fields = std::span<const Field::Packed>;

/// Whether the rows of these tables end within so many bytes: for a `static_assert`, where several
/// tables show parts of one structure.
template <class... Tables>
consteval bool endWithin(std::size_t size, const Tables&... tables) {
  const auto ends = [size](const auto& rows) {
    for (const auto& row : rows) {
      if (row.end() > size) return false;
    }
    return true;
  };
  return (ends(tables) && ...);
}

/// A structure: how many bytes it takes up, and the rows that show it.
struct Layout {
  /// Does not compile if a row ends behind the structure.
  consteval Layout(std::size_t bytes, Fields fields) : size(bytes), rows(fields) {
    if (!endWithin(bytes, fields)) throw "a row ends behind its layout";
  }
  /// A structure of which no number of fixed place is shown.
  consteval explicit Layout(std::size_t bytes) : size(bytes) {}

  std::size_t size;
  Fields rows;
};

/// The number at a field's offset; 0 if its bytes are not all held. Not for a field of several
/// words.
std::uint64_t numberAt(RecordView layout, const Number& number);

/// Writes the element of a row. Its offset counts from the start of `layout`; it is left out if
/// its bytes are not all held.
void writeNumber(BodyWriter& body, RecordView layout, std::string_view key, const Number& number);
/// In place, so that a single row is no object with a pointer.
[[gnu::always_inline]] inline void writeField(BodyWriter& body, RecordView layout,
                                              const Field& field) {
  writeNumber(body, layout, field.key, field);
}

/// Writes the element of each row, in order.
void writeFields(BodyWriter& body, RecordView layout, Fields fields);

}  // namespace mpuevent

#endif
