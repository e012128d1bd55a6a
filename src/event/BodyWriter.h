#ifndef EVENT_BODYWRITER_H
#define EVENT_BODYWRITER_H

#include <Pegasus/Common/String.h>

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <span>
#include <string_view>

#include "event/Numbers.h"
#include "event/Recording.h"
#include "event/Text.h"

namespace mpuevent {

/// What follows the closing tag of an element; nothing ever follows the tags of a group.
enum class Separator : std::uint8_t { none, blank };

/// Writes two upper-case hex digits for each byte to `place`; returns how many characters that is.
std::size_t writeHex(char* place, std::string_view bytes);

/// Builds a body as bytes in one growing buffer. It knows the forms of elements and numbers and
/// is the only code that writes tags. Nothing is escaped. What is made is a `SizedWriter`.
class BodyWriter {
 public:
  BodyWriter(const BodyWriter&) = delete;
  BodyWriter& operator=(const BodyWriter&) = delete;

  std::size_t size() const { return static_cast<std::size_t>(next_ - buffer_); }
  std::string_view view() const { return {buffer_, size()}; }
  /// The bytes as a text: UTF-8 if they are, else Latin-1. What records on this thread is told, the
  /// first time, where the elements lie.
  Pegasus::String string();
  /// Tells the same of a body that leaves the writer as bytes.
  void tellElements() {
    if (marks_ != nullptr) string();
  }
  /// Whether something records and an element was written.
  bool hasMarks() const { return marks_ != nullptr; }
  /// Takes over where the elements of `other` lie, which holds the same as this body in another
  /// form: `positions` has for each place there the place here.
  void takeMarks(BodyWriter& other, std::span<const Pegasus::Uint32> positions);
  /// Drops what was written behind the first `size` bytes: whole elements, or a part of a value.
  void cut(std::size_t size) {
    assert(size <= this->size());
    next_ = buffer_ + size;
    if (marks_ != nullptr) marks_->cut(size);
  }

  void character(char value) {
    ascii_ = ascii_ && (static_cast<unsigned char>(value) & 0x80) == 0;
    *claim(1) = value;
  }
  /// What a record or a caller brings.
  void text(std::string_view value) {
    note(value);
    words(value);
  }
  /// Words of our own, which are ASCII.
  void words(std::string_view value);
  void decimal(std::int32_t value);
  void decimal(std::uint32_t value);
  void decimal(std::uint64_t value);
  /// Hex digits alone, filled up with zeros to at least `digits`.
  void hexDigits(std::uint64_t value, unsigned digits, bool upperCase);
  /// Two upper-case digits for each byte, nothing between them.
  void hexBytes(std::string_view bytes) { writeHex(claim(2 * bytes.size()), bytes); }
  void number(Format format, std::uint64_t value);

  /// "<key>" and "</key>" around the elements of a group.
  void openGroup(std::string_view key) { openTag(key); }
  void closeGroup(std::string_view key) { closeTag(key, Separator::none); }

  /// For an element whose value is written piece by piece between the two calls.
  void openElement(std::string_view key) { openTag(key); }
  void closeElement(std::string_view key) { closeTag(key, separator_); }

  /// `value` is taken as what a record brings. Who takes a key from there `note`s it, here as
  /// above.
  void element(std::string_view key, std::string_view value);
  void element(std::string_view key, Format format, std::uint64_t value);

  /// Room for `count` more bytes, which count as written: the caller fills them as after `reserve`.
  char* claim(std::size_t count) {
    char* place = reserve(count);
    next_ = place + count;
    return place;
  }

  /// Room for `count` more bytes, and for `slack` behind them that may be overwritten. `endAt`
  /// tells how many of them were written. Who writes what a record brings there `note`s it.
  char* reserve(std::size_t count) {
    if (count > room()) grow(count);
    return next_;
  }
  void endAt(char* end) {
    assert(end >= buffer_ && end <= limit_);
    next_ = end;
  }
  /// How many bytes `reserve` has without growing.
  std::size_t room() const { return static_cast<std::size_t>(limit_ - next_); }

  /// Looks at a text of the record, which may not be ASCII. Keys, numbers and words of our own are,
  /// so that the body need not be looked at once more when it becomes a String.
  void note(std::string_view text) { ascii_ = ascii_ && isAscii(text); }

  Separator separator() const { return separator_; }
  /// Whether something records: it is told of each element.
  bool isRecorded() const { return recording_ != nullptr; }
  /// A whole element that was written from `start` on, for what records.
  void tellElement(std::size_t start, std::size_t keySize) {
    if (isRecorded()) [[unlikely]]
      markElement(start, keySize);
  }

 protected:
  static constexpr std::size_t slack = 64;

  /// `room` has `slack` bytes behind those of `capacity`. What needs more goes to the heap.
  BodyWriter(Separator separator, char* room, std::size_t capacity)
      : buffer_(room), next_(room), limit_(room + capacity), separator_(separator) {}
  ~BodyWriter() = default;

 private:
  struct Free {
    void operator()(char* bytes) const { std::free(bytes); }
  };

  void grow(std::size_t count);
  /// The elements so far; only while something records.
  ElementMarks& marks() { return marks_ != nullptr ? *marks_ : firstMarks(); }
  [[gnu::noinline]] ElementMarks& firstMarks();
  void markElement(std::size_t start, std::size_t keySize);
  void openTag(std::string_view key);
  void closeTag(std::string_view key, Separator behind);

  char* buffer_;  ///< the room it was given, or `grown_`
  char* next_;    ///< where the next byte goes
  char* limit_;   ///< the end of the room but for the slack
  std::unique_ptr<char, Free> grown_;
  Separator separator_;
  bool ascii_ = true;
  Recording* recording_ = recording();
  std::unique_ptr<ElementMarks> marks_;
};

/// A writer with room for so many bytes in itself: a text that is no longer takes none from the
/// heap.
template <std::size_t capacity>
class SizedWriter : public BodyWriter {
 public:
  explicit SizedWriter(Separator separator = Separator::blank)
      : BodyWriter(separator, room_, capacity) {}

 private:
  char room_[capacity + slack];
};

using BodyBuffer = SizedWriter<12 * 1024>;
using LineBuffer = SizedWriter<256>;

}  // namespace mpuevent

#endif
