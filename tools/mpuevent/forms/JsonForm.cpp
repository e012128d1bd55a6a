#include "EventFacts.h"
#include "EventForm.h"
#include "JsonWriter.h"

namespace mpuevent::tool {

namespace {

/// The facts of an event as members of an object.
class JsonObject {
 public:
  explicit JsonObject(TextBuffer& to) : writer_(to) {}

  void write(const EventFacts& facts) {
    writer_.beginObject();
    facts.describeEvent(*this);
    facts.describeBody(*this);
    facts.describeRecord(*this);
    writer_.endObject();
  }

  void number(const FactKey& key, std::uint64_t number) {
    writer_.key(key);
    writer_.number(number);
  }
  void timestamp(const FactKey& key, std::uint64_t count, std::string_view) { number(key, count); }
  void time(const FactKey& key, std::string_view date) { text(key, date); }
  void offset(const FactKey& key, std::uint64_t offset) { number(key, offset); }
  template <typename Text>
  void text(const FactKey& key, Text utf8) {
    writer_.key(key);
    writer_.text(utf8);
  }
  void coded(const FactKey& codeKey, unsigned code, const FactKey& wordKey, PaddedView word) {
    number(codeKey, code);
    text(wordKey, word);
  }

  void body(const FactKey& key, PaddedView utf8, const FactKey& fieldsKey,
            const BodyFields* fields) {
    text(key, utf8);
    writer_.key(fieldsKey);
    if (fields == nullptr) {
      writer_.null();
      return;
    }
    writer_.beginArray();
    for (const BodyField& field : fields->fields()) {
      switch (field.kind) {
        case BodyField::value:
          writer_.element(field.key, field.text);
          break;
        case BodyField::groupBegin:
          writer_.beginObject();
          text("key"_key, field.key);
          writer_.key("fields"_key);
          writer_.beginArray();
          break;
        case BodyField::groupEnd:
          writer_.endArray();
          writer_.endObject();
          break;
      }
    }
    writer_.endArray();
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
  JsonWriter writer_;
};

class JsonForm : public EventForm {
 public:
  explicit JsonForm(ShowPayload payload) : facts_(payload) {}

  void write(const DecodedEvent& decoded, TextBuffer& to) override {
    facts_.read(decoded);
    JsonObject(to).write(facts_);
    to += '\n';
  }

 private:
  EventFacts facts_;
};

}  // namespace

std::unique_ptr<EventForm> makeJsonForm(ShowPayload payload) {
  return std::make_unique<JsonForm>(payload);
}

}  // namespace mpuevent::tool
