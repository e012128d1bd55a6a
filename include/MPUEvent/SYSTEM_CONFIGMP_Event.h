#ifndef MPUEVENT_SYSTEM_CONFIGMP_EVENT_H
#define MPUEVENT_SYSTEM_CONFIGMP_EVENT_H

#include <MPUEvent/Quarn_Event.h>

namespace Pegasus {

/// Events of the system configuration process, SCC, and of the processes that log the same
/// records: free texts and dumps, shared memory, the lock manager DDLM, management messages, the
/// requests, responses and timers of the event engine CEE, and the persistent-memory manager CPM.
///
/// A known event has a title as its EventID, chosen by its type; its Summary is the first clause
/// of the text that was logged with it. Summary and Body are passed through `makeSafeString`. The
/// Body of an unknown event is its payload in hex.
class MPUEVENT_API SYSTEM_CONFIGMP_Event : public Quarn_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI SYSTEM_CONFIGMP_Event(EmpEvLogMsg_s* record, int length);
  ~SYSTEM_CONFIGMP_Event() override;
};

/// Where in the firmware's sources an event was logged: the first 32 bytes of a payload that is
/// longer than 32 bytes. The type is never defined.
///
/// | offset | width  | field                                                                  |
/// |--------|--------|------------------------------------------------------------------------|
/// | 0      | 2      | line number, big-endian                                                |
/// | 2      | n + 1  | file name of n characters and its NUL                                  |
/// | 3 + n  | 29 - n | function name, with a NUL if it is shorter, else cut                   |
struct SCC_EVENT_LOCINFO_t;

/// Takes a location block of 32 bytes apart. `*line` becomes 0-65535. `fileName` and `funcName`
/// belong to the caller and need 30 bytes each; both texts end in a NUL, and all bytes that the
/// block has for the function name are copied. A longer file name is cut at 29 characters. A null
/// block gives line 0 and empty names; a null destination is passed over.
MPUEVENT_API void SCC_fetch_event_location_information(SCC_EVENT_LOCINFO_t* loc, int* line,
                                                       char* funcName, char* fileName);

/// Cuts a one-line summary out of the text `src`: its first clause, up to a '.', a ';' or the ':'
/// of "():" (of which the "(" stays), at most 62 characters. A longer clause is cut at the last
/// blank, tab or line feed among its first 63 characters, and is empty if there is none. With a
/// `limit` other than 0, a clause longer than `limit` is cut in the same way; below 0 it is always
/// empty. Nothing behind the clause's end is read, at most 63 characters or `limit` + 1: a longer
/// `src` needs no NUL. `dst` belongs to the caller, needs 63 bytes and gets a NUL; it may be `src`.
/// A null `src` is an empty text, a null `dst` is passed over.
MPUEVENT_API void SCC_copySummarized(char* dst, char* src, int limit);

// The bodies, one function for each kind of event, whatever the record's event id. The record's
// `evStructLength` is trusted. `summary` belongs to the caller and gets the Summary, at most 62
// characters and a NUL, not yet made safe; a null `summary` is passed over. A null record gives an
// empty body and an empty summary.

/// A text.
MPUEVENT_API String get_SCC_text_event_body(EmpEvLogMsg_s* record, char* summary);
/// A text, and bytes in hex.
MPUEVENT_API String get_SCC_dump_event_body(EmpEvLogMsg_s* record, char* summary);
/// The key of a shared memory that could not be had.
MPUEVENT_API String get_SCC_shmem_event_body(EmpEvLogMsg_s* record, char* summary);
/// A request to the lock manager.
MPUEVENT_API String get_SCC_lock_event_body(EmpEvLogMsg_s* record, char* summary);
/// A management message.
MPUEVENT_API String get_SCC_mmsg_event_body(EmpEvLogMsg_s* record, char* summary);
/// A request event of the event engine.
MPUEVENT_API String get_SCC_requestEvent_body(EmpEvLogMsg_s* record, char* summary);
/// A response event of the event engine.
MPUEVENT_API String get_SCC_responseEvent_body(EmpEvLogMsg_s* record, char* summary);
/// A timer event of the event engine.
MPUEVENT_API String get_SCC_timerEvent_body(EmpEvLogMsg_s* record, char* summary);
/// The lock manager's state.
MPUEVENT_API String get_SCC_ddlm_event_body(EmpEvLogMsg_s* record, char* summary);
/// The persistent-memory manager's state.
MPUEVENT_API String get_SCC_cpm_event_body(EmpEvLogMsg_s* record, char* summary);

}  // namespace Pegasus

#endif
