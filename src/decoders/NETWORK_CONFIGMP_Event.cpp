#include <MPUEvent/NETWORK_CONFIGMP_Event.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "decoders/configuration.h"
#include "event/Codes.h"
#include "event/ExportedBody.h"
#include "event/Fields.h"
#include "event/OwnEventId.h"
#include "event/Tables.h"
#include "event/Text.h"
#include "event/Undecoded.h"

namespace mpuevent::networkconfig {

namespace {

using Pegasus::String;
using enum Format;
using enum Width;

constexpr Field mmsgFields[] = {
    {"OpCode_Protocol", 0,  u8,  dec      },
    {"OpCode_Type",     0,  u24, hexUpper8},
    {"Requestor",       4,  u32, dec      },
    {"Dest_EP",         8,  u32, dec      },
    {"Control_Flags",   12, u32, hexUpper2},
    {"MMSG_Length",     16, u32, dec      },
    {"Return_Code",     20, u32, dec      },
    {"Handle",          24, u32, dec      },
    {"General_Use1",    28, u32, hexUpper8},
    {"General_Use2",    32, u32, hexUpper8},
    {"General_Use3",    36, u32, hexUpper8},
};
constexpr Layout mmsgLayout = {40, packed<mmsgFields>};  // a text follows

constexpr Field lagPort = {"LAG_Port", 0, u32, dec};
constexpr Field operationalStatus = {"Operatioanl_Status", 8, u32, dec};  // spelled so
constexpr CodeText operationalStatuses[] = {
    {0x410, "UP"},
};
constexpr Field linkFields[] = {
    {"Admin_State",      14, u8, dec}, // shown first, though it stands behind
    {"Physical_BladeId", 12, u8, dec},
};

String textBody(const Record& record) {
  const RecordView payload = record.payload();
  BodyBuffer body;
  body.element("Text", payload.text(0));
  return body.string();
}

/// The dump begins behind the NUL of the text and covers the rest of `length` bytes of payload.
String textAndDump(RecordView payload, std::size_t length) {
  const std::size_t start = payload.text(0).size() + 1;
  BodyBuffer body;
  body.element("Text", payload.text(0));
  configuration::writeDump(body, payload, start,
                           static_cast<std::int64_t>(length) - static_cast<std::int64_t>(start));
  return body.string();
}

String dumpBody(const Record& record) {
  return textAndDump(record.payload(), record.structLength());
}

String fieldsAndText(const Record& record, const Layout& layout) {
  const RecordView payload = record.payload();
  BodyBuffer body;
  writeFields(body, payload, layout.rows);
  body.element("Text", payload.text(layout.size));
  return body.string();
}

String mmsgBody(const Record& record) { return fieldsAndText(record, mmsgLayout); }

String responseBody(const Record& record) { return fieldsAndText(record, configuration::response); }

String linkBody(const Record& record) {
  const RecordView payload = record.payload();
  BodyBuffer body;
  writeField(body, payload, lagPort);
  writeCode(body, payload, operationalStatus, packed<operationalStatuses>, toWord("DOWN"));
  writeFields(body, payload, packed<linkFields>);
  return body.string();
}

/// Here the number of the event tells the status; in the Body the payload's status word does. They
/// may differ.
String lagPortSummary(std::string_view status, const Record& record) {
  LineBuffer summary(Separator::none);
  summary.words("LAG Port ");
  summary.number(lagPort.format, numberAt(record.payload(), lagPort));
  summary.words(", Operational Status ");
  summary.text(status);
  return summary.string();
}

enum class Summary : std::uint8_t {
  payloadText,    ///< the text of the payload
  fixedText,      ///< the row's words
  lagPortStatus,  ///< the port, and the row's words
};

enum class Body : std::uint8_t { text, dump, mmsg, response, link };

struct EventRow {
  struct Packed {
    TextBefore eventId;
    TextBefore words;
    std::uint16_t number;
    Summary summary;
    Body body;
  };
  constexpr Packed packed(auto place) const {
    return {place(eventId), place(words), number, summary, body};
  }

  std::uint16_t number;
  std::string_view eventId;
  Summary summary;
  std::string_view words;
  Body body;
};

using enum Summary;
using enum Body;

// Laid out by hand: the formatter gives the last columns a line of their own.
// clang-format off
constexpr EventRow events[] = {
    {1000, "NCS:Informational Text", payloadText,   {},                                            text},
    {1001, "NCS:Warning message",    payloadText,   {},                                            text},
    {1002, "NCS:Error message",      payloadText,   {},                                            text},
    {1003, "Info",                   fixedText,     "Informational Text and Hex Dump Data",        dump},
    {1021, "NCS MMSG Request Error", fixedText,     "NCS: MMSG with unknown Protocol",             mmsg},
    {1022, "NCS MMSG Request Error", fixedText,     "NCS: MMSG with invalid Request type",         mmsg},
    {1023, "NCS MMSG Request Error", fixedText,     "NCS: MMSG with invalid Requester",            mmsg},
    {1024, "NCS MMSG Request Error", fixedText,     "NCS: MMSG request with Response bit set",     mmsg},
    {1025, "NCS MMSG Request Error", fixedText,     "NCS: MMSG Response Timedout",                 mmsg},
    {1026, "NCS CEE Event registration Error",
                                     fixedText,     "NCS: Failed to Register CEE response event",  response},
    {1030, "NCS: Socket Open Failure",
                                     fixedText,     "NCS: Socket open operation Failed",           text},
    {1040, "LAG Port Status Event",  lagPortStatus, "UP",                                          link},
    {1041, "LAG Port Status Event",  lagPortStatus, "DOWN",                                        link},
};
// clang-format on
static_assert(rising(events, &EventRow::number));

std::string_view payloadSummary(const Record& record) {
  constexpr std::size_t longestSummary = 255;
  return record.payload().text(0, longestSummary);
}

String summaryOf(const EventRow::Packed& event, const Record& record) {
  switch (event.summary) {
    case payloadText:
      return toString(payloadSummary(record));
    case fixedText:
      return asciiString(event.words.view());
    case lagPortStatus:
      break;
  }
  return lagPortSummary(event.words.view(), record);
}

String bodyOf(Body body, const Record& record) {
  switch (body) {
    case text:
      return textBody(record);
    case dump:
      return dumpBody(record);
    case mmsg:
      return mmsgBody(record);
    case response:
      return responseBody(record);
    case link:
      break;
  }
  return linkBody(record);
}

}  // namespace

}  // namespace mpuevent::networkconfig

namespace Pegasus {

using namespace mpuevent;
using namespace mpuevent::networkconfig;

NETWORK_CONFIGMP_Event::NETWORK_CONFIGMP_Event(EmpEvLogMsg_s* bytes, int length)
    : Quarn_Event(withOwnEventId(bytes), static_cast<unsigned int>(length)) {
  if (bytes == nullptr) return;
  const Record record(bytes, length);
  const EventRow::Packed* event = findRow(packed<events>, &EventRow::Packed::number, record.id());
  if (event == nullptr) {
    showUnknown(*this, record, {"NETWORK_CONFIGMP_Event", 114}, "***UNKNOWN EventID***");
    return;
  }
  setEventID(asciiString(event->eventId.view()));
  setSummary(summaryOf(*event, record));
  setBody(bodyOf(event->body, record));
}

NETWORK_CONFIGMP_Event::~NETWORK_CONFIGMP_Event() = default;

String get_NCS_text_event_summary(EmpEvLogMsg_s const* record) {
  return toString(payloadSummary(Record::trusting(record)));
}

String get_NCS_text_event_body(EmpEvLogMsg_s const* record) {
  return exportedBody(record, textBody);
}

String get_NCS_dump_event_body(EmpEvLogMsg_s const* record, int length) {
  if (record == nullptr) return {};
  const std::size_t size = length < 0 ? 0 : static_cast<std::size_t>(length);
  return textAndDump(RecordView(record, Record::headerSize + size).from(Record::headerSize), size);
}

String get_NCS_mmsg_event_body(EmpEvLogMsg_s const* record) {
  return exportedBody(record, mmsgBody);
}

String get_NCS_responseEvent_body(EmpEvLogMsg_s const* record) {
  return exportedBody(record, responseBody);
}

String get_NCS_link_event_body(EmpEvLogMsg_s const* record) {
  return exportedBody(record, linkBody);
}

}  // namespace Pegasus
