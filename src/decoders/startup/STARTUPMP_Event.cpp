#include <MPUEvent/STARTUPMP_Event.h>

#include "decoders/startup/bodies.h"
#include "event/Tables.h"
#include "event/Text.h"
#include "event/Undecoded.h"

namespace Pegasus {

using mpuevent::Record;
namespace startup = mpuevent::startup;

namespace {

struct EventKind {
  std::uint32_t id;
  const char* title;
  const char* summary;
  String (*body)(const Record& record);
};

constexpr std::uint32_t generalMessage = 1;  // its summary is its first line

// clang-format off
constexpr EventKind eventKinds[] = {
    {generalMessage, "General message", "", startup::messageBody},
    {2, "Unrecognized message received",
        "Startup received a message that it doesn't know how to handle", startup::unknownMessageBody},
    {3, "Partial message in Alternate Event Log",
        "An incomplete message was in an Alternate Event Log", startup::partialMessageBody},
    {4, "MPU App fatal signal", "MPU application caught and exception", startup::signalBody},
    {100, "R5600 is in invalid state", "R5600 is in invalid state", startup::registersBody},
    {101, "stack dump", "dump of the stack", startup::stackBody},
};
// clang-format on
static_assert(mpuevent::rising(eventKinds, &EventKind::id));

String firstLine(std::string_view text) {
  return mpuevent::toString(text.substr(0, text.find('\n')));
}

String bodyOf(EmpEvLogMsg_s const* record, String (*body)(const Record&)) {
  return record == nullptr ? String() : body(Record::trusting(record));
}

}  // namespace

STARTUPMP_Event::STARTUPMP_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  const Record held(record, length);
  const EventKind* kind = mpuevent::findRow(eventKinds, &EventKind::id, held.id());
  if (kind == nullptr) {
    mpuevent::showUndecoded(*this, held, {"STARTUPMP_Event", 259}, "Unhandled Event by STARTUPMP",
                            mpuevent::NumberBase::ofStream, "Unknown EventID: ");
    return;
  }
  setEventID(kind->title);
  setSummary(kind->id == generalMessage ? firstLine(startup::messageText(held)) : kind->summary);
  setBody(kind->body(held));
}

STARTUPMP_Event::~STARTUPMP_Event() = default;

String get_STARTUPMP_MSG_STRING(EmpEvLogMsg_s const* record) {
  return bodyOf(record, startup::messageBody);
}

String get_STARTUPMP_MSG_MMCH(EmpEvLogMsg_s const* record) {
  return bodyOf(record, startup::unknownMessageBody);
}

String get_STARTUPMP_MSG_PARTIAL_MMSG(EmpEvLogMsg_s const* record) {
  return bodyOf(record, startup::partialMessageBody);
}

String get_R5600_INVALID_STATE_MMSG(EmpEvLogMsg_s const* record) {
  return bodyOf(record, startup::registersBody);
}

String get_R5600_stack_dump(EmpEvLogMsg_s const* record) {
  return bodyOf(record, startup::stackBody);
}

String get_SignalInfo(EmpEvLogMsg_s const* record) { return bodyOf(record, startup::signalBody); }

}  // namespace Pegasus
