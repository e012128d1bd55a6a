#include "EventProperties.h"

#include <forms/EventForm.h>
#include <rapidjson/document.h>

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>

#include "FuzzTarget.h"

namespace mpuevent::fuzz {

namespace {

using rapidjson::Value;

// AWR trees that show their bytes eight times need the most: nodes of one byte, with 83 characters
// for 9 bytes each time. And what an event of few bytes says.
constexpr std::size_t kTextOfAnyEvent = 4096;
constexpr std::size_t kTextPerByte = 80;

std::string_view textOf(const Value& json) { return {json.GetString(), json.GetStringLength()}; }

bool take(std::string_view& text, std::string_view expected) {
  const bool there = text.starts_with(expected);
  text.remove_prefix(there ? expected.size() : 0);
  return there;
}

void takeBlanks(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
}

/// Whether a tag stands at the beginning of `text`, which is moved behind it. A text of the record
/// may have it that the characters of the decoder's own tags are escaped as well.
bool takeTag(std::string_view& text, const std::string& tag) {
  std::string_view rest = text;
  for (const char character : tag) {
    if (rest.starts_with('\\') && character != '\\') rest.remove_prefix(1);
    if (!rest.starts_with(character)) return false;
    rest.remove_prefix(1);
  }
  text = rest;
  return true;
}

/// Whether the elements stand at the beginning of `body`, which is moved behind them.
bool takeElements(std::string_view& body, const Value& elements) {
  for (const Value& element : elements.GetArray()) {
    const std::string key(textOf(element["key"]));
    takeBlanks(body);
    if (!takeTag(body, "<" + key + ">") ||
        !(element.HasMember("fields") ? takeElements(body, element["fields"])
                                      : take(body, textOf(element["value"]))) ||
        !takeTag(body, "</" + key + ">")) {
      return false;
    }
  }
  takeBlanks(body);
  return true;
}

void requireSameFacts(std::string_view line, const support::EventFields& fields) {
  rapidjson::Document json;
  json.Parse<rapidjson::kParseValidateEncodingFlag>(line.data(), line.size());
  require(!json.HasParseError(), "a JSON line is JSON in UTF-8");
  require(line.find('\n') == line.size() - 1, "a JSON line is one line");
  constexpr const char* keys[] = {"enclosure_serial", "controller_serial", "source", "category",
                                  "event_id",         "summary",           "body"};
  for (std::size_t text = 0; text < std::size(keys); ++text) {
    require(textOf(json[keys[text]]) == fields.texts[text], "the JSON has the event's texts");
  }
  std::string_view body = fields.body();
  require(takeElements(body, json["fields"]) && body.empty(),
          "the JSON's fields are the Body taken apart");
}

}  // namespace

void decodeChecked(std::string_view record, const Decode& decode) {
  if (isThorough(record)) return requireThoroughly(record, decode);
  const std::unique_ptr<Pegasus::Quarn_Event> event = decode();
  require(event->getBody().size() <= kTextOfAnyEvent + kTextPerByte * record.size(),
          "a Body in proportion to the record");
}

Shown show(std::string_view record, const Decode& decode) {
  static const std::unique_ptr<tool::EventForm> json = tool::makeJsonForm({});
  const std::span bytes(reinterpret_cast<const unsigned char*>(record.data()), record.size());
  const Pegasus::FieldRecorder recorded;
  const std::unique_ptr<Pegasus::Quarn_Event> event = decode();
  tool::TextBuffer line;
  json->write({{}, 0, 0, bytes, "decoder", *event, &recorded}, line);
  return {support::fieldsOf(*event), std::string(line.view())};
}

void requireThoroughly(std::string_view record, const Decode& decode) {
  const Shown shown = show(record, decode);
  require(shown.fields.textSize() <= kTextOfAnyEvent + kTextPerByte * record.size(),
          "text in proportion to the record");
  require(shown.fields == support::fieldsOf(*decode()), "decoding twice gives the same event");
  requireSameFacts(shown.json, shown.fields);
}

std::vector<char> recordOf(const samples::Module& module, std::string_view input,
                           std::size_t payloadSize) {
  static const std::string header = support::RecordBuilder().source(module.source).str();
  constexpr std::size_t headSize = 7;
  std::string head(input.substr(0, headSize));
  head.resize(headSize);
  const std::string_view payload = input.substr(std::min(input.size(), headSize));
  std::vector<char> record(header.size() + payloadSize);
  std::copy(header.begin(), header.end(), record.begin());
  for (std::size_t at = header.size(); at < record.size() && !payload.empty();) {
    const std::size_t count = std::min(payload.size(), record.size() - at);
    std::copy_n(payload.begin(), count, record.begin() + static_cast<std::ptrdiff_t>(at));
    at += count;
  }
  const auto byte = [&head](std::size_t at) { return static_cast<unsigned char>(head[at]); };
  const std::size_t claimed = payloadSize + (std::size_t{byte(5)} << 8 | byte(6));
  record[144] = static_cast<char>(claimed >> 8 & 0xFF);
  record[145] = static_cast<char>(claimed & 0xFF);
  record[146] = static_cast<char>(module.source);
  record[147] = head[3];
  record[148] = head[4];
  record[149] = head[2];
  record[150] = head[0];
  record[151] = head[1];
  return record;
}

void decodeAs(const samples::Module& module, std::vector<char> record,
              void (*check)(std::string_view record, const Decode& decode)) {
  const std::vector<char> before = record;
  check({record.data(), record.size()}, [&] {
    return std::unique_ptr<Pegasus::Quarn_Event>(module.construct(
        reinterpret_cast<Pegasus::EmpEvLogMsg_s*>(record.data()), static_cast<int>(record.size())));
  });
  require(record == before, "decoding leaves the record as it is");
}

}  // namespace mpuevent::fuzz
