#ifndef MPUEVENT_TOOL_UTF8_H
#define MPUEVENT_TOOL_UTF8_H

#include <Pegasus/Common/String.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "PaddedView.h"
#include "TextBuffer.h"

namespace mpuevent::tool {

/// A text in UTF-8, always valid. Made to be used again for text after text; each view is valid
/// until the next call.
class Utf8Text {
 public:
  /// Half a surrogate pair becomes U+FFFD.
  PaddedView assign(const Pegasus::String& text);
  /// UTF-8 if the bytes are that, else each byte as the Latin-1 character of its number.
  PaddedView assignBytes(std::string_view bytes);

 private:
  std::string room_;
};

/// Finds the bytes of 16-bit units in the UTF-8 that a text of them became, going forward only.
class Utf8Cursor {
 public:
  explicit Utf8Cursor(std::string_view utf8) : utf8_(utf8) {}

  /// Where the unit at `unit` begins, or the text's end; no less than the unit asked for before.
  std::size_t byteOf(std::size_t unit);

 private:
  std::string_view utf8_;
  std::size_t unit_ = 0;
  std::size_t byte_ = 0;
};

inline constexpr std::size_t kLongestShown = 4;  // "\\x0A"

/// Copies UTF-8 text with control characters shown as \x0A, also those of U+0080 to U+009F, so
/// that it stays on its line and cannot command a terminal. There is room for kLongestShown for
/// each byte, and for the padding; returns the end.
char* showText(char* to, PaddedView utf8);
char* showText(char* to, std::string_view utf8);

constexpr std::size_t shownRoom(std::size_t size) {
  return kLongestShown * size + PaddedView::padding;
}

inline char* copyVisible(char* to, PaddedView utf8) {
  return utf8.isPlain() ? utf8.copyTo(to) : showText(to, utf8);
}
inline char* copyVisible(char* to, std::string_view utf8) { return showText(to, utf8); }

/// Appends it so: a PaddedView or, slower, any view.
inline void appendVisible(TextBuffer& to, PaddedView utf8) {
  to.advanceTo(copyVisible(to.reserve(shownRoom(utf8.size())), utf8));
}
inline void appendVisible(TextBuffer& to, std::string_view utf8) {
  to.advanceTo(showText(to.reserve(shownRoom(utf8.size())), utf8));
}

}  // namespace mpuevent::tool

#endif
