#ifndef MPUEVENT_TOOL_PADDEDVIEW_H
#define MPUEVENT_TOOL_PADDEDVIEW_H

#include <cassert>
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

  constexpr PaddedView() : PaddedView({nothing.data(), 0}, true) {}

  constexpr const char* data() const { return data_; }
  constexpr std::size_t size() const { return sizeAndPlain_ >> 1; }
  constexpr bool empty() const { return size() == 0; }
  constexpr bool isPlain() const { return (sizeAndPlain_ & 1) != 0; }
  // NOLINTNEXTLINE(google-explicit-constructor): it is a text like any other.
  constexpr operator std::string_view() const { return {data_, size()}; }

  /// Which must lie within the text. `plain`: it is known to be.
  constexpr PaddedView part(std::size_t at, std::size_t count, bool plain) const {
    assert(at <= size() && count <= size() - at && (!plain || isPlain()));
    return PaddedView({data_ + at, count}, plain);
  }

  /// Copies it to where there is room for all of it and the padding; returns the end.
  char* copyTo(char* to) const {
    std::memcpy(to, data_, padding);
    for (std::size_t at = padding; at < size(); at += padding) {
      std::memcpy(to + at, data_ + at, padding);
    }
    return to + size();
  }

 private:
  friend class Utf8Text;
  constexpr PaddedView(std::string_view text, bool plain)
      : data_(text.data()), sizeAndPlain_(text.size() << 1 | (plain ? 1U : 0U)) {}

  static constexpr std::string_view nothing{"                                "};
  static_assert(nothing.size() == padding);

  const char* data_;
  // In one, so that all of it goes into two registers: what is written in parts and read as a whole
  // has to wait.
  std::size_t sizeAndPlain_;
};

}  // namespace mpuevent::tool

#endif
