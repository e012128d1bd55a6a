#include <MPUEvent/ISNSC_Event.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "decoders/isnsc/messages.h"
#include "event/Codes.h"
#include "event/SafeText.h"
#include "event/Tables.h"
#include "event/Text.h"
#include "event/Trace.h"

namespace Pegasus {

namespace {

using mpuevent::BodyWriter;
using mpuevent::CodeText;
using mpuevent::Format;
using mpuevent::SafeBody;
using mpuevent::isnsc::IsnsPayload;

// The blank separates the event from the reason that follows.
constexpr CodeText events[] = {
    {1, "ICS REQ " },
    {2, "ICS RSP " },
    {3, "ICS MSG " },
    {4, "ISNS REQ "},
    {5, "ISNS RSP "},
    {6, "ISNS MSG "},
    {7, "TEXT "    },
};

constexpr CodeText reasons[] = {
    {1, "Information"},
    {2, "Rcvd"       },
    {3, "Sent"       },
};

/// An unknown event has no blank behind its number: "Unknown event: 9Rcvd".
void writeEventId(BodyWriter& out, const IsnsPayload& payload) {
  writeCodeText(out, events, payload.event(), Format::dec, {"Unknown event: "});
  writeCodeText(out, reasons, payload.reason(), Format::dec, {"Unknown reason: "});
}

using WriteBody = void (*)(SafeBody& body, const IsnsPayload& payload);

void writeNothing(SafeBody&, const IsnsPayload&) {}

/// The size of a text as the trace tells it: never more than that of the buffer which once held
/// the text. Only a body can be so long.
std::uint32_t clampedSize(std::size_t size, std::size_t limit) {
  return static_cast<std::uint32_t>(std::min(size, limit));
}

/// The body's size is that before anything is escaped.
void traceSizes(std::size_t eventId, std::size_t summary, WriteBody write,
                const IsnsPayload& payload) {
  if (!mpuevent::traceWanted()) return;
  SafeBody body(SafeBody::Texts::raw);
  write(body, payload);
  mpuevent::writeTrace({"ISNSC_Event", 501},
                       {"setEventID, setBody, setSummary: begin",
                        ", event_id_buf actual data size = ", clampedSize(eventId, 128),
                        ", summary_buffer actual data size = ", clampedSize(summary, 256),
                        ", body_buffer_array actual data size = ", clampedSize(body.size(), 16384),
                        ", setEventID, setBody, setSummary: end"});
}

}  // namespace

ISNSC_Event::ISNSC_Event(EmpEvLogMsg_s* bytes, int length)
    : Quarn_Event(bytes, static_cast<unsigned int>(length)) {
  if (bytes == nullptr) return;
  const mpuevent::Record record(bytes, length);
  const IsnsPayload payload(record.payload());

  BodyWriter eventId(mpuevent::Separator::none, 128);
  writeEventId(eventId, payload);
  mpuevent::trace({"ISNSC_Event", 411},
                  {"ISNS Client Event: ", payload.event(), ", Reason: ", payload.reason(),
                   ", Category: ", payload.category(),
                   ", raw_event_log_data size = ", std::uint32_t{record.structLength()},
                   ", Module ID is ", payload.module(), ", Line Number = ", payload.line()});

  std::string_view summary = "Unhandled Event by ISNS Client";
  WriteBody write = writeNothing;
  switch (payload.category()) {
    case IsnsPayload::icsCategory:
      summary = icsSummary(payload);
      traceUnknownType(payload);
      write = mpuevent::isnsc::writeIcsMessage;
      break;
    case IsnsPayload::textCategory:
      summary = textSummary(payload);
      write = mpuevent::isnsc::writeTextMessage;
      break;
  }
  setEventID(eventId.string());
  setBody(mpuevent::safeBody([&](SafeBody& body) { write(body, payload); }));
  setSummary(mpuevent::toString(summary));
  traceSizes(eventId.size(), summary.size(), write, payload);
}

ISNSC_Event::~ISNSC_Event() = default;

}  // namespace Pegasus
