#include "Columns.h"
#include "EventFacts.h"
#include "EventForm.h"
#include "JsonElements.h"
#include "JsonWriter.h"

namespace mpuevent::tool {

namespace {

/// The facts of an event as members of an object.
class JsonObject {
 public:
  JsonObject(TextBuffer& to, const JsonLayout& layout) : writer_(to), layout_(layout) {}

  [[gnu::always_inline]] void write(const EventFacts& facts) {
    writer_.beginObject();
    facts.describeEvent(*this);
    facts.describeBody(*this);
    facts.describeRecord(*this);
    writer_.endObject();
  }

  void write(FactRow& row, const std::vector<Column>& columns) {
    writer_.beginObject();
    for (const Column& column : columns) {
      writer_.plainKey(column.name);
      std::visit(*this, row.value(column));
    }
    writer_.endObject();
  }
  void operator()(std::monostate) { writer_.null(); }
  void operator()(std::uint64_t number) { writer_.number(number); }
  void operator()(std::string_view text) { writer_.text(text); }
  void operator()(std::span<const unsigned char> bytes) { writer_.hex(bytes); }
  void operator()(const BodyFields* fields) { elements(fields); }

  void number(const FactKey& key, std::uint64_t number) { writer_.member(key, number); }
  void timestamp(const FactKey& key, std::uint64_t count, std::string_view) { number(key, count); }
  void time(const FactKey& key, std::string_view date) {
    if (!date.empty()) text(key, date);
  }
  void offset(const FactKey& key, std::uint64_t offset) { number(key, offset); }
  template <typename Text>
  void text(const FactKey& key, Text utf8) {
    writer_.member(key, utf8);
  }
  void coded(const FactKey& codeKey, unsigned code, const FactKey& wordKey, PaddedView word) {
    number(codeKey, code);
    text(wordKey, word);
  }

  void body(const FactKey& key, PaddedView utf8, const FactKey& fieldsKey,
            const BodyFields* fields) {
    if (layout_.body) text(key, utf8);
    if (!layout_.fields) return;
    writer_.key(fieldsKey);
    elements(fields);
  }

  void detail(const FactKey& key, std::uint64_t number, bool) { this->number(key, number); }
  void payload(const FactKey& key, std::optional<std::span<const unsigned char>> bytes) {
    writer_.key(key);
    if (bytes) {
      writer_.hex(*bytes);
    } else {
      writer_.null();
    }
  }
  void file(const FactKey& key, std::optional<PaddedView> name) {
    writer_.key(key);
    if (name) {
      writer_.text(*name);
    } else {
      writer_.null();
    }
  }

 private:
  void elements(const BodyFields* fields) {
    if (fields == nullptr) {
      writer_.null();
    } else {
      writeElements(writer_, *fields);
    }
  }

  JsonWriter writer_;
  const JsonLayout& layout_;
};

class JsonForm : public EventForm {
 public:
  explicit JsonForm(const JsonLayout& layout) : layout_(layout), facts_(layout.payload) {
    if (!layout.columns.empty()) columns_ = parseColumns(layout.columns);
  }

  void begin(TextBuffer& to) override {
    if (layout_.array) to += '[';
  }
  void write(const DecodedEvent& decoded, TextBuffer& to) override {
    facts_.read(decoded);
    if (layout_.array) to += first_ ? "\n" : ",\n";
    first_ = false;
    if (columns_.empty()) {
      JsonObject(to, layout_).write(facts_);
    } else {
      row_.read(facts_);
      JsonObject(to, layout_).write(row_, columns_);
    }
    if (!layout_.array) to += '\n';
  }
  void end(TextBuffer& to) override {
    if (layout_.array) to += first_ ? "]\n" : "\n]\n";
  }

 private:
  const JsonLayout layout_;
  EventFacts facts_;
  std::vector<Column> columns_;  // none: all
  FactRow row_;
  bool first_ = true;
};

}  // namespace

std::unique_ptr<EventForm> makeJsonForm(const JsonLayout& layout) {
  return std::make_unique<JsonForm>(layout);
}

}  // namespace mpuevent::tool
