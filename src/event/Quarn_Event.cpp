#include <MPUEvent/Quarn_Event.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "event/BodyWriter.h"
#include "event/OwnEventId.h"
#include "event/RecordView.h"
#include "event/Recording.h"
#include "event/SafeText.h"
#include "event/Text.h"
#include "event/Trace.h"

namespace Pegasus {

using mpuevent::BodyBuffer;
using mpuevent::LineBuffer;
using mpuevent::Record;
using mpuevent::Separator;
using mpuevent::toString;
using mpuevent::trace;
using mpuevent::viewOf;

namespace {

Record headerOf(const EmpEvLogMsg_s* record) { return {record, 0}; }

String numberAsEventId(const EmpEvLogMsg_s* record) {
  if (mpuevent::takeOwnEventId() || record == nullptr) return {};
  return mpuevent::decimalString(headerOf(record).id());
}

// Without a String of its own, which would be an allocation. There is a unit of room for each byte.
void appendAscii(String& to, std::string_view ascii, Char16* units) {
  for (std::size_t i = 0; i < ascii.size(); ++i) {
    units[i] = Char16(static_cast<unsigned char>(ascii[i]));
  }
  to.append(units, static_cast<Uint32>(ascii.size()));
}

}  // namespace

// The texts are made in place: assigned, each would be counted up and down once more.
Quarn_Event::Quarn_Event(const EmpEvLogMsg_s* record, unsigned int length)
    : EnclosureSerialNumber(toString(headerOf(record).enclosureSerialNumber())),
      ControllerSerialNumber(toString(headerOf(record).controllerSerialNumber())),
      ControllerSlotID(headerOf(record).controllerSlot()),
      EventLogInstanceNumber(headerOf(record).logInstance()),
      SequenceID(headerOf(record).sequenceId()),
      Timestamp(headerOf(record).timestamp()),
      Source(record == nullptr ? String() : sourceFromEmpValue(headerOf(record).source())),
      Category(record == nullptr ? String() : categoryFromEmpValue(headerOf(record).category())),
      EventType(record == nullptr ? 0 : eventTypeFromEmpValue(headerOf(record).type())),
      EventID(numberAsEventId(record)) {
  if (mpuevent::Recording* recording = mpuevent::recording()) recording->begin(this);
  if (record == nullptr) return;
  const std::uint32_t structLength = headerOf(record).structLength();
  if (static_cast<int>(Record::headerSize + structLength) == static_cast<int>(length)) return;
  trace({"Quarn_Event", 152}, {"Quarn_Event constructed with len=", std::uint32_t{length},
                               ", but evStructLength=", structLength});
  trace({"Quarn_Event", 153}, {"Contents of Event data is:"});
  if (!mpuevent::traceWanted()) return;
  if (EventID.size() == 0) EventID = numberAsEventId(record);
  mpuevent::writeTrace({"Quarn_Event", 154}, {Quarn_Event::str()});
}

Quarn_Event::~Quarn_Event() = default;

String Quarn_Event::getEnclosureSerialNumber() const { return EnclosureSerialNumber; }
void Quarn_Event::setEnclosureSerialNumber(String text) { EnclosureSerialNumber = std::move(text); }
unsigned int Quarn_Event::getControllerSlotID() const { return ControllerSlotID; }
void Quarn_Event::setControllerSlotID(unsigned int number) { ControllerSlotID = number; }
String Quarn_Event::getControllerSerialNumber() const { return ControllerSerialNumber; }
void Quarn_Event::setControllerSerialNumber(String text) {
  ControllerSerialNumber = std::move(text);
}
unsigned int Quarn_Event::getEventLogInstanceNumber() const { return EventLogInstanceNumber; }
void Quarn_Event::setEventLogInstanceNumber(unsigned int number) {
  EventLogInstanceNumber = number;
}
unsigned int Quarn_Event::getSequenceID() const { return SequenceID; }
void Quarn_Event::setSequenceID(unsigned int number) { SequenceID = number; }
unsigned int Quarn_Event::getTimestamp() const { return Timestamp; }
void Quarn_Event::setTimestamp(unsigned int number) { Timestamp = number; }
String Quarn_Event::getSource() const { return Source; }
void Quarn_Event::setSource(String text) { Source = std::move(text); }
String Quarn_Event::getCategory() const { return Category; }
void Quarn_Event::setCategory(String text) { Category = std::move(text); }

String Quarn_Event::getEventType() {
  switch (EventType) {
    case 1:
      return "Informational";
    case 2:
      return "Warning";
    case 3:
      return "Error";
    default:
      return {};
  }
}

unsigned int Quarn_Event::getEventType() const { return EventType; }
void Quarn_Event::setEventType(unsigned int number) { EventType = number; }
String Quarn_Event::getEventID() const { return EventID; }
void Quarn_Event::setEventID(String text) { EventID = std::move(text); }
String Quarn_Event::getSummary() const { return Summary; }
void Quarn_Event::setSummary(String text) { Summary = std::move(text); }
String Quarn_Event::getBody() const { return Body; }
void Quarn_Event::setBody(String text) {
  if (mpuevent::Recording* recording = mpuevent::recording()) recording->bodySet(this, Body, text);
  Body = std::move(text);
}

String Quarn_Event::str() const {
  String line;
  line.reserveCapacity(400 + Summary.size() + Body.size());
  LineBuffer words(Separator::none);  // between the texts
  std::array<Char16, 256> units;      // the same words
  const auto number = [&](std::string_view label, unsigned int value) {
    words.words(label);
    words.decimal(static_cast<std::int32_t>(value));
  };
  const auto text = [&](std::string_view label, const String& value) {
    words.words(label);
    appendAscii(line, words.view(), units.data());
    words.cut(0);
    line.append(value);
  };
  text("Enclosure Ser#: '", EnclosureSerialNumber);
  text("', Card Ser#: '", ControllerSerialNumber);
  number("', Slot: ", ControllerSlotID);
  number(", Log Instance # ", EventLogInstanceNumber);
  number(", Sequence ID=", SequenceID);
  number(", Timestamp=", Timestamp);
  text(", Source: '", Source);
  text("', Category: '", Category);
  number("', EventType=", EventType);
  text(", EventID: '", EventID);
  text("', Summary: '", Summary);
  text("', Body: '", Body);
  appendAscii(line, "'", units.data());
  return line;
}

long Quarn_Event::hexified(char* destination, const char* source, long count) {
  std::string_view bytes;
  if (source != nullptr && count > 0) bytes = {source, static_cast<std::size_t>(count)};
  const std::size_t length = mpuevent::writeHex(destination, bytes);
  destination[length] = '\0';
  return static_cast<long>(length);
}

String Quarn_Event::hexifiedString(const char* source, long count) {
  if (source == nullptr || count <= 0) return {};
  BodyBuffer digits(Separator::none);
  digits.hexBytes({source, static_cast<std::size_t>(count)});
  return digits.string();
}

String Quarn_Event::xmlize(const char* key, const char* value) {
  BodyBuffer element(Separator::none);
  element.note(viewOf(key));
  element.element(viewOf(key), viewOf(value));
  return element.string();
}

String Quarn_Event::xmlizeString(const char* key, String value) {
  const String keyText = toString(viewOf(key));
  String element;
  element.reserveCapacity(2 * keyText.size() + value.size() + 5);
  element.append("<").append(keyText).append(">").append(value);
  element.append("</").append(keyText).append(">");
  if (mpuevent::Recording* recording = mpuevent::recording()) {
    recording->addElement(element, keyText.size());
  }
  return element;
}

void Quarn_Event::makeSafeKeyname(char* text, int length) {
  if (text == nullptr || length < 0) return;
  const auto isKept = [](char byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
           (byte >= '0' && byte <= '9') || byte == '_';
  };
  const std::size_t count = length > 0 ? static_cast<std::size_t>(length) : std::strlen(text);
  std::size_t kept = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const char byte = text[i];
    if (byte == ' ' || byte == '\t' || byte == '\n') {
      text[kept++] = '_';
    } else if (isKept(byte)) {
      text[kept++] = byte;
    }
  }
  // With length 0 there is no NUL: the tail of the old text stays behind the kept characters.
  if (static_cast<int>(kept) < length) text[kept] = '\0';
}

String Quarn_Event::makeSafeString(const char* text, int length) {
  if (text == nullptr || length < 0) return {};
  return mpuevent::safeString(length == 0
                                  ? std::string_view{text}
                                  : std::string_view{text, static_cast<std::size_t>(length)});
}

}  // namespace Pegasus
