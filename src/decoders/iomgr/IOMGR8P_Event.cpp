#include <MPUEvent/IOMGR8P_Event.h>

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "decoders/iomgr/classes.h"
#include "event/Entry.h"
#include "event/OwnEventId.h"
#include "event/Text.h"
#include "event/Undecoded.h"

namespace mpuevent::iomgr {

namespace {

using Pegasus::IOMGR_EVL;
using Pegasus::Quarn_Event;
using Pegasus::QuarnEvent;

constexpr Field headFields[] = {
    {"Event_Type",        0,  Width::u32, Format::dec},
    {"Event_Number",      4,  Width::u32, Format::dec},
    {"Event_Line_Number", 12, Width::u32, Format::dec},
};

/// Sets Summary and writes all entries, as `addEntry` would append them one by one.
void decode(BodyWriter& body, Quarn_Event& event, const EventPayload& payload,
            const std::optional<FoundClass>& eventClass) {
  trace({"IOMGR8P_Event", 121}, {"IOMGR_Event: Length=0x", payload.dataLength()});
  writeFields(body, payload, packed<headFields>);
  if (!eventClass) return;
  event.setSummary(writeEvent(body, payload, eventClass->events, writeFile));
}

/// Appends the entries of one class, whatever class the payload names. Sets Summary.
char* appendClass(IomgrClass number, QuarnEvent& event, const IOMGR_EVL* payload, char* place) {
  BodyBuffer body(Separator::none);
  writeTrusted(body, event, iomgrClassOf(number)->events, writeFile, payload);
  appendEntries(event, body);
  return place;
}

char* appendRecord(RecordKind kind, QuarnEvent& event, const void* record, char* place) {
  BodyBuffer body(Separator::none);
  writeTrusted(body, kind, record);
  appendEntries(event, body);
  return place;
}

/// Appends the entries of a record and of those behind it in the same payload.
char* appendRun(RecordKind kind, QuarnEvent& event, const IOMGR_EVL* payload, const void* record,
                char* place) {
  BodyBuffer body(Separator::none);
  if (payload != nullptr && record != nullptr) {
    const DataArea data = EventPayload::trusting(payload).dataArea();
    const auto* first = static_cast<const unsigned char*>(record);
    writeRecord(body, data, static_cast<std::size_t>(first - data.data()), layoutOf(kind));
  }
  appendEntries(event, body);
  return place;
}

}  // namespace

}  // namespace mpuevent::iomgr

namespace Pegasus {

using namespace mpuevent;
using namespace mpuevent::iomgr;

IOMGR8P_Event::IOMGR8P_Event(EmpEvLogMsg_s* bytes, int length)
    : QuarnEvent(withOwnEventId(bytes), length) {
  if (bytes == nullptr) return;
  const Record record(bytes, length);
  if (record.id() != 1) {
    showUnknown(*this, record, {"IOMGR8P_Event", 98}, "Unhandled Event by IOMGR8P",
                NumberBase::decimal);
    return;
  }
  const EventPayload payload(record.payload());
  const std::optional<FoundClass> eventClass = iomgrClassOf(payload.eventClass());
  setEventID(asciiString(eventClass ? eventClass->eventId : "Unknown Event"));
  BodyBuffer body(Separator::none);
  decode(body, *this, payload, eventClass);
  setBody(body.string());
}

IOMGR8P_Event::~IOMGR8P_Event() = default;

void IOMGR8P_Event::get_IOMGR8P_event_body(const EmpEvLogMsg_s* record) {
  if (record == nullptr) return;
  BodyBuffer body(Separator::none);
  const EventPayload payload(Record::trusting(record).payload());
  decode(body, *this, payload, iomgrClassOf(payload.eventClass()));
  appendEntries(*this, body);
}

char* IOMGR8P_Event::get_IOMGR8P_manager_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(managerClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_rebuild_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(rebuildClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_reconfig_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(reconfigClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_bbscan_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(bbscanClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_xoe_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(xoeClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_error_recovery_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(errorRecoveryClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_metadata_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(metadataClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_isurpproc_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(isurpprocClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_drpproc_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(drpprocClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_bg_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(bgClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_database_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(databaseClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_isr_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(isrClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_startup_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(startupClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_sv_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(svClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_dlm_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(dlmClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_crc_init_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(crcInitClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(parityClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_init_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(parityInitClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_error_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(parityErrorClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_scan_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(parityScanClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_rebuild_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(parityRebuildClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_micro_rebuild_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(microRebuildClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_volume_init_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(volumeInitClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_mmsg_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(mmsgClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_rcp_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(rcpClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_fe_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(feClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_carve_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(carveClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_bg_sys_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(bgSysClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_macro_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(macroClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_evl_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(evlClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_assert_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(assertClass, *this, payload, place);
}
char* IOMGR8P_Event::get_IOMGR8P_math_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendClass(mathClass, *this, payload, place);
}

char* IOMGR8P_Event::get_IOMGR8P_lwsem_event_body(const IOMGR_EVL_LWSEM* record, char* place) {
  return appendRecord(RecordKind::lwsem, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_isurp_event_body(const IOMGR_EVL_ISURP* record, char* place) {
  return appendRecord(RecordKind::isurp, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_drp_event_body(const IOMGR_EVL_DRP* record, char* place) {
  return appendRecord(RecordKind::drp, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_vt_event_body(const IOMGR_EVL_VT* record, char* place) {
  return appendRecord(RecordKind::vt, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_ext_event_body(const IOMGR_EVL_EXT* record, char* place) {
  return appendRecord(RecordKind::ext, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_mmsg_event_body(const IOMGR_EVL_MMSG* record, char* place) {
  return appendRecord(RecordKind::mmsg, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_dib_event_body(const IOMGR_EVL_DIB* record, char* place) {
  return appendRecord(RecordKind::dib, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_sgt_event_body(const IOMGR_EVL_SGT* record, char* place) {
  return appendRecord(RecordKind::sgt, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_bcd_event_body(const IOMGR_EVL_BCD* record, char* place) {
  return appendRecord(RecordKind::bcd, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_rcd_event_body(const IOMGR_EVL_RCD* record, char* place) {
  return appendRecord(RecordKind::rcd, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_rbt_event_body(const IOMGR_EVL_RBT* record, char* place) {
  return appendRecord(RecordKind::rbt, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_dlm_event_body(const IOMGR_EVL_DLM* record, char* place) {
  return appendRecord(RecordKind::dlm, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_msa_event_body(const IOMGR_EVL_MSA_Q_EVENT* record, char* place) {
  return appendRecord(RecordKind::msa, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_fer_event_body(const IOMGR_EVL_FER* record, char* place) {
  return appendRecord(RecordKind::fer, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_vbgt_event_body(const IOMGR_EVL_VBGT* record, char* place) {
  return appendRecord(RecordKind::vbgt, *this, record, place);
}
char* IOMGR8P_Event::get_IOMGR8P_ndfe_event_body(const IOMGR_EVL_NDFE* record, char* place) {
  return appendRecord(RecordKind::ndfe, *this, record, place);
}

char* IOMGR8P_Event::dump_volume(const IOMGR_EVL* payload, char* place,
                                 const IOMGR_EVL_VT* volume) {
  return appendRun(RecordKind::volume, *this, payload, volume, place);
}
char* IOMGR8P_Event::dump_sgt_list(const IOMGR_EVL* payload, char* place,
                                   const IOMGR_EVL_SGT* first) {
  return appendRun(RecordKind::sgtList, *this, payload, first, place);
}

}  // namespace Pegasus
