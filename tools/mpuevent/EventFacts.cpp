#include "EventFacts.h"

#include <utility>

namespace mpuevent::tool {

namespace {

// Where a record holds the codes that a decoded event keeps as words only.
constexpr std::size_t kSourceAt = 146;
constexpr std::size_t kCategoryAt = 148;
constexpr std::size_t kIdVersionAt = 149;
constexpr std::size_t kIdAt = 150;

}  // namespace

// Unlike the other texts, which the event holds, this one is made anew for every caller.
std::string_view EventFacts::eventTypeText(Pegasus::Quarn_Event& event) {
  const unsigned code = std::as_const(event).getEventType();
  const auto known = eventTypes_.find(code);
  return known != eventTypes_.end()
             ? known->second
             : eventTypes_.emplace(code, Utf8Text().assign(event.getEventType())).first->second;
}

void EventFacts::read(const DecodedEvent& decoded) {
  Pegasus::Quarn_Event& event = decoded.event;
  const std::span<const unsigned char> record = decoded.record;
  auto text = texts_.begin();
  const auto utf8 = [&text](const Pegasus::String& field) { return (text++)->assign(field); };

  index_ = decoded.index;
  offset_ = decoded.offset;
  decoder_ = decoded.decoder;
  enclosureSerial_ = utf8(event.getEnclosureSerialNumber());
  controllerSerial_ = utf8(event.getControllerSerialNumber());
  controllerSlot_ = event.getControllerSlotID();
  logInstance_ = event.getEventLogInstanceNumber();
  sequenceId_ = event.getSequenceID();
  timestamp_ = event.getTimestamp();
  sourceCode_ = record[kSourceAt];
  source_ = utf8(event.getSource());
  categoryCode_ = record[kCategoryAt];
  category_ = utf8(event.getCategory());
  eventTypeCode_ = std::as_const(event).getEventType();
  eventType_ = eventTypeText(event);
  eventCode_ = unsigned{record[kIdAt]} << 8 | record[kIdAt + 1];
  eventIdVersion_ = record[kIdVersionAt];
  eventId_ = utf8(event.getEventID());
  summary_ = utf8(event.getSummary());
  body_ = utf8(event.getBody());
  bodyParses_ = fields_.parse(body_);
}

}  // namespace mpuevent::tool
