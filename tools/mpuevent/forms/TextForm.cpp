#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "Colours.h"
#include "EventFacts.h"
#include "EventForm.h"
#include "HexDump.h"
#include "Numbers.h"
#include "Utf8.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kIndent = 2;
constexpr std::size_t kWidestAligned = 32;

constexpr std::string_view kBlanks = "                                ";

// Writes blanks to where there is room for all of them and kBlanks; returns the end.
char* writeBlanks(char* to, std::size_t count) {
  std::memcpy(to, kBlanks.data(), kBlanks.size());
  for (std::size_t at = kBlanks.size(); at < count; at += kBlanks.size()) {
    std::memcpy(to + at, kBlanks.data(), kBlanks.size());
  }
  return to + count;
}

/// The facts of an event as labelled lines.
template <bool coloured>
class TextBlock {
 public:
  explicit TextBlock(TextBuffer& to) : to_(to) {}

  void heading(std::string_view file) {
    char* place = to_.reserve(shownRoom(file.size()) + kMarksRoom);
    place = colour(place, kBold);
    place = copy(place, "==> ");
    place = copyVisible(place, file);
    place = copy(place, " <==");
    place = colour(place, kPlain);
    end(place);
  }

  void write(const EventFacts& facts) {
    facts.describeEvent(*this);
    facts.describeBody(*this);
    facts.describeRecord(*this);
  }

  void number(const FactKey& key, std::uint64_t number) {
    end(writeDecimal(beginLine(key, kDecimalRoom), number));
  }
  void timestamp(const FactKey& key, std::uint64_t number, std::string_view date) {
    char* place = writeDecimal(beginLine(key, kDecimalRoom + date.size()), number);
    if (!date.empty()) {
      place = copy(place, " (");
      place = copy(place, date);
      *place++ = ')';
    }
    end(place);
  }
  void offset(const FactKey& key, std::uint64_t offset) {
    end(writeHex(beginLine(key, kHexRoom), offset));
  }
  template <typename Text>
  void text(const FactKey& key, Text utf8) {
    end(copyVisible(beginLine(key, shownRoom(utf8.size()), !utf8.empty()), utf8));
  }
  void coded(const FactKey&, unsigned code, const FactKey& wordKey, PaddedView word) {
    char* place = beginLine(wordKey, shownRoom(word.size()) + kDecimalRoom);
    const std::string_view shade =
        &wordKey == &"event_type"_key ? colourOfType(code) : std::string_view();
    place = colour(place, shade);
    place = copyVisible(place, word);
    if (!shade.empty()) place = colour(place, kPlain);
    place = copy(place, word.empty() ? "(" : " (");
    place = writeDecimal(place, code);
    *place++ = ')';
    end(place);
  }

  void body(const FactKey& key, PaddedView utf8, const FactKey&, const BodyFields* fields) {
    if (fields == nullptr || fields->empty()) {
      text(key, utf8);
      return;
    }
    end(beginLine(key, 0, false));
    fields->forEach([this, column = valueColumn(*fields)](const BodyField& field) {
      if (field.kind != BodyField::groupEnd) element(field, column);
    });
  }

  // What the lines before tell already is not told twice; where the events come from stands in the
  // headings.
  void detail(const FactKey& key, std::uint64_t number, bool telling) {
    if (telling) this->number(key, number);
  }
  void payload(const FactKey& key, std::optional<std::span<const unsigned char>> bytes) {
    if (!bytes || bytes->empty()) return;
    to_.advanceTo(writeDecimal(beginLine(key, kDecimalRoom), bytes->size()));
    to_ += bytes->size() == 1 ? " byte\n" : " bytes\n";
    appendHexDump(to_, *bytes);
  }
  void file(const FactKey&, std::optional<PaddedView>) {}
  void time(const FactKey&, std::string_view) {}

 private:
  // For a line's colours, brackets and end.
  static constexpr std::size_t kMarksRoom = 64;

  static char* copy(char* to, std::string_view text) {
    return std::copy(text.begin(), text.end(), to);
  }
  static char* colour(char* to, std::string_view code) { return coloured ? copy(to, code) : to; }

  // Writes the label, which is the key in words: "event_id" becomes "Event id:". Behind it there is
  // room for a value of that size, and for marks.
  char* beginLine(const FactKey& key, std::size_t valueRoom, bool valueFollows = true) {
    char* const place = to_.reserve(FactKey::labelRoom + valueRoom + kMarksRoom);
    const std::size_t width = key.size + 1;
    if constexpr (!coloured) {
      std::memcpy(place, key.label.data(), FactKey::labelRoom);
      return place + (valueFollows ? FactKey::labelWidth : width);
    }
    char* end = copy(place, kFaint);
    end = copy(end, {key.label.data(), width});
    end = copy(end, kPlain);
    return valueFollows ? copy(end, {key.label.data() + width, FactKey::labelWidth - width}) : end;
  }
  void end(char* place) {
    *place++ = '\n';
    to_.advanceTo(place);
  }

  static std::size_t indentOf(const BodyField& field) { return (field.depth + 1) * kIndent; }

  void element(const BodyField& field, std::size_t column) {
    const std::size_t indent = indentOf(field);
    char* place = to_.reserve(shownRoom(field.key.size()) + shownRoom(field.text.size()) + indent +
                              column + kMarksRoom);
    place = writeBlanks(place, indent);
    place = colour(place, kFaint);
    const char* const begin = place;
    place = copyVisible(place, field.key);
    *place++ = ':';
    const std::size_t width = indent + static_cast<std::size_t>(place - begin);
    place = colour(place, kPlain);
    if (field.kind == BodyField::value && !field.text.empty()) {
      place = writeBlanks(place, width < column ? column - width : 1);
      place = copyVisible(place, field.text);
    }
    end(place);
  }

  // Where the values begin: behind the longest key, unless it is very long.
  static std::size_t valueColumn(const BodyFields& fields) {
    std::size_t column = 0;
    fields.forEach([&column](const BodyField& field) {
      if (field.kind != BodyField::value) return;
      const std::size_t width = indentOf(field) + field.key.size() + 2;
      column = std::max(column, std::min(width, kWidestAligned));
    });
    return column;
  }

  TextPen to_;
};

class TextForm : public EventForm {
 public:
  TextForm(ShowPayload payload, bool coloured) : coloured_(coloured), facts_(payload) {}

  void beginFile(std::string_view name) override { heading_ = name; }

  void write(const DecodedEvent& decoded, TextBuffer& to) override {
    facts_.read(decoded);
    if (!first_) to += '\n';
    first_ = false;
    if (coloured_) {
      writeBlock<true>(to);
    } else {
      writeBlock<false>(to);
    }
  }

 private:
  template <bool coloured>
  void writeBlock(TextBuffer& to) {
    TextBlock<coloured> block(to);
    if (heading_) block.heading(*heading_);
    heading_.reset();
    block.write(facts_);
  }

  const bool coloured_;
  bool first_ = true;
  std::optional<std::string> heading_;  // to come before the next event
  EventFacts facts_;
};

}  // namespace

std::unique_ptr<EventForm> makeTextForm(ShowPayload payload, bool coloured) {
  return std::make_unique<TextForm>(payload, coloured);
}

}  // namespace mpuevent::tool
