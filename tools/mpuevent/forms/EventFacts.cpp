#include "EventFacts.h"

#include <algorithm>
#include <utility>

#include "EventDecoder.h"
#include "log/choosing/RecordBytes.h"

namespace mpuevent::tool {

bool EventFacts::payloadWanted() const {
  if (showPayload_ != ShowPayload::automatic) return showPayload_ == ShowPayload::always;
  return body_.empty() || !lengthsAgree() || recordLength_ > EventDecoder::longestRecord;
}

void EventFacts::read(const DecodedEvent& decoded) {
  Pegasus::Quarn_Event& event = decoded.event;
  const Record record = log::recordOf(decoded.record);

  index_ = decoded.index;
  offset_ = decoded.offset;
  readSerials(event, record);
  controllerSlot_ = record.controllerSlot();
  logInstance_ = record.logInstance();
  sequenceId_ = record.sequenceId();
  timestamp_ = record.timestamp();
  timeText_.clear();
  if (decoded.time) appendDate(timeText_, *decoded.time);
  time_ = timeText_.view();
  readCodes(decoded, record);
  eventCode_ = record.id();
  eventIdVersion_ = record.idVersion();
  eventId_ = eventIdText_.assign(event.getEventID());
  summary_ = summaryText_.assign(event.getSummary());
  if (withBody_) readBody(decoded);

  rawEventType_ = record.type();
  recordLength_ = record.size();
  structLength_ = record.structLength();
  payload_.reset();
  if (payloadWanted()) payload_ = decoded.record.subspan(Record::headerSize);
  readFile(decoded.file);
}

void EventFacts::readSerials(const Pegasus::Quarn_Event& event, const Record& record) {
  Serials& serials = serials_[record.controllerSlot() % serials_.size()];
  if (!serials.bytes || !log::sameSerials(serials.bytes->data(), record.data())) {
    std::copy_n(record.data(), log::serialsSize, serials.bytes.emplace().begin());
    serials.enclosure = serials.enclosureText.assign(event.getEnclosureSerialNumber());
    serials.controller = serials.controllerText.assign(event.getControllerSerialNumber());
  }
  enclosureSerial_ = serials.enclosure;
  controllerSerial_ = serials.controller;
}

void EventFacts::readCodes(const DecodedEvent& decoded, const Record& record) {
  Pegasus::Quarn_Event& event = decoded.event;
  sourceCode_ = record.source();
  decoder_ =
      decoders_.of(record.source(), [&](Utf8Text& to) { return to.assignBytes(decoded.decoder); });
  source_ =
      sources_.of(record.source(), [&](Utf8Text& to) { return to.assign(event.getSource()); });
  categoryCode_ = record.category();
  category_ = categories_.of(record.category(),
                             [&](Utf8Text& to) { return to.assign(event.getCategory()); });
  eventTypeCode_ = std::as_const(event).getEventType();
  eventType_ =
      eventTypes_.of(record.type(), [&](Utf8Text& to) { return to.assign(event.getEventType()); });
}

void EventFacts::readBody(const DecodedEvent& decoded) {
  const Pegasus::String body = decoded.event.getBody();
  body_ = bodyText_.assign(body);
  fieldsKnown_ = decoded.fields != nullptr && decoded.fields->isComplete();
  if (fieldsKnown_) fields_ = {*decoded.fields, body_, body.size()};
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
