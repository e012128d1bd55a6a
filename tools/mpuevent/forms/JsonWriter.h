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
    char* const place = to_.reserve(FactKey::jsonRoom);
    std::memcpy(place, key.json.data(), FactKey::jsonRoom);
    if (first_) std::memmove(place, place + 1, key.jsonSize - 1);  // no comma
    to_.advanceTo(place + key.jsonSize - (first_ ? 1 : 0));
    first_ = true;
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
    char* place = to_.reserve(jsonRoom(utf8.size()) + 2);
    *place++ = '"';
    place = copyJsonText(place, utf8);
    *place++ = '"';
    to_.advanceTo(place);
  }
  /// A text of two upper-case digits for each byte.
  void hex(std::span<const unsigned char> bytes) {
    separate();
    to_ += '"';
    appendHexBytes(to_, bytes);
    to_ += '"';
  }
  /// `{"key":...,"value":...}` in one.
  void element(PaddedView key, PaddedView value) {
    constexpr std::size_t marks = 24;
    separate();
    char* place = to_.reserve(jsonRoom(key.size()) + jsonRoom(value.size()) + marks);
    place = copyMarks(place, "{\"key\":\"");
    place = copyJsonText(place, key);
    place = copyMarks(place, "\",\"value\":\"");
    place = copyJsonText(place, value);
    place = copyMarks(place, "\"}");
    to_.advanceTo(place);
  }

 private:
  template <std::size_t count>
  static char* copyMarks(char* to, const char (&marks)[count]) {
    std::memcpy(to, marks, count - 1);
    return to + count - 1;
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
