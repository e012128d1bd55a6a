#include <algorithm>
#include <string>

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

/// The facts of an event as labelled lines.
class TextBlock {
 public:
  TextBlock(TextBuffer& to, bool coloured) : to_(to), coloured_(coloured) {}

  void heading(std::string_view file) {
    colour(kBold);
    to_ += "==> ";
    appendVisible(to_, file);
    to_ += " <==";
    colour(kPlain);
    to_ += '\n';
  }

  void write(const EventFacts& facts) {
    facts.describeEvent(*this);
    facts.describeBody(*this);
    facts.describeRecord(*this);
  }

  void number(const FactKey& key, std::uint64_t number) {
    label(key);
    appendDecimal(to_, number);
    to_ += '\n';
  }
  void timestamp(const FactKey& key, std::uint64_t number, std::string_view date) {
    label(key);
    appendDecimal(to_, number);
    if (!date.empty()) {
      to_ += " (";
      to_ += date;
      to_ += ')';
    }
    to_ += '\n';
  }
  void offset(const FactKey& key, std::uint64_t offset) {
    label(key);
    appendHex(to_, offset);
    to_ += '\n';
  }
  template <typename Text>
  void text(const FactKey& key, Text utf8) {
    label(key, !utf8.empty());
    appendVisible(to_, utf8);
    to_ += '\n';
  }
  void coded(const FactKey&, unsigned code, const FactKey& wordKey, PaddedView word) {
    label(wordKey);
    const std::string_view shade =
        &wordKey == &"event_type"_key ? colourOfType(code) : std::string_view();
    colour(shade);
    appendVisible(to_, word);
    if (!shade.empty()) colour(kPlain);
    to_ += word.empty() ? "(" : " (";
    appendDecimal(to_, code);
    to_ += ")\n";
  }

  void body(const FactKey& key, PaddedView utf8, const FactKey&, const BodyFields* fields) {
    if (fields == nullptr || fields->empty()) {
      text(key, utf8);
      return;
    }
    label(key, false);
    to_ += '\n';
    std::size_t level = 1;
    const std::size_t column = valueColumn(*fields);
    fields->forEach([&](const BodyField& field) {
      if (field.kind == BodyField::groupEnd) {
        --level;
      } else {
        element(field, level * kIndent, column);
        level += field.kind == BodyField::groupBegin ? 1U : 0U;
      }
    });
  }

  // What the lines before tell already is not told twice; where the events come from stands in the
  // headings.
  void detail(const FactKey& key, std::uint64_t number, bool telling) {
    if (telling) this->number(key, number);
  }
  void payload(const FactKey& key, std::optional<std::span<const unsigned char>> bytes) {
    if (!bytes || bytes->empty()) return;
    label(key);
    appendDecimal(to_, bytes->size());
    to_ += bytes->size() == 1 ? " byte\n" : " bytes\n";
    appendHexDump(to_, *bytes);
  }
  void file(const FactKey&, std::optional<PaddedView>) {}
  void time(const FactKey&, std::string_view) {}

 private:
  void colour(std::string_view code) {
    if (coloured_) to_ += code;
  }

  // The label is the key in words: "event_id" becomes "Event id:".
  void label(const FactKey& key, bool valueFollows = true) {
    const std::string_view padded(key.label.data(), key.label.size());
    const std::size_t width = key.size + 1;
    if (!coloured_) {
      to_ += valueFollows ? padded : padded.substr(0, width);
      return;
    }
    colour(kFaint);
    to_ += padded.substr(0, width);
    colour(kPlain);
    if (valueFollows) to_ += padded.substr(width);
  }

  void element(const BodyField& field, std::size_t indent, std::size_t column) {
    to_.fill(indent, ' ');
    colour(kFaint);
    const std::size_t begin = to_.size();
    appendVisible(to_, field.key);
    to_ += ':';
    const std::size_t width = indent + to_.size() - begin;
    colour(kPlain);
    if (field.kind == BodyField::value && !field.text.empty()) {
      to_.fill(width < column ? column - width : 1, ' ');
      appendVisible(to_, field.text);
    }
    to_ += '\n';
  }

  // Where the values begin: behind the longest key, unless it is very long.
  static std::size_t valueColumn(const BodyFields& fields) {
    std::size_t column = 0;
    std::size_t level = 1;
    fields.forEach([&](const BodyField& field) {
      if (field.kind == BodyField::value) {
        const std::size_t width = level * kIndent + field.key.size() + 2;
        column = std::max(column, std::min(width, kWidestAligned));
      }
      level += field.kind == BodyField::groupBegin ? 1U : 0U;
      level -= field.kind == BodyField::groupEnd ? 1U : 0U;
    });
    return column;
  }

  TextPen to_;
  const bool coloured_;
};

class TextForm : public EventForm {
 public:
  TextForm(ShowPayload payload, bool coloured) : coloured_(coloured), facts_(payload) {}

  void beginFile(std::string_view name) override { heading_ = name; }

  void write(const DecodedEvent& decoded, TextBuffer& to) override {
    facts_.read(decoded);
    if (!first_) to += '\n';
    first_ = false;
    TextBlock block(to, coloured_);
    if (heading_) block.heading(*heading_);
    heading_.reset();
    block.write(facts_);
  }

 private:
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
