#include <MPUEvent/Quarn_Event.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "event/BodyWriter.h"
#include "event/Numbers.h"
#include "event/OwnEventId.h"
#include "event/RecordView.h"
#include "event/Recording.h"
#include "event/SafeText.h"
#include "event/Tags.h"
#include "event/Text.h"
#include "event/Trace.h"

namespace Pegasus {

using mpuevent::BodyBuffer;
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

/// Puts a String together of words of our own and of other Strings. Short ones are gathered before
/// they are appended: to append to a String takes longer than the units of most of them.
class StringJoiner {
 public:
  explicit StringJoiner(std::size_t size) { joined_.reserveCapacity(static_cast<Uint32>(size)); }

  /// ASCII. Between two texts they have `mostWords` characters at most, numbers included.
  [[gnu::noinline]] void words(std::string_view ascii) {
    assert(static_cast<std::size_t>(end_ - words_) + ascii.size() <= mostWords);
    end_ = mpuevent::putText(end_, ascii);
  }
  [[gnu::noinline]] void number(unsigned int value) {
    end_ = mpuevent::putDecimal(end_, static_cast<std::int32_t>(value));
  }
  [[gnu::noinline]] void text(const String& text) {
    gatherWords();
    const Uint32 size = text.size();
    if (size > gathered_.size() - block - count_) {
      flush();
      joined_.append(text);
    } else {
      std::copy_n(text.getChar16Data(), size, gathered_.data() + count_);
      count_ += size;
    }
  }
  String string() {
    gatherWords();
    flush();
    return std::move(joined_);
  }

 private:
  static constexpr std::size_t mostWords = 224;
  static constexpr std::size_t block = 16;

  void gatherWords() {
    const auto size = static_cast<std::size_t>(end_ - words_);
    if (size + block > gathered_.size() - count_) flush();
    // What is behind the words is gathered, too, and then written over.
    for (std::size_t at = 0; at < size; at += block) {
      std::array<unsigned char, block> bytes;
      std::memcpy(bytes.data(), words_ + at, block);
      for (std::size_t i = 0; i < block; ++i) gathered_[count_ + at + i] = Char16(bytes[i]);
    }
    count_ += size;
    end_ = words_;
  }
  void flush() {
    joined_.append(gathered_.data(), static_cast<Uint32>(count_));
    count_ = 0;
  }

  String joined_;
  std::array<Char16, 384> gathered_;
  std::size_t count_ = 0;
  char words_[mostWords + 2 * block];
  char* end_ = words_;
};

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
  constexpr std::size_t otherParts = 400;
  StringJoiner line(otherParts + Summary.size() + Body.size());
  const auto number = [&line](std::string_view label, unsigned int value) {
    line.words(label);
    line.number(value);
  };
  const auto text = [&line](std::string_view label, const String& value) {
    line.words(label);
    line.text(value);
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
  line.words("'");
  return line.string();
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
