#ifndef MPUEVENT_TOOL_TEXTBUFFER_H
#define MPUEVENT_TOOL_TEXTBUFFER_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

namespace mpuevent::tool {

/// A growing text. Unlike a `std::string` it gives room to write to without clearing it first.
class TextBuffer {
 public:
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  std::string_view view() const { return {room_.get(), size_}; }
  void clear() { size_ = 0; }

  /// Where the next `count` bytes go. They count as written when advanceTo() says so.
  char* reserve(std::size_t count) {
    if (count > room()) grow(count);
    return room_.get() + size_;
  }
  /// How many bytes may be written before room is needed.
  std::size_t room() const { return capacity_ - size_; }
  /// The text ends at `end`, which lies in the room reserved last.
  void advanceTo(const char* end) { size_ = static_cast<std::size_t>(end - room_.get()); }

  TextBuffer& operator+=(char value) {
    *reserve(1) = value;
    ++size_;
    return *this;
  }
  TextBuffer& operator+=(std::string_view text) {
    if (!text.empty()) std::memcpy(reserve(text.size()), text.data(), text.size());
    size_ += text.size();
    return *this;
  }
  void fill(std::size_t count, char value) {
    std::fill_n(reserve(count), count, value);
    size_ += count;
  }

 private:
  [[gnu::noinline]] void grow(std::size_t count) {
    const std::size_t capacity = std::max(2 * capacity_, size_ + count);
    auto room = std::make_unique_for_overwrite<char[]>(capacity);
    if (size_ != 0) std::memcpy(room.get(), room_.get(), size_);
    room_ = std::move(room);
    capacity_ = capacity;
  }

  std::unique_ptr<char[]> room_;
  std::size_t size_ = 0;
  std::size_t capacity_ = 0;
};

/// Writes at the end of a TextBuffer, which nobody else uses meanwhile. Where the end is stands in
/// the memory of a buffer, which each character written might have changed; that of a local pen
/// stays in a register.
class TextPen {
 public:
  explicit TextPen(TextBuffer& to) : to_(to), place_(to.reserve(0)), limit_(place_ + to.room()) {}
  TextPen(const TextPen&) = delete;
  TextPen& operator=(const TextPen&) = delete;
  ~TextPen() { to_.advanceTo(place_); }

  char* reserve(std::size_t count) {
    if (count > static_cast<std::size_t>(limit_ - place_)) [[unlikely]] {
      to_.advanceTo(place_);
      place_ = to_.reserve(count);
      limit_ = place_ + to_.room();
    }
    return place_;
  }
  void advanceTo(char* end) { place_ = end; }

  TextPen& operator+=(char value) {
    *reserve(1) = value;
    ++place_;
    return *this;
  }
  TextPen& operator+=(std::string_view text) {
    if (!text.empty()) std::memcpy(reserve(text.size()), text.data(), text.size());
    place_ += text.size();
    return *this;
  }

 private:
  TextBuffer& to_;
  char* place_;
  char* limit_;
};

}  // namespace mpuevent::tool

#endif
