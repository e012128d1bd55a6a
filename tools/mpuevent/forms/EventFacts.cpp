#include "EventFacts.h"

#include <utility>

#include "EventDecoder.h"
#include "log/choosing/RecordBytes.h"

namespace mpuevent::tool {

// Unlike the other texts, which the event holds, this one is made anew for every caller.
PaddedView EventFacts::eventTypeText(Pegasus::Quarn_Event& event) {
  const unsigned code = std::as_const(event).getEventType();
  const auto known = eventTypes_.find(code);
  return known != eventTypes_.end()
             ? known->second
             : eventTypes_.emplace(code, eventTypeTexts_[code].assign(event.getEventType()))
                   .first->second;
}

bool EventFacts::payloadWanted() const {
  if (showPayload_ != ShowPayload::automatic) return showPayload_ == ShowPayload::always;
  return body_.empty() || !lengthsAgree() || recordLength_ > EventDecoder::longestRecord;
}

void EventFacts::read(const DecodedEvent& decoded) {
  Pegasus::Quarn_Event& event = decoded.event;
  const Record record = log::recordOf(decoded.record);
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
  timeText_.clear();
  if (decoded.time) appendDate(timeText_, *decoded.time);
  time_ = timeText_.view();
  sourceCode_ = record.source();
  source_ = utf8(event.getSource());
  categoryCode_ = record.category();
  category_ = utf8(event.getCategory());
  eventTypeCode_ = std::as_const(event).getEventType();
  eventType_ = eventTypeText(event);
  eventCode_ = record.id();
  eventIdVersion_ = record.idVersion();
  eventId_ = utf8(event.getEventID());
  summary_ = utf8(event.getSummary());
  if (withBody_) readBody(decoded);

  rawEventType_ = record.type();
  recordLength_ = record.size();
  structLength_ = record.structLength();
  payload_.reset();
  if (payloadWanted()) payload_ = decoded.record.subspan(Record::headerSize);
  readFile(decoded.file);
}

void EventFacts::readBody(const DecodedEvent& decoded) {
  const Pegasus::String body = decoded.event.getBody();
  body_ = bodyText_.assign(body);
  fieldsKnown_ = decoded.fields != nullptr && decoded.fields->isComplete();
  if (fieldsKnown_) fields_.take(*decoded.fields, body_, body.size());
}

// Converted when another file begins.
void EventFacts::readFile(std::optional<std::string_view> file) {
  if (!file) {
    file_.reset();
  } else if (!file_ || fileBytes_ != *file) {
    fileBytes_ = *file;
    file_ = fileText_.assignBytes(fileBytes_);
  }
}

}  // namespace mpuevent::tool
