#include <MPUEvent/NETWORK_CONFIGMP_Event.h>

#include <span>

#include "event/Fields.h"
#include "event/Tables.h"
#include "event/Text.h"
#include "event/Undecoded.h"

namespace Pegasus {

namespace {

using mpuevent::BodyWriter;
using mpuevent::Field;
using mpuevent::Record;
using mpuevent::RecordView;
using enum mpuevent::Format;
using enum mpuevent::Width;

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
constexpr std::size_t mmsgText = 40;

constexpr Field responseEventFields[] = {
    {"Thread_Index",         0,  u32, dec      },
    {"Dest_Endpoint",        4,  u32, dec      },
    {"Request_Handle",       8,  u32, dec      },
    {"Timeout_seconds",      12, u32, dec      },
    {"Timeout_microseconds", 16, u32, dec      },
    {"pSema",                20, u32, hexUpper8},
    {"pMmsgLh",              24, u32, hexUpper8},
    {"pTimedout",            28, u32, hexUpper8},
};
constexpr std::size_t responseEventText = 32;

constexpr std::size_t lagPort = 0;
constexpr std::size_t operationalStatus = 8;
constexpr std::uint32_t operationalStatusUp = 0x410;

constexpr Field lagPortField[] = {
    {"LAG_Port", lagPort, u32, dec},
};
// Not in the order of the payload.
constexpr Field linkFields[] = {
    {"Admin_State",      14, u8, dec},
    {"Physical_BladeId", 12, u8, dec},
};

String textBody(const Record& record) {
  const RecordView payload = record.payload();
  BodyWriter body(mpuevent::Separator::blank, payload.size() + 16);
  body.element("Text", payload.text(0));
  return body.string();
}

/// The dump starts behind the text's NUL and covers the rest of `length` bytes of payload.
String textAndDump(RecordView payload, std::size_t length) {
  const std::size_t start = payload.text(0).size() + 1;
  BodyWriter body(mpuevent::Separator::blank, 2 * payload.size() + 32);
  body.element("Text", payload.text(0));
  body.openGroup("Hex");
  if (length > start) body.hexBytes(payload.bytes(start, length - start));
  body.closeGroup("Hex");
  body.character('\n');
  return body.string();
}

String dumpBody(const Record& record) {
  return textAndDump(record.payload(), record.structLength());
}

String fieldsAndText(const Record& record, std::span<const Field> fields, std::size_t textAt) {
  const RecordView payload = record.payload();
  BodyWriter body;
  writeFields(body, payload, fields);
  body.element("Text", payload.text(textAt));
  return body.string();
}

String mmsgBody(const Record& record) { return fieldsAndText(record, mmsgFields, mmsgText); }

String responseEventBody(const Record& record) {
  return fieldsAndText(record, responseEventFields, responseEventText);
}

String linkBody(const Record& record) {
  const RecordView payload = record.payload();
  BodyWriter body;
  writeFields(body, payload, lagPortField);
  if (payload.holds(operationalStatus, 4)) {
    const bool up = payload.u32(operationalStatus) == operationalStatusUp;
    body.element("Operatioanl_Status", up ? "UP" : "DOWN");  // spelled so
  }
  writeFields(body, payload, linkFields);
  return body.string();
}

String payloadText(std::string_view, const Record& record) {
  constexpr std::size_t longestSummary = 255;
  return mpuevent::toString(record.payload().text(0, longestSummary));
}

String fixedText(std::string_view words, const Record&) { return mpuevent::toString(words); }

/// The event number tells the status, not the payload's status word: they may differ.
String lagPortStatus(std::string_view status, const Record& record) {
  BodyWriter summary(mpuevent::Separator::none, 64);
  summary.text("LAG Port ");
  summary.number(dec, record.payload().u32(lagPort));
  summary.text(", Operational Status ");
  summary.text(status);
  return summary.string();
}

struct EventKind {
  std::uint32_t number;
  const char* eventId;
  String (*summary)(std::string_view words, const Record& record);
  std::string_view words;  ///< of the summary
  String (*body)(const Record& record);
};

// clang-format off
constexpr EventKind eventKinds[] = {
    {1000, "NCS:Informational Text", payloadText, {}, textBody},
    {1001, "NCS:Warning message", payloadText, {}, textBody},
    {1002, "NCS:Error message", payloadText, {}, textBody},
    {1003, "Info", fixedText, "Informational Text and Hex Dump Data", dumpBody},
    {1021, "NCS MMSG Request Error", fixedText, "NCS: MMSG with unknown Protocol", mmsgBody},
    {1022, "NCS MMSG Request Error", fixedText, "NCS: MMSG with invalid Request type", mmsgBody},
    {1023, "NCS MMSG Request Error", fixedText, "NCS: MMSG with invalid Requester", mmsgBody},
    {1024, "NCS MMSG Request Error", fixedText,
     "NCS: MMSG request with Response bit set", mmsgBody},
    {1025, "NCS MMSG Request Error", fixedText, "NCS: MMSG Response Timedout", mmsgBody},
    {1026, "NCS CEE Event registration Error", fixedText,
     "NCS: Failed to Register CEE response event", responseEventBody},
    {1030, "NCS: Socket Open Failure", fixedText, "NCS: Socket open operation Failed", textBody},
    {1040, "LAG Port Status Event", lagPortStatus, "UP", linkBody},
    {1041, "LAG Port Status Event", lagPortStatus, "DOWN", linkBody},
};
// clang-format on
static_assert(mpuevent::rising(eventKinds, &EventKind::number));

/// The body of a record that is as long as it says.
String exportedBody(EmpEvLogMsg_s const* record, String (*body)(const Record& record)) {
  return record == nullptr ? String() : body(Record::trusting(record));
}

}  // namespace

NETWORK_CONFIGMP_Event::NETWORK_CONFIGMP_Event(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)) {
  if (record == nullptr) return;
  const Record held(record, length);
  const EventKind* kind = mpuevent::findRow(eventKinds, &EventKind::number, held.id());
  if (kind == nullptr) {
    mpuevent::showUndecoded(*this, held, {"NETWORK_CONFIGMP_Event", 114}, "***UNKNOWN EventID***");
    return;
  }
  setEventID(kind->eventId);
  setSummary(kind->summary(kind->words, held));
  setBody(kind->body(held));
}

NETWORK_CONFIGMP_Event::~NETWORK_CONFIGMP_Event() = default;

String get_NCS_text_event_summary(EmpEvLogMsg_s const* record) {
  return payloadText({}, Record::trusting(record));
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
  return exportedBody(record, responseEventBody);
}

String get_NCS_link_event_body(EmpEvLogMsg_s const* record) {
  return exportedBody(record, linkBody);
}

}  // namespace Pegasus
