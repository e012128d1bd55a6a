#ifndef MPUEVENT_MIP8P_EVENT_H
#define MPUEVENT_MIP8P_EVENT_H

#include <MPUEvent/Quarn_Event.h>

namespace Pegasus {

/// The payload of a MIP event, laid out like `IOMGR_EVL`, with event classes 1-12. The type is
/// never defined: a pointer to it is a pointer to the payload's first byte, of any alignment.
struct MIP_EVL;

// The typed records of the data area, laid out like those of the I/O manager; never defined either.
struct MIP_EVL_LWSEM;
struct MIP_EVL_MMSG;
struct MIP_EVL_MSA_Q_EVENT;

/// Events of MIP, the processor that starts and watches the controller's ARC cores. The event
/// class gives the EventID, the event number in its class the Summary and the record or word that
/// the Body shows.
class MPUEVENT_API MIP8P_Event : public Quarn_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI MIP8P_Event(EmpEvLogMsg_s* record, int length);
  ~MIP8P_Event() override;

  // What the constructor is made of. All functions believe what they are pointed to: a record to
  // be as long as its `evStructLength` says, a payload as long as its event class, number and data
  // length demand, a typed record to have its full size.

  /// The Body of a record with event id 1; sets Summary. Empty for a null record.
  String get_MIP8P_event_body(const EmpEvLogMsg_s* record);

  // What one class shows, whatever class the payload names: the event's name as `Request_Type`,
  // and what it carries. They write the elements and a NUL to `place`, which the caller has made
  // room at, at most 1,024 bytes, and return the place of that NUL. They set Summary: to the name,
  // to the text of an assert, or to nothing if the class does not know the event's number. A null
  // payload writes the NUL alone; to a null `place` nothing is written.
  char* get_MIP8P_management_class_event_body(MIP_EVL* payload, char* place);
  char* get_MIP8P_isr_class_event_body(MIP_EVL* payload, char* place);
  char* get_MIP8P_startup_class_event_body(MIP_EVL* payload, char* place);
  char* get_MIP8P_mmsg_class_event_body(MIP_EVL* payload, char* place);
  char* get_MIP8P_evl_class_event_body(MIP_EVL* payload, char* place);
  char* get_MIP8P_assert_class_event_body(MIP_EVL* payload, char* place);
  char* get_MIP8P_dma_class_event_body(MIP_EVL* payload, char* place);
  /// No class number leads here.
  char* get_MIP8P_database_class_event_body(MIP_EVL* payload, char* place);
  /// Nor here.
  char* get_MIP8P_math_class_event_body(MIP_EVL* payload, char* place);

  // The elements of one record, written the same way.
  char* get_MIP8P_lwsem_event_body(const MIP_EVL_LWSEM* record, char* place);
  char* get_MIP8P_mmsg_event_body(const MIP_EVL_MMSG* record, char* place);
  char* get_MIP8P_msa_event_body(const MIP_EVL_MSA_Q_EVENT* record, char* place);
};

}  // namespace Pegasus

#endif
