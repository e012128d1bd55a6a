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
    WriteKind write;

    std::string_view title(std::uint8_t type) const {
      return (type == error ? errorTitle : type == warning ? warningTitle : otherTitle).view();
    }
  };
  constexpr Packed packed(auto place) const {
    return {place(errorTitle), place(warningTitle), place(otherTitle), id, write};
  }

  std::uint16_t id;
  WriteKind write;
  std::string_view errorTitle;
  std::string_view warningTitle;
  std::string_view otherTitle;
};

constexpr char noSharedMemory[] = "Instantiation of SharedMemory Failed";

// Laid out by hand: the formatter would break each row into several lines.
// clang-format off
constexpr EventRow events[] = {
    {2000, writeText,             "Error Text",                             "Warning Text",                             "Text Information"},
    {2005, writeDump,             "Error Dump Data",                        "Warning Dump Data",                        "Dump Information"},
    {2010, writeSharedMemory,     noSharedMemory,                           noSharedMemory,                             noSharedMemory},
    {2011, writeLock,             "Locking Error",                          "Locking Warning",                          "Locking Information"},
    {2012, writeSharedMemory,     noSharedMemory,                           noSharedMemory,                             noSharedMemory},
    {2013, writeMessage,          "MMSG Error",                             "MMSG Warning",                             "MMSG Information"},
    {2015, writeRequest,          "Error in Request Event processing",      "Warning in Request Event processing",      "Request Event Information"},
    {2016, writeResponse,         "Error in CEE Response Event processing", "Warning in CEE Response Event processing", "CEE Response Event Information"},
    {2017, writeTimer,            "Error in CEE Timer Event processing",    "Warning in CEE Timer Event processing",    "CEE Timer Event Information"},
    {2018, writeLockManager,      "Error in DDLM internal processing",      "Warning in DDLM internal processing",      "DDLM Information"},
    {2019, writePersistentMemory, "Error in CPM internal processing",       "Warning in CPM internal processing",       "CPM Information"},
};
// clang-format on
static_assert(rising(events, &EventRow::id));

/// Returns the body. `summary` becomes a part of the record or a fixed text; it is not escaped yet.
String bodyOf(const Record& record, WriteKind write, std::string_view& summary) {
  const SccPayload payload(record);
  SafeBody body;
  summary = write(body, payload);
  if (record.type() != informational) payload.location.write(body);
  return body.string();
}

/// What an exported function does: its caller gets the summary as it is, without any escape.
String bodyAndSummary(EmpEvLogMsg_s* record, char* destination, WriteKind write) {
  std::string_view summary;
  const String body =
      exportedBody(record, [&](const Record& trusted) { return bodyOf(trusted, write, summary); });
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
    showUndecoded(*this, record, {"SYSTEM_CONFIGMP_Event", 137}, "***UNKNOWN EventID***");
    return;
  }
  std::string_view summary;
  setEventID(toString(event->title(record.type())));
  setBody(bodyOf(record, event->write, summary));
  setSummary(safeString(summary));
}

SYSTEM_CONFIGMP_Event::~SYSTEM_CONFIGMP_Event() = default;

String get_SCC_text_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writeText);
}

String get_SCC_dump_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writeDump);
}

String get_SCC_shmem_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writeSharedMemory);
}

String get_SCC_lock_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writeLock);
}

String get_SCC_mmsg_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writeMessage);
}

String get_SCC_requestEvent_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writeRequest);
}

String get_SCC_responseEvent_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writeResponse);
}

String get_SCC_timerEvent_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writeTimer);
}

String get_SCC_ddlm_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writeLockManager);
}

String get_SCC_cpm_event_body(EmpEvLogMsg_s* record, char* summary) {
  return bodyAndSummary(record, summary, writePersistentMemory);
}

}  // namespace Pegasus
