#ifndef MPUEVENT_NETWORK_CONFIGMP_EVENT_H
#define MPUEVENT_NETWORK_CONFIGMP_EVENT_H

#include <MPUEvent/Quarn_Event.h>

namespace Pegasus {

/// Events of the network configuration process: messages, management-message errors and the
/// state of link-aggregation ports. The EventID is a title; nothing in the Body is escaped. An
/// event of an unknown number keeps the number as its EventID, has the payload in hex as its
/// Body, and is reported by a trace line.
class MPUEVENT_API NETWORK_CONFIGMP_Event : public Quarn_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI NETWORK_CONFIGMP_Event(EmpEvLogMsg_s* record, int length);
  ~NETWORK_CONFIGMP_Event() override;
};

// Each of these reads the payload as one layout, whatever the event number. But for the dump, they
// trust the record's `evStructLength`. A null record gives an empty text.

/// The text that the payload is, at most 255 bytes of it.
MPUEVENT_API String get_NCS_text_event_summary(EmpEvLogMsg_s const* record);
/// The whole text as an element.
MPUEVENT_API String get_NCS_text_event_body(EmpEvLogMsg_s const* record);
/// The text, and as `<Hex>` what lies behind its NUL, in a payload of `length` bytes whatever the
/// record says. A length of 0 or less holds neither.
MPUEVENT_API String get_NCS_dump_event_body(EmpEvLogMsg_s const* record, int length);
/// The fields of a management message, and a text.
MPUEVENT_API String get_NCS_mmsg_event_body(EmpEvLogMsg_s const* record);
/// The request whose response event could not be registered, and a text.
MPUEVENT_API String get_NCS_responseEvent_body(EmpEvLogMsg_s const* record);
/// A link-aggregation port; "UP" or "DOWN" follows the status word of the payload.
MPUEVENT_API String get_NCS_link_event_body(EmpEvLogMsg_s const* record);

}  // namespace Pegasus

#endif
