#ifndef EVENT_TAGS_H
#define EVENT_TAGS_H

#include <cstddef>
#include <cstring>
#include <string_view>

#include "event/BodyWriter.h"
#include "event/Packed.h"

namespace mpuevent {

// The tags of elements. As with numbers, a place has room for all of what is written there and some
// bytes more, and what is returned is where that ends.

/// The most that the two tags of an element take up.
constexpr std::size_t tagSize(std::string_view key) { return 2 * key.size() + 6; }

template <std::size_t width>
void copyEnds(char* place, const char* from, std::size_t size) {
  std::memcpy(place, from, width);
  std::memcpy(place + size - width, from + size - width, width);
}

/// Copies a text and returns where it ends. Keys and words are short: moves of a fixed width cost
/// less than a call of memcpy.
[[gnu::always_inline]] inline char* putText(char* place, std::string_view text) {
  const char* from = text.data();
  const std::size_t size = text.size();
  if (size > 32) {
    std::memcpy(place, from, size);
  } else if (size >= 16) {
    copyEnds<16>(place, from, size);
  } else if (size >= 8) {
    copyEnds<8>(place, from, size);
  } else if (size >= 4) {
    copyEnds<4>(place, from, size);
  } else {
    for (std::size_t i = 0; i < size; ++i) place[i] = from[i];
  }
  return place + size;
}

/// The same of a text of a packed table, from which more may be read than it has.
inline char* putPackedText(char* place, std::string_view text) {
  std::memcpy(place, text.data(), readablePackedText);
  if (text.size() > readablePackedText) std::memcpy(place, text.data(), text.size());
  return place + text.size();
}

/// `put` copies the key.
[[gnu::always_inline]] inline char* putOpening(char* place, std::string_view key, auto put) {
  *place = '<';
  place = put(place + 1, key);
  *place = '>';
  return place + 1;
}

[[gnu::always_inline]] inline char* putClosing(char* place, std::string_view key, Separator behind,
                                               auto put) {
  place[0] = '<';
  place[1] = '/';
  place = put(place + 2, key);
  place[0] = '>';
  place[1] = ' ';
  return place + (behind == Separator::blank ? 2 : 1);
}

constexpr auto putKey = [](char* place, std::string_view key) { return putText(place, key); };

/// Writes an element whose value `put(place)` writes, at most `most` bytes of it; it returns where
/// the value ends.
template <class Put>
void writeElement(BodyWriter& body, std::string_view key, std::size_t most, Put put) {
  const std::size_t start = body.size();
  char* place = put(putOpening(body.reserve(tagSize(key) + most), key, putKey));
  body.endAt(putClosing(place, key, body.separator(), putKey));
  body.tellElement(start, key);
}

}  // namespace mpuevent

#endif
