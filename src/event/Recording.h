#ifndef EVENT_RECORDING_H
#define EVENT_RECORDING_H

#include <MPUEvent/FieldRecorder.h>
#include <MPUEvent/Quarn_Event.h>

#include <atomic>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace mpuevent {

using Pegasus::RecordedField;

/// A row of elements. There is always room for one more, so that adding one, which is done for all
/// of each event, is a few stores.
class RecordedFields {
 public:
  void add(const RecordedField& field) {
    fields_[count_++] = field;
    if (count_ == room_) [[unlikely]]
      grow();
  }
  void dropLast() { --count_; }
  void clear() { count_ = 0; }

  std::size_t size() const { return count_; }
  RecordedField& operator[](std::size_t index) { return fields_[index]; }
  RecordedField* begin() const { return fields_.get(); }
  RecordedField* end() const { return begin() + count_; }

 private:
  static constexpr std::size_t first = 64;

  [[gnu::noinline]] void grow();

  std::size_t count_ = 0;
  std::size_t room_ = first;
  std::unique_ptr<RecordedField[]> fields_ = std::make_unique_for_overwrite<RecordedField[]>(first);
};

/// Where the elements of one text lie, in the order of their opening tags.
class ElementMarks {
 public:
  /// Notes an element that was written whole, from `start` up to `end`. White space may follow it
  /// up to `next`.
  void add(std::size_t start, std::size_t keySize, std::size_t end, std::size_t next);
  /// The opening tag of an element begins at `start`.
  void open(std::size_t start, std::size_t keySize);
  /// The element opened last of those still open has its closing tag from `valueEnd` to `end`.
  /// White space may follow it up to `next`.
  void close(std::size_t valueEnd, std::size_t end, std::size_t next);
  /// Forgets the elements that begin at `size` or behind.
  void cut(std::size_t size);
  void clear();

  /// Moves every position to where `positions` has it.
  void moveTo(std::span<const Pegasus::Uint32> positions);

  /// Appends the elements to `fields`, `offset` units further on, and keeps none of them.
  void moveInto(RecordedFields& fields, Pegasus::Uint32 offset);

  /// Whether there is nothing but white space around and between the elements. The text is looked
  /// at only if it is not known from how they were written.
  bool cover(const Pegasus::String& text) {
    return (gapless_ && next_ == text.size()) || coverAsSeen(text);
  }

 private:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  /// Nothing but white space is known to stand before `start` and behind what was noted last.
  void goOnAt(std::size_t start, std::size_t next) {
    gapless_ = gapless_ && start == next_;
    next_ = next;
  }
  bool coverAsSeen(const Pegasus::String& text);

  RecordedFields fields_;
  std::size_t open_ = none;  ///< the innermost; the length of its value is the next outer one
  Pegasus::Uint32 depth_ = 0;
  std::size_t next_ = 0;  ///< behind what was noted last, and the white space there
  bool gapless_ = true;   ///< whether each element began where the one before it ended
  std::vector<const RecordedField*> groups_;  ///< room for cover()
};

/// What a `FieldRecorder` does. Texts with marked elements are handed to it as they are finished;
/// it looks for them in what becomes the Body of the thread's newest event.
class Recording {
 public:
  Recording();
  ~Recording();
  Recording(const Recording&) = delete;
  Recording& operator=(const Recording&) = delete;

  /// A new event, with an empty Body.
  void begin(const Pegasus::Quarn_Event* event);
  std::unique_ptr<ElementMarks> blankMarks();
  /// A text that may become a Body or a part of one; its marks count units.
  void add(const Pegasus::String& text, std::unique_ptr<ElementMarks> marks);
  /// The same of a text that is one element.
  void addElement(const Pegasus::String& element, Pegasus::Uint32 keySize);
  /// `before` is the Body that `text` takes the place of.
  void bodySet(const Pegasus::Quarn_Event* event, const Pegasus::String& before,
               const Pegasus::String& text);
  /// `text` begins at `start` in the Body.
  void bodyAppended(const Pegasus::Quarn_Event* event, Pegasus::Uint32 start,
                    const Pegasus::String& text);

  std::span<const RecordedField> fields() const { return {fields_.begin(), fields_.size()}; }
  bool isComplete() const { return complete_; }

 private:
  struct Piece {
    Pegasus::String text;
    std::unique_ptr<ElementMarks> marks;
    bool used;
  };

  void setWhole();
  void join(const Pegasus::String& text, Pegasus::Uint32 start);
  Piece* pieceAt(const Pegasus::String& text, Pegasus::Uint32 at, std::size_t& next);
  void dropPieces();

  const Pegasus::Quarn_Event* event_ = nullptr;
  RecordedFields fields_;
  bool complete_ = true;
  std::vector<Piece> pieces_;  ///< not found in a Body yet, in the order they were made
  std::size_t pieceSizes_ = 0;
  std::vector<std::unique_ptr<ElementMarks>> spare_;
  Recording* outer_;
};

namespace detail {

/// How many recorders there are in the process.
[[gnu::visibility("hidden")]] extern constinit std::atomic<int> recorders;

Recording* recordingOfThread();

}  // namespace detail

/// What records on this thread, or null. Costs a look at one number as long as nobody records.
inline Recording* recording() {
  return detail::recorders.load(std::memory_order_relaxed) == 0 ? nullptr
                                                                : detail::recordingOfThread();
}

}  // namespace mpuevent

#endif
