#ifndef MPUEVENT_TOOL_PADDEDVIEW_H
#define MPUEVENT_TOOL_PADDEDVIEW_H

#include <cstddef>
#include <string_view>

namespace mpuevent::tool {

/// A text with `padding` bytes behind it that may be read and mean nothing, so that it can be
/// copied in blocks of fixed size. Only who has made room for the padding hands one out (Utf8Text,
/// and the texts of the program); a part of one is one.
class PaddedView {
 public:
  static constexpr std::size_t padding = 32;

  constexpr PaddedView() : text_(nothing.data(), 0) {}

  constexpr const char* data() const { return text_.data(); }
  constexpr std::size_t size() const { return text_.size(); }
  constexpr bool empty() const { return text_.empty(); }
  // NOLINTNEXTLINE(google-explicit-constructor): it is a text like any other.
  constexpr operator std::string_view() const { return text_; }

  constexpr PaddedView part(std::size_t at, std::size_t count) const {
    return PaddedView(text_.substr(at, count));
  }

 private:
  friend class Utf8Text;
  constexpr explicit PaddedView(std::string_view text) : text_(text) {}

  static constexpr std::string_view nothing{"                                "};
  static_assert(nothing.size() == padding);

  std::string_view text_;
};

}  // namespace mpuevent::tool

#endif
