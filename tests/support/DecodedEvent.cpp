#include "support/DecodedEvent.h"

#include <MPUEvent/MPUEvent.h>
#include <cxxabi.h>

#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <typeinfo>

#include "support/RecordBuilder.h"

namespace mpuevent::support {

namespace {

void appendUtf8(std::string& out, std::uint32_t code) {
  const auto put = [&out](std::uint32_t byte) { out += static_cast<char>(byte); };
  if (code < 0x80) {
    put(code);
    return;
  }
  if (code < 0x800) {
    put(0xC0 | code >> 6);
  } else {
    if (code < 0x10000) {
      put(0xE0 | code >> 12);
    } else {
      put(0xF0 | code >> 18);
      put(0x80 | (code >> 12 & 0x3F));
    }
    put(0x80 | (code >> 6 & 0x3F));
  }
  put(0x80 | (code & 0x3F));
}

}  // namespace

std::unique_ptr<Pegasus::Quarn_Event> decode(std::string_view record) {
  const std::string bytes = message(record);
  const Pegasus::CMAPMessageHeader header(reinterpret_cast<const unsigned char*>(bytes.data()));
  Pegasus::Quarn_imemstream body(record.data(), static_cast<int>(record.size()));
  const Pegasus::MPUEvent envelope(header, body);
  return std::unique_ptr<Pegasus::Quarn_Event>(envelope.create_Quarn_Event());
}

std::string utf8(const Pegasus::String& text) {
  const Pegasus::Char16* units = text.getChar16Data();
  const Pegasus::Uint32 size = text.size();
  const auto unit = [units](Pegasus::Uint32 at) {
    return std::uint32_t{static_cast<Pegasus::Uint16>(units[at])};
  };
  std::string out;
  out.reserve(size);
  for (Pegasus::Uint32 at = 0; at < size; ++at) {
    std::uint32_t code = unit(at);
    if ((code & 0xFC00) == 0xD800 && at + 1 < size && (unit(at + 1) & 0xFC00) == 0xDC00) {
      ++at;
      code = 0x10000 + ((code & 0x3FF) << 10) + (unit(at) & 0x3FF);
    }
    appendUtf8(out, code);
  }
  return out;
}

std::string className(const Pegasus::Quarn_Event& event) {
  const std::unique_ptr<char, decltype(&std::free)> name(
      abi::__cxa_demangle(typeid(event).name(), nullptr, nullptr, nullptr), std::free);
  const std::string_view qualified = name.get();
  const std::size_t colon = qualified.rfind(':');
  return std::string(qualified.substr(colon + 1));
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
