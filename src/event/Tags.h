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
constexpr std::size_t tagSize(std::size_t keySize) { return 2 * keySize + 6; }

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

/// The tags of a key.
struct KeyTags {
  std::string_view name;

  std::size_t keySize() const { return name.size(); }
  std::size_t size() const { return tagSize(keySize()); }
  [[gnu::always_inline]] char* putOpening(char* place) const {
    *place = '<';
    place = putText(place + 1, name);
    *place = '>';
    return place + 1;
  }
  [[gnu::always_inline]] char* putClosing(char* place, Separator behind) const {
    place[0] = '<';
    place[1] = '/';
    place = putText(place + 2, name);
    place[0] = '>';
    place[1] = ' ';
    return place + (behind == Separator::blank ? 2 : 1);
  }
};

/// The tags of a key in a packed table. There stands the closing one, with the blank behind it:
/// what opens the element is most of that, and both are copied with few and wide stores.
struct PackedTags {
  std::string_view closing;

  std::string_view key() const { return {closing.data() + 2, keySize()}; }
  std::size_t keySize() const { return closing.size() - 4; }
  std::size_t size() const { return tagSize(keySize()); }
  [[gnu::always_inline]] char* putOpening(char* place) const {
    *place = '<';
    const std::size_t size = closing.size() - 3;
    std::memcpy(place + 1, closing.data() + 2, readablePackedText - 2);
    if (size > readablePackedText - 2) std::memcpy(place + 1, closing.data() + 2, size);
    return place + 1 + size;
  }
  [[gnu::always_inline]] char* putClosing(char* place, Separator behind) const {
    const std::size_t size = closing.size();
    std::memcpy(place, closing.data(), readablePackedText);
    if (size > readablePackedText) std::memcpy(place, closing.data(), size);
    return place + (behind == Separator::blank ? size : size - 1);
  }
};

/// Elements one behind the other. Where the next one goes is not known to the body until the end,
/// and so need not go through memory from one to the next: in a loop that takes most of the time.
class ElementRun {
 public:
  explicit ElementRun(BodyWriter& body)
      : body_(body), recorded_(body.isRecorded()), separator_(body.separator()) {
    reserve(0);
  }
  ~ElementRun() { body_.endAt(place_); }
  ElementRun(const ElementRun&) = delete;
  ElementRun& operator=(const ElementRun&) = delete;

  /// The size of the body with all elements so far.
  std::size_t bodySize() {
    body_.endAt(place_);
    return body_.size();
  }

  /// Drops what was written behind the first `size` bytes of the body.
  void cut(std::size_t size) {
    body_.endAt(place_);
    body_.cut(size);
    reserve(0);
  }

  /// Begins an element. Returns the place of its value, of which at most `most` bytes are written.
  template <class Tags>
  [[gnu::always_inline]] char* open(Tags tags, std::size_t most) {
    const std::size_t needed = tags.size() + most;
    if (needed > static_cast<std::size_t>(limit_ - place_)) [[unlikely]] {
      body_.endAt(place_);
      reserve(needed);
    }
    return tags.putOpening(place_);
  }
  /// Ends it behind the value.
  template <class Tags>
  [[gnu::always_inline]] void close(Tags tags, char* valueEnd) {
    char* const start = place_;
    place_ = tags.putClosing(valueEnd, separator_);
    if (recorded_) [[unlikely]]
      tell(static_cast<std::size_t>(place_ - start), tags.keySize());
  }

 private:
  void reserve(std::size_t needed) {
    place_ = body_.reserve(needed);
    limit_ = place_ + body_.room();
  }
  void tell(std::size_t size, std::size_t keySize) {
    body_.tellElement(bodySize() - size, keySize);
  }

  BodyWriter& body_;
  char* place_;
  char* limit_;
  bool recorded_;
  Separator separator_;
};

/// Writes one element whose value `put(place)` writes, at most `most` bytes of it; it returns where
/// the value ends.
template <class Put>
void writeElement(BodyWriter& body, std::string_view key, std::size_t most, Put put) {
  const KeyTags tags{key};
  const std::size_t start = body.size();
  char* place = put(tags.putOpening(body.reserve(tags.size() + most)));
  body.endAt(tags.putClosing(place, body.separator()));
  body.tellElement(start, key.size());
}

}  // namespace mpuevent

#endif
