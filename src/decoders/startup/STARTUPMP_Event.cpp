#include <MPUEvent/STARTUPMP_Event.h>

#include <cstdint>
#include <string_view>

#include "decoders/startup/bodies.h"
#include "event/ExportedBody.h"
#include "event/OwnEventId.h"
#include "event/Tables.h"
#include "event/Text.h"
#include "event/Undecoded.h"

namespace mpuevent::startup {

namespace {

using Pegasus::String;

enum class Body : std::uint8_t {
  message,
  unknownMessage,
  partialMessage,
  signal,
  registers,
  stack
};

struct EventRow {
  struct Packed {
    TextBefore title;
    TextBefore summary;
    std::uint16_t id;
    Body body;
  };
  constexpr Packed packed(auto place) const { return {place(title), place(summary), id, body}; }

  std::uint16_t id;
  std::string_view title;
  std::string_view summary;
  Body body;
};

using enum Body;

constexpr std::uint16_t generalMessage = 1;  // its Summary is the first line of its text

// clang-format off
constexpr EventRow events[] = {
    {generalMessage, "General message", "", message},
    {2, "Unrecognized message received",
        "Startup received a message that it doesn't know how to handle", unknownMessage},
    {3, "Partial message in Alternate Event Log",
        "An incomplete message was in an Alternate Event Log", partialMessage},
    {4, "MPU App fatal signal", "MPU application caught and exception", signal},
    {100, "R5600 is in invalid state", "R5600 is in invalid state", registers},
    {101, "stack dump", "dump of the stack", stack},
};
// clang-format on
static_assert(rising(events, &EventRow::id));

String bodyOf(Body body, const Record& record) {
  switch (body) {
    case message:
      return messageBody(record);
    case unknownMessage:
      return unknownMessageBody(record);
    case partialMessage:
      return partialMessageBody(record);
    case signal:
      return signalBody(record);
    case registers:
      return registersBody(record);
    case stack:
      break;
  }
  return stackBody(record);
}

std::string_view firstLine(std::string_view text) { return text.substr(0, text.find('\n')); }

}  // namespace

}  // namespace mpuevent::startup

namespace Pegasus {

using namespace mpuevent;
using namespace mpuevent::startup;

STARTUPMP_Event::STARTUPMP_Event(EmpEvLogMsg_s* bytes, int length)
    : Quarn_Event(withOwnEventId(bytes), static_cast<unsigned int>(length)) {
  if (bytes == nullptr) return;
  const Record record(bytes, length);
  const EventRow::Packed* event = findRow(packed<events>, &EventRow::Packed::id, record.id());
  if (event == nullptr) {
    showUnknown(*this, record, {"STARTUPMP_Event", 259}, "Unhandled Event by STARTUPMP",
                NumberBase::ofStream, "Unknown EventID: ");
    return;
  }
  setEventID(asciiString(event->title.view()));
  setSummary(event->id == generalMessage ? toString(firstLine(messageText(record)))
                                         : asciiString(event->summary.view()));
  setBody(bodyOf(event->body, record));
}

STARTUPMP_Event::~STARTUPMP_Event() = default;

String get_STARTUPMP_MSG_STRING(EmpEvLogMsg_s const* record) {
  return exportedBody(record, messageBody);
}

String get_STARTUPMP_MSG_MMCH(EmpEvLogMsg_s const* record) {
  return exportedBody(record, unknownMessageBody);
}

String get_STARTUPMP_MSG_PARTIAL_MMSG(EmpEvLogMsg_s const* record) {
  return exportedBody(record, partialMessageBody);
}

String get_R5600_INVALID_STATE_MMSG(EmpEvLogMsg_s const* record) {
  return exportedBody(record, registersBody);
}

String get_R5600_stack_dump(EmpEvLogMsg_s const* record) { return exportedBody(record, stackBody); }

String get_SignalInfo(EmpEvLogMsg_s const* record) { return exportedBody(record, signalBody); }

}  // namespace Pegasus
