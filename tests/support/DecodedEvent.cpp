#include "support/DecodedEvent.h"

#include <MPUEvent/MPUEvent.h>

#include <ostream>

#include "support/RecordBuilder.h"

namespace mpuevent::support {

std::unique_ptr<Pegasus::Quarn_Event> decode(std::string_view record) {
  const std::string bytes = message(record);
  const Pegasus::CMAPMessageHeader header(reinterpret_cast<const unsigned char*>(bytes.data()));
  Pegasus::Quarn_imemstream body(record.data(), static_cast<int>(record.size()));
  const Pegasus::MPUEvent envelope(header, body);
  return std::unique_ptr<Pegasus::Quarn_Event>(envelope.create_Quarn_Event());
}

std::string utf8(const Pegasus::String& text) {
  std::string out;
  Pegasus::Uint32 start = 0;
  const auto append = [&](Pegasus::Uint32 end) {
    out += static_cast<const char*>(text.subString(start, end - start).getCString());
  };
  for (Pegasus::Uint32 at = 0; at < text.size(); ++at) {
    if (Pegasus::Uint16(text[at]) != 0) continue;
    append(at);
    out += '\0';
    start = at + 1;
  }
  append(text.size());
  return out;
}

std::size_t EventFields::textSize() const {
  std::size_t size = 0;
  for (const std::string& text : texts) size += text.size();
  return size;
}

EventFields fieldsOf(const Pegasus::Quarn_Event& event) {
  EventFields fields;
  fields.texts = {utf8(event.getEnclosureSerialNumber()),
                  utf8(event.getControllerSerialNumber()),
                  utf8(event.getSource()),
                  utf8(event.getCategory()),
                  utf8(event.getEventID()),
                  utf8(event.getSummary()),
                  utf8(event.getBody())};
  fields.numbers = {event.getControllerSlotID(), event.getEventLogInstanceNumber(),
                    event.getSequenceID(), event.getTimestamp(), event.getEventType()};
  return fields;
}

Texts textsOf(const Pegasus::Quarn_Event& event) {
  return {utf8(event.getEventID()), utf8(event.getSummary()), utf8(event.getBody())};
}

std::ostream& operator<<(std::ostream& out, const EventFields& fields) {
  for (const std::string& text : fields.texts) out << '\'' << text << "' ";
  for (const unsigned int number : fields.numbers) out << number << ' ';
  return out;
}

}  // namespace mpuevent::support
