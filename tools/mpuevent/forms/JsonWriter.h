#ifndef MPUEVENT_TOOL_JSONWRITER_H
#define MPUEVENT_TOOL_JSONWRITER_H

#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "FactKey.h"
#include "JsonText.h"
#include "Numbers.h"
#include "TextBuffer.h"

namespace mpuevent::tool {

/// Writes marks, a character array without its NUL; returns the end.
template <std::size_t count>
char* putMarks(char* to, const char (&marks)[count]) {
  std::memcpy(to, marks, count - 1);
  return to + count - 1;
}

/// Writes JSON, a value after another, with the commas between them, at the end of a buffer that
/// nobody else uses meanwhile. RapidJSON's writer looks at each character of a text and of each
/// key; this one copies them in blocks.
class JsonWriter {
 public:
  explicit JsonWriter(TextBuffer& to) : to_(to) {}

  void beginObject() { open('{'); }
  void endObject() { close('}'); }
  void beginArray() { open('['); }
  void endArray() { close(']'); }

  /// The key of the next value.
  void key(const FactKey& key) {
    to_.advanceTo(putKey(to_.reserve(FactKey::jsonRoom), key));
    first_ = true;
  }
  /// A key and its value in one.
  void member(const FactKey& key, std::uint64_t number) {
    char* const place = putKey(to_.reserve(FactKey::jsonRoom + kDecimalRoom), key);
    to_.advanceTo(writeDecimal(place, number));
  }
  template <typename Text>
  void member(const FactKey& key, Text utf8) {
    char* const place = to_.reserve(FactKey::jsonRoom + textRoom(utf8));
    to_.advanceTo(putText(putKey(place, key), utf8));
  }

  /// One that is no FactKey.
  void plainKey(std::string_view name) {
    text(name);
    to_ += ':';
    first_ = true;
  }

  void null() { value("null"); }
  void number(std::uint64_t number) {
    separate();
    appendDecimal(to_, number);
  }
  void signedNumber(std::int64_t number) {
    separate();
    if (number < 0) to_ += '-';
    const auto bits = static_cast<std::uint64_t>(number);
    appendDecimal(to_, number < 0 ? 0 - bits : bits);
  }
  void boolean(bool boolean) { value(boolean ? "true" : "false"); }
  /// `Text` is a PaddedView or, slower, any view.
  template <typename Text>
  void text(Text utf8) {
    separate();
    to_.advanceTo(putText(to_.reserve(textRoom(utf8)), utf8));
  }
  /// A text of two upper-case digits for each byte.
  void hex(std::span<const unsigned char> bytes) {
    separate();
    to_ += '"';
    appendHexBytes(to_, bytes);
    to_ += '"';
  }
  /// What `put(place)` writes, at most `most` bytes; it returns the end.
  template <typename Put>
  void value(std::size_t most, Put put) {
    separate();
    to_.advanceTo(put(to_.reserve(most)));
  }

 private:
  /// With the comma before it, but for that of the first.
  char* putKey(char* to, const FactKey& key) {
    std::memcpy(to, key.json.data(), FactKey::jsonRoom);
    if (first_) std::memmove(to, to + 1, key.jsonSize - 1);
    to += key.jsonSize - (first_ ? 1 : 0);
    first_ = false;
    return to;
  }
  static std::size_t textRoom(std::string_view utf8) { return jsonRoom(utf8.size()) + 2; }
  template <typename Text>
  static char* putText(char* to, Text utf8) {
    *to = '"';
    to = copyJsonText(to + 1, utf8);
    *to = '"';
    return to + 1;
  }

  void separate() {
    if (!first_) to_ += ',';
    first_ = false;
  }
  void value(std::string_view json) {
    separate();
    to_ += json;
  }
  void open(char mark) {
    separate();
    to_ += mark;
    first_ = true;
  }
  void close(char mark) {
    to_ += mark;
    first_ = false;
  }

  TextPen to_;
  bool first_ = true;  // nothing stands before the next value that a comma must follow
};

}  // namespace mpuevent::tool

#endif
