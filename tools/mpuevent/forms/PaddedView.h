#ifndef MPUEVENT_TOOL_PADDEDVIEW_H
#define MPUEVENT_TOOL_PADDEDVIEW_H

#include <cstddef>
#include <cstring>
#include <string_view>

namespace mpuevent::tool {

/// A text with `padding` bytes behind it that may be read and mean nothing, so that it can be
/// copied in blocks of fixed size. Only who has made room for the padding hands one out (Utf8Text,
/// and the texts of the program); a part of one is one.
///
/// A plain one is known to be printable ASCII without quotes and backslashes, which every form
/// writes as it is.
class PaddedView {
 public:
  static constexpr std::size_t padding = 32;

  constexpr PaddedView() : text_(nothing.data(), 0) {}

  constexpr const char* data() const { return text_.data(); }
  constexpr std::size_t size() const { return text_.size(); }
  constexpr bool empty() const { return text_.empty(); }
  constexpr bool isPlain() const { return plain_; }
  // NOLINTNEXTLINE(google-explicit-constructor): it is a text like any other.
  constexpr operator std::string_view() const { return text_; }

  constexpr PaddedView part(std::size_t at, std::size_t count) const {
    return PaddedView(text_.substr(at, count), plain_);
  }

  /// Copies it to where there is room for all of it and the padding; returns the end.
  char* copyTo(char* to) const {
    std::memcpy(to, text_.data(), padding);
    for (std::size_t at = padding; at < text_.size(); at += padding) {
      std::memcpy(to + at, text_.data() + at, padding);
    }
    return to + text_.size();
  }

 private:
  friend class Utf8Text;
  constexpr PaddedView(std::string_view text, bool plain) : text_(text), plain_(plain) {}

  static constexpr std::string_view nothing{"                                "};
  static_assert(nothing.size() == padding);

  std::string_view text_;
  bool plain_ = true;
};

}  // namespace mpuevent::tool

#endif
