#include <MPUEvent/IOMGR8P_Event.h>

#include <cstddef>
#include <string_view>
#include <utility>

#include "decoders/iomgr/classes.h"
#include "event/Entry.h"
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

/// Sets Summary and returns all entries, as `addEntry` would append them one by one.
BodyWriter decode(Quarn_Event& event, const EventPayload& payload) {
  trace({"IOMGR8P_Event", 121}, {"IOMGR_Event: Length=0x", payload.dataLength()});
  BodyWriter body(Separator::none, payload.expectedSize());
  writeFields(body, payload, headFields);
  const EventClass* eventClass = classOf(iomgrClasses, payload.eventClass());
  if (eventClass != nullptr) event.setSummary(writeEvent(body, payload, eventClass->events));
  return body;
}

/// The entries of one class, whatever class the payload names. Sets Summary.
BodyWriter ofClass(IomgrClass number, Quarn_Event& event, const IOMGR_EVL* payload) {
  return classBody(Separator::none, event, classOf(iomgrClasses, number)->events, payload);
}

BodyWriter ofRecord(const RecordLayout& layout, const void* record) {
  return recordBody(Separator::none, layout, record);
}

/// The entries of a record and of those behind it in the same payload.
BodyWriter ofRun(const RecordLayout& layout, const IOMGR_EVL* payload, const void* record) {
  BodyWriter body(Separator::none);
  if (payload == nullptr || record == nullptr) return body;
  const DataArea data = EventPayload::trusting(payload).dataArea();
  const auto* place = static_cast<const unsigned char*>(record);
  writeRecord(body, data, static_cast<std::size_t>(place - data.data()), layout);
  return body;
}

char* appendToBody(QuarnEvent& event, BodyWriter entries, char* place) {
  appendEntries(event, std::move(entries));
  return place;
}

}  // namespace

}  // namespace mpuevent::iomgr

namespace Pegasus {

using namespace mpuevent;
using namespace mpuevent::iomgr;

IOMGR8P_Event::IOMGR8P_Event(EmpEvLogMsg_s* bytes, int length) : QuarnEvent(bytes, length) {
  if (bytes == nullptr) return;
  const Record record(bytes, length);
  if (record.id() != 1) {
    showUndecoded(*this, record, {"IOMGR8P_Event", 98}, "Unhandled Event by IOMGR8P",
                  NumberBase::decimal);
    return;
  }
  const EventPayload payload(record.payload());
  const EventClass* eventClass = classOf(iomgrClasses, payload.eventClass());
  setEventID(eventClass == nullptr ? "Unknown Event" : toString(eventClass->eventId));
  setBody(decode(*this, payload).string());
}

IOMGR8P_Event::~IOMGR8P_Event() = default;

void IOMGR8P_Event::get_IOMGR8P_event_body(const EmpEvLogMsg_s* record) {
  if (record == nullptr) return;
  appendEntries(*this, decode(*this, EventPayload(Record::trusting(record).payload())));
}

char* IOMGR8P_Event::get_IOMGR8P_manager_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(managerClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_rebuild_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(rebuildClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_reconfig_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(reconfigClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_bbscan_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(bbscanClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_xoe_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(xoeClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_error_recovery_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(errorRecoveryClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_metadata_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(metadataClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_isurpproc_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(isurpprocClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_drpproc_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(drpprocClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_bg_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(bgClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_database_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(databaseClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_isr_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(isrClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_startup_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(startupClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_sv_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(svClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_dlm_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(dlmClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_crc_init_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(crcInitClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(parityClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_init_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(parityInitClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_error_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(parityErrorClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_scan_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(parityScanClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_parity_rebuild_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(parityRebuildClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_micro_rebuild_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(microRebuildClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_volume_init_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(volumeInitClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_mmsg_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(mmsgClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_rcp_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(rcpClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_fe_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(feClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_carve_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(carveClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_bg_sys_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(bgSysClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_macro_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(macroClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_evl_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(evlClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_assert_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(assertClass, *this, payload), place);
}
char* IOMGR8P_Event::get_IOMGR8P_math_class_event_body(IOMGR_EVL* payload, char* place) {
  return appendToBody(*this, ofClass(mathClass, *this, payload), place);
}

char* IOMGR8P_Event::get_IOMGR8P_lwsem_event_body(const IOMGR_EVL_LWSEM* record, char* place) {
  return appendToBody(*this, ofRecord(records::lwsem, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_isurp_event_body(const IOMGR_EVL_ISURP* record, char* place) {
  return appendToBody(*this, ofRecord(records::isurp, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_drp_event_body(const IOMGR_EVL_DRP* record, char* place) {
  return appendToBody(*this, ofRecord(records::drp, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_vt_event_body(const IOMGR_EVL_VT* record, char* place) {
  return appendToBody(*this, ofRecord(records::vt, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_ext_event_body(const IOMGR_EVL_EXT* record, char* place) {
  return appendToBody(*this, ofRecord(records::ext, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_mmsg_event_body(const IOMGR_EVL_MMSG* record, char* place) {
  return appendToBody(*this, ofRecord(records::mmsg, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_dib_event_body(const IOMGR_EVL_DIB* record, char* place) {
  return appendToBody(*this, ofRecord(records::dib, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_sgt_event_body(const IOMGR_EVL_SGT* record, char* place) {
  return appendToBody(*this, ofRecord(records::sgt, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_bcd_event_body(const IOMGR_EVL_BCD* record, char* place) {
  return appendToBody(*this, ofRecord(records::bcd, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_rcd_event_body(const IOMGR_EVL_RCD* record, char* place) {
  return appendToBody(*this, ofRecord(records::rcd, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_rbt_event_body(const IOMGR_EVL_RBT* record, char* place) {
  return appendToBody(*this, ofRecord(records::rbt, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_dlm_event_body(const IOMGR_EVL_DLM* record, char* place) {
  return appendToBody(*this, ofRecord(records::dlm, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_msa_event_body(const IOMGR_EVL_MSA_Q_EVENT* record, char* place) {
  return appendToBody(*this, ofRecord(records::msa, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_fer_event_body(const IOMGR_EVL_FER* record, char* place) {
  return appendToBody(*this, ofRecord(records::fer, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_vbgt_event_body(const IOMGR_EVL_VBGT* record, char* place) {
  return appendToBody(*this, ofRecord(records::vbgt, record), place);
}
char* IOMGR8P_Event::get_IOMGR8P_ndfe_event_body(const IOMGR_EVL_NDFE* record, char* place) {
  return appendToBody(*this, ofRecord(records::ndfe, record), place);
}

char* IOMGR8P_Event::dump_volume(const IOMGR_EVL* payload, char* place,
                                 const IOMGR_EVL_VT* volume) {
  return appendToBody(*this, ofRun(records::volume, payload, volume), place);
}
char* IOMGR8P_Event::dump_sgt_list(const IOMGR_EVL* payload, char* place,
                                   const IOMGR_EVL_SGT* first) {
  return appendToBody(*this, ofRun(records::sgtList, payload, first), place);
}

}  // namespace Pegasus
