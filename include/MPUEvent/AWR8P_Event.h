#ifndef MPUEVENT_AWR8P_EVENT_H
#define MPUEVENT_AWR8P_EVENT_H

#include <MPUEvent/QuarnEvent.h>

namespace Pegasus {

/// A node of an AWR payload: its type and the length of its data, then the data. The type is
/// never defined; a pointer to it is a pointer to the node's first byte, of any alignment.
///
/// | offset | width | field                                                       |
/// |--------|-------|-------------------------------------------------------------|
/// | 0      | 4     | type: 0 text, 1 binary, 2 container, 3 event name           |
/// | 4      | 4     | length of the data in bytes                                 |
/// | 8      | ...   | a NUL-terminated text (0, 3), bytes (1), or nodes, back to  |
/// |        |       | back (2)                                                    |
struct awrEvtHdr_s;

/// Events of the AWR module, whose payload is a tree of nodes: its texts and binary data become
/// entries of the Body in the order of the record, the first text is the Summary as well, and a
/// name node gives the EventID. Nodes of another type are passed over.
///
/// Nothing that a node says of its length is believed past the end of its container or of the
/// bytes held: there it is cut, and a node of which not even the header fits is none. Only a text
/// pays no heed to lengths; it ends at its NUL, or with the payload. Time and memory are linear in
/// the payload, whatever its nesting.
class MPUEVENT_API AWR8P_Event : public QuarnEvent {
 public:
  /// As `QuarnEvent`; a null record leaves the base fields only.
  MPUEVENT_PEGASUS_ABI AWR8P_Event(EmpEvLogMsg_s* record, int length);
  ~AWR8P_Event() override;

  /// Adds what a node says to this event. The bytes that can be read are those that the node
  /// claims as its data, or of a text those up to its NUL; never more than the 65,535 that a
  /// payload can have. A null pointer adds nothing.
  void awr8p_parse_evt(awrEvtHdr_s* node);

  /// Adds the data of a node, whatever its type, as hex-dump lines of 16 bytes: "<_0010>" with
  /// the offset in hex, two digits and a blank for each byte, then the bytes as characters. For
  /// the bytes that can be read and for a null pointer see `awr8p_parse_evt`.
  void awr8p_dump_bin(awrEvtHdr_s* node);

 private:
  void show(const void* payload, unsigned int size);

  int summaryTaken_;
};

}  // namespace Pegasus

#endif
