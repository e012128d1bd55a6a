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

/// Where the elements of one text lie, in the order of their opening tags.
class ElementMarks {
 public:
  /// Notes an element that was written whole, from `start` up to `end`.
  void add(std::size_t start, std::size_t keySize, std::size_t end) {
    constexpr std::size_t closingMarks = 3;  // "</" and ">"
    const std::size_t valueStart = start + keySize + 2;
    const std::size_t valueSize = end - keySize - closingMarks - valueStart;
    const auto count = [](std::size_t units) { return static_cast<Pegasus::Uint32>(units); };
    fields_.push_back({count(start), count(end - start), count(start + 1), count(keySize),
                       count(valueStart), count(valueSize), depth_, false});
  }
  /// The opening tag of an element begins at `start`.
  void open(std::size_t start, std::size_t keySize);
  /// The element opened last of those still open has its closing tag from `valueEnd` to `end`.
  void close(std::size_t valueEnd, std::size_t end);
  /// Forgets the elements that begin at `size` or behind.
  void cut(std::size_t size);
  void clear();

  /// Moves every position to where `positions` has it.
  void moveTo(std::span<const Pegasus::Uint32> positions);

  /// Appends the elements to `fields`, `offset` units further on, and keeps none of them.
  void moveInto(std::vector<RecordedField>& fields, Pegasus::Uint32 offset);

  /// Whether there is nothing but white space around and between the elements.
  bool cover(const Pegasus::String& text);

 private:
  static constexpr std::size_t none = static_cast<std::size_t>(-1);

  std::vector<RecordedField> fields_;
  std::size_t open_ = none;  ///< the innermost; the length of its value is the next outer one
  Pegasus::Uint32 depth_ = 0;
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

  std::span<const RecordedField> fields() const { return fields_; }
  bool isComplete() const { return complete_; }

 private:
  struct Piece {
    Pegasus::String text;
    std::unique_ptr<ElementMarks> marks;
    bool used;
  };

  void join(const Pegasus::String& text, Pegasus::Uint32 start);
  Piece* pieceAt(const Pegasus::String& text, Pegasus::Uint32 at, std::size_t& next);
  void dropPieces();

  const Pegasus::Quarn_Event* event_ = nullptr;
  std::vector<RecordedField> fields_;
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
