#include <MPUEvent/ISNSC_Event.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "decoders/isnsc/messages.h"
#include "event/Codes.h"
#include "event/OwnEventId.h"
#include "event/SafeBody.h"
#include "event/Tables.h"
#include "event/Text.h"
#include "event/Trace.h"

namespace mpuevent::isnsc {

namespace {

// Each text ends with the blank that parts it from the reason behind it.
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

/// Writes the event and its reason. No blank parts an unknown event from the reason: the output
/// wants "Unknown event: 9Rcvd".
void writeEventId(BodyWriter& out, const IsnsPayload& payload) {
  writeCodeText(out, packed<events>, payload.event(), Format::dec, {"Unknown event: "});
  writeCodeText(out, packed<reasons>, payload.reason(), Format::dec, {"Unknown reason: "});
}

/// The size of a text as the trace line tells it: at most `limit`, the size of the buffer that it
/// once stood in. Event ids and summaries stay below theirs with today's texts; a body may not.
std::uint32_t clampedSize(std::size_t size, std::size_t limit) {
  return static_cast<std::uint32_t>(std::min(size, limit));
}

}  // namespace

}  // namespace mpuevent::isnsc

namespace Pegasus {

using namespace mpuevent;
using namespace mpuevent::isnsc;

ISNSC_Event::ISNSC_Event(EmpEvLogMsg_s* bytes, int length)
    : Quarn_Event(withOwnEventId(bytes), static_cast<unsigned int>(length)) {
  if (bytes == nullptr) return;
  const Record record(bytes, length);
  const IsnsPayload payload(record.payload());

  LineBuffer eventId(Separator::none);
  writeEventId(eventId, payload);
  trace({"ISNSC_Event", 411},
        {"ISNS Client Event: ", payload.event(), ", Reason: ", payload.reason(), ", Category: ",
         payload.category(), ", raw_event_log_data size = ", std::uint32_t{record.structLength()},
         ", Module ID is ", payload.module(), ", Line Number = ", payload.line()});

  std::string_view summary = "Unhandled Event by ISNS Client";
  SafeBody body;
  switch (payload.category()) {
    case IsnsPayload::icsCategory:
      summary = icsSummary(payload);
      traceUnknownType(payload);
      writeIcsMessage(body, payload);
      break;
    case IsnsPayload::textCategory:
      summary = textSummary(payload);
      writeTextMessage(body, payload);
      break;
  }
  setEventID(eventId.string());
  setBody(body.string());
  setSummary(toString(summary));
  // The body's size is that before anything was escaped.
  trace({"ISNSC_Event", 501},
        {"setEventID, setBody, setSummary: begin",
         ", event_id_buf actual data size = ", clampedSize(eventId.size(), 128),
         ", summary_buffer actual data size = ", clampedSize(summary.size(), 256),
         ", body_buffer_array actual data size = ", clampedSize(body.rawSize(), 16384),
         ", setEventID, setBody, setSummary: end"});
}

ISNSC_Event::~ISNSC_Event() = default;

}  // namespace Pegasus
