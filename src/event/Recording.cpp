#include "event/Recording.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <utility>

namespace mpuevent {

using Pegasus::Quarn_Event;
using Pegasus::String;
using Pegasus::Uint32;

namespace {

/// Without a destructor: nothing of it is left to run when the library is unloaded.
constinit thread_local Recording* innermost = nullptr;

/// Texts kept for a Body that may never come are forgotten beyond this many units.
constexpr std::size_t longestPieces = std::size_t{1} << 22;

Uint32 unitCount(std::size_t count) { return static_cast<Uint32>(count); }

RecordedField elementFrom(Uint32 start, Uint32 keySize, Uint32 end, Uint32 depth) {
  constexpr Uint32 closingMarks = 3;  // "</" and ">"
  const Uint32 valueStart = start + keySize + 2;
  const Uint32 valueEnd = end - keySize - closingMarks;
  return {start, end - start, start + 1, keySize, valueStart, valueEnd - valueStart, depth, false};
}

bool isWhiteSpace(Pegasus::Char16 unit) {
  const Pegasus::Uint16 value = unit;
  return value == ' ' || value == '\n' || value == '\r' || value == '\t';
}

bool isWhiteSpace(const Pegasus::Char16* units, Uint32 from, Uint32 to) {
  for (Uint32 i = from; i < to; ++i) {
    if (!isWhiteSpace(units[i])) return false;
  }
  return true;
}

/// Copies of a String mostly share their units.
bool isSame(const String& text, const String& other) {
  return text.getChar16Data() == other.getChar16Data() && text.size() == other.size();
}

bool standsAt(const String& text, Uint32 at, const String& piece) {
  const Pegasus::Char16* place = text.getChar16Data() + at;
  const Uint32 size = piece.size();
  if (size > text.size() - at) return false;
  // Copies of a String mostly share their units.
  return place == piece.getChar16Data() ||
         std::memcmp(place, piece.getChar16Data(), size * sizeof *place) == 0;
}

}  // namespace

namespace detail {

constinit std::atomic<int> recorders{0};

Recording* recordingOfThread() { return innermost; }

}  // namespace detail

void RecordedFields::grow() {
  auto room = std::make_unique_for_overwrite<RecordedField[]>(2 * room_);
  std::copy_n(fields_.get(), count_, room.get());
  fields_ = std::move(room);
  room_ *= 2;
}

void ElementMarks::add(std::size_t start, std::size_t keySize, std::size_t end, std::size_t next) {
  goOnAt(start, next);
  fields_.add(elementFrom(unitCount(start), unitCount(keySize), unitCount(end), depth_));
}

void ElementMarks::open(std::size_t start, std::size_t keySize) {
  const std::size_t valueStart = start + keySize + 2;
  goOnAt(start, valueStart);
  fields_.add({unitCount(start), 0, unitCount(start + 1), unitCount(keySize), unitCount(valueStart),
               unitCount(open_), depth_, false});
  open_ = fields_.size() - 1;
  ++depth_;
}

void ElementMarks::close(std::size_t valueEnd, std::size_t end, std::size_t next) {
  assert(depth_ > 0);
  RecordedField& field = fields_[open_];
  field.isGroup = open_ + 1 < fields_.size();
  goOnAt(field.isGroup ? valueEnd : next_, next);
  open_ = --depth_ == 0 ? none : field.valueLength;
  field.valueLength = unitCount(valueEnd) - field.valueStart;
  field.length = unitCount(end) - field.start;
}

void ElementMarks::cut(std::size_t size) {
  gapless_ = gapless_ && size == next_;
  while (fields_.size() != 0 && fields_[fields_.size() - 1].start >= size) {
    assert(open_ == none || open_ < fields_.size() - 1);
    fields_.dropLast();
  }
}

void ElementMarks::clear() {
  fields_.clear();
  open_ = none;
  depth_ = 0;
  next_ = 0;
  gapless_ = true;
}

void ElementMarks::moveTo(std::span<const Uint32> positions) {
  assert(depth_ == 0);
  gapless_ = false;
  const auto move = [positions](Uint32& start, Uint32& length) {
    length = positions[start + length] - positions[start];
    start = positions[start];
  };
  for (RecordedField& field : fields_) {
    move(field.start, field.length);
    move(field.keyStart, field.keyLength);
    move(field.valueStart, field.valueLength);
  }
}

void ElementMarks::moveInto(RecordedFields& fields, Uint32 offset) {
  if (fields.size() == 0 && offset == 0) return std::swap(fields, fields_);
  for (RecordedField field : fields_) {
    field.start += offset;
    field.keyStart += offset;
    field.valueStart += offset;
    fields.add(field);
  }
}

bool ElementMarks::coverAsSeen(const String& text) {
  const Pegasus::Char16* const units = text.getChar16Data();
  // Those that are open at `at`, up to which all is accounted for.
  groups_.clear();
  Uint32 at = 0;
  const auto leave = [&](Uint32 depth) {
    for (; groups_.size() > depth; groups_.pop_back()) {
      const RecordedField& group = *groups_.back();
      if (!isWhiteSpace(units, at, group.valueStart + group.valueLength)) return false;
      at = group.start + group.length;
    }
    return true;
  };
  for (const RecordedField& field : fields_) {
    if (!leave(field.depth) || !isWhiteSpace(units, at, field.start)) return false;
    at = field.isGroup ? field.valueStart : field.start + field.length;
    if (field.isGroup) groups_.push_back(&field);
  }
  return leave(0) && isWhiteSpace(units, at, text.size());
}

Recording::Recording() : outer_(innermost) {
  innermost = this;
  detail::recorders.fetch_add(1, std::memory_order_relaxed);
}

Recording::~Recording() {
  detail::recorders.fetch_sub(1, std::memory_order_relaxed);
  innermost = outer_;
}

void Recording::begin(const Quarn_Event* event) {
  event_ = event;
  fields_.clear();
  complete_ = true;
  dropPieces();
}

std::unique_ptr<ElementMarks> Recording::blankMarks() {
  if (spare_.empty()) return std::make_unique<ElementMarks>();
  std::unique_ptr<ElementMarks> marks = std::move(spare_.back());
  spare_.pop_back();
  return marks;
}

void Recording::add(const String& text, std::unique_ptr<ElementMarks> marks) {
  if (pieceSizes_ > longestPieces) dropPieces();
  pieceSizes_ += text.size();
  pieces_.push_back({text, std::move(marks), false});
}

void Recording::addElement(const String& element, Uint32 keySize) {
  std::unique_ptr<ElementMarks> marks = blankMarks();
  marks->add(0, keySize, element.size(), element.size());
  add(element, std::move(marks));
}

void Recording::bodySet(const Quarn_Event* event, const String& before, const String& text) {
  if (event != event_) return;
  if (pieces_.size() == 1 && isSame(pieces_.front().text, text)) return setWhole();
  const bool goesOn =
      before.size() > 0 && text.size() >= before.size() && standsAt(text, 0, before);
  if (goesOn) return join(text.subString(before.size()), before.size());
  fields_.clear();
  complete_ = true;
  join(text, 0);
}

/// Most Bodies are one text as it was made.
void Recording::setWhole() {
  const Piece& piece = pieces_.front();
  fields_.clear();
  complete_ = piece.marks->cover(piece.text);
  piece.marks->moveInto(fields_, 0);
  dropPieces();
}

void Recording::bodyAppended(const Quarn_Event* event, Uint32 start, const String& text) {
  if (event == event_) join(text, start);
}

/// Takes over the elements of a text that is a row of pieces with white space between them; of any
/// other those before what is unknown.
void Recording::join(const String& text, Uint32 start) {
  std::size_t next = 0;
  for (Uint32 at = 0; complete_ && at < text.size();) {
    Piece* piece = pieceAt(text, at, next);
    if (piece == nullptr) {
      complete_ = isWhiteSpace(text.getChar16Data(), at, at + 1);
      ++at;
      continue;
    }
    piece->used = true;
    complete_ = piece->marks->cover(piece->text);
    piece->marks->moveInto(fields_, start + at);
    at += piece->text.size();
  }
  dropPieces();
}

/// The piece that stands at `at`: the one behind the last that was found, if it does, else any.
Recording::Piece* Recording::pieceAt(const String& text, Uint32 at, std::size_t& next) {
  for (std::size_t tries = 0; tries < pieces_.size(); ++tries) {
    std::size_t index = next + tries;
    if (index >= pieces_.size()) index -= pieces_.size();
    Piece& piece = pieces_[index];
    if (piece.used || !standsAt(text, at, piece.text)) continue;
    next = index + 1;
    return &piece;
  }
  return nullptr;
}

void Recording::dropPieces() {
  constexpr std::size_t mostSpares = 4;
  for (Piece& piece : pieces_) {
    if (spare_.size() == mostSpares) break;
    piece.marks->clear();
    spare_.push_back(std::move(piece.marks));
  }
  pieces_.clear();
  pieceSizes_ = 0;
}

}  // namespace mpuevent

namespace Pegasus {

FieldRecorder::FieldRecorder() : recording_(new mpuevent::Recording) {}
FieldRecorder::~FieldRecorder() { delete recording_; }

const RecordedField* FieldRecorder::begin() const { return recording_->fields().data(); }
const RecordedField* FieldRecorder::end() const { return begin() + size(); }
std::size_t FieldRecorder::size() const { return recording_->fields().size(); }
bool FieldRecorder::isComplete() const { return recording_->isComplete(); }

}  // namespace Pegasus
