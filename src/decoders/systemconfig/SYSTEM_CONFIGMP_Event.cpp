#include <MPUEvent/SYSTEM_CONFIGMP_Event.h>

#include <cstdint>
#include <string_view>

#include "decoders/systemconfig/kinds.h"
#include "decoders/systemconfig/summary.h"
#include "event/ExportedBody.h"
#include "event/OwnEventId.h"
#include "event/SafeText.h"
#include "event/Tables.h"
#include "event/Text.h"
#include "event/Undecoded.h"

namespace mpuevent::systemconfig {

namespace {

using Pegasus::EmpEvLogMsg_s;
using Pegasus::String;

enum EventType : std::uint8_t { informational = 1, warning = 2, error = 3 };

struct EventRow {
  struct Packed {
    TextBefore errorTitle;
    TextBefore warningTitle;
    TextBefore otherTitle;
    std::uint16_t id;
    Kind kind;

    std::string_view title(std::uint8_t type) const {
      return (type == error ? errorTitle : type == warning ? warningTitle : otherTitle).view();
    }
  };
  constexpr Packed packed(auto place) const {
    return {place(errorTitle), place(warningTitle), place(otherTitle), id, kind};
  }

  std::uint16_t id;
  Kind kind;
  std::string_view errorTitle;
  std::string_view warningTitle;
  std::string_view otherTitle;
};

constexpr char noSharedMemory[] = "Instantiation of SharedMemory Failed";

// Laid out by hand: the formatter would break each row into several lines.
// clang-format off
constexpr EventRow events[] = {
    {2000, Kind::text,             "Error Text",                             "Warning Text",                             "Text Information"},
    {2005, Kind::dump,             "Error Dump Data",                        "Warning Dump Data",                        "Dump Information"},
    {2010, Kind::sharedMemory,     noSharedMemory,                           noSharedMemory,                             noSharedMemory},
    {2011, Kind::lock,             "Locking Error",                          "Locking Warning",                          "Locking Information"},
    {2012, Kind::sharedMemory,     noSharedMemory,                           noSharedMemory,                             noSharedMemory},
    {2013, Kind::message,          "MMSG Error",                             "MMSG Warning",                             "MMSG Information"},
    {2015, Kind::request,          "Error in Request Event processing",      "Warning in Request Event processing",      "Request Event Information"},
    {2016, Kind::response,         "Error in CEE Response Event processing", "Warning in CEE Response Event processing", "CEE Response Event Information"},
    {2017, Kind::timer,            "Error in CEE Timer Event processing",    "Warning in CEE Timer Event processing",    "CEE Timer Event Information"},
    {2018, Kind::lockManager,      "Error in DDLM internal processing",      "Warning in DDLM internal processing",      "DDLM Information"},
    {2019, Kind::persistentMemory, "Error in CPM internal processing",       "Warning in CPM internal processing",       "CPM Information"},
};
// clang-format on
static_assert(rising(events, &EventRow::id));

/// Returns the body. `summary` becomes a part of the record or a fixed text; it is not escaped yet.
String bodyOf(const Record& record, Kind kind, std::string_view& summary) {
  const SccPayload payload(record);
  SafeBody body;
  summary = writeKind(kind, body, payload);
  if (record.type() != informational) payload.location.write(body);
  return body.string();
}

/// What an exported function does: its caller gets the summary as it is, without any escape.
String bodyAndSummary(EmpEvLogMsg_s* record, char* destination, Kind kind) {
  std::string_view summary;
  String body =
      exportedBody(record, [&](const Record& trusted) { return bodyOf(trusted, kind, summary); });
  copySummary(destination, summary);
  return body;
}

}  // namespace

}  // namespace mpuevent::systemconfig

namespace Pegasus {

using namespace mpuevent;
using namespace mpuevent::systemconfig;

SYSTEM_CONFIGMP_Event::SYSTEM_CONFIGMP_Event(EmpEvLogMsg_s* bytes, int length)
    : Quarn_Event(withOwnEventId(bytes), static_cast<unsigned int>(length)) {
  if (bytes == nullptr) return;
  const Record record(bytes, length);
  const EventRow::Packed* event = findRow(packed<events>, &EventRow::Packed::id, record.id());
  if (event == nullptr) {
    showUnknown(*this, record, {"SYSTEM_CONFIGMP_Event", 137}, "***UNKNOWN EventID***");
    return;
  }
  std::string_view summary;
  setEventID(asciiString(event->title(record.type())));
  setBody(bodyOf(record, event->kind, summary));
  setSummary(safeString(summary));
}

SYSTEM_CONFIGMP_Event::~SYSTEM_CONFIGMP_Event() = default;

String get_SCC_text_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::text);
}

String get_SCC_dump_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::dump);
}

String get_SCC_shmem_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::sharedMemory);
}

String get_SCC_lock_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::lock);
}

String get_SCC_mmsg_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::message);
}

String get_SCC_requestEvent_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::request);
}

String get_SCC_responseEvent_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::response);
}

String get_SCC_timerEvent_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::timer);
}

String get_SCC_ddlm_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::lockManager);
}

String get_SCC_cpm_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, Kind::persistentMemory);
}

}  // namespace Pegasus
