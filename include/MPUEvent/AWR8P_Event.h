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
/// Lengths are taken as given, up to the end of the bytes held. A child may be longer than its
/// container is: it is shown whole, nodes in it included, wherever its container ends; the next
/// node is the one that follows behind the container. A container whose length is negative as a
/// signed number has no children, and behind a node whose length is, its container ends. A text
/// pays no heed to lengths; it ends at its NUL, or with the payload. A node of which not even the
/// header fits into the payload is none.
///
/// Where containers overlap, bytes are shown again. Each node counts 8 bytes and those that it
/// shows: before they come to more than eight times the payload, the decoding ends. So time and
/// memory are linear in the payload, whatever its nesting; no tree gets there in which children
/// end with their container and texts with their node.
class MPUEVENT_API AWR8P_Event : public QuarnEvent {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI AWR8P_Event(EmpEvLogMsg_s* record, int length);
  ~AWR8P_Event() override;

  /// Adds what a node says to this event, by one `appendBody` with all its entries. The bytes of
  /// the node are read as a payload's, which is trusted to be there: as far as the nodes in it
  /// claim, or of a text up to its NUL, but never more than the 65,535 bytes that a payload can
  /// have. A null pointer adds nothing.
  void awr8p_parse_evt(awrEvtHdr_s* node);

  /// Adds the data of a node, whatever its type, as hex-dump lines of 16 bytes: "<_0010>" with
  /// the offset in hex, two digits and a blank for each byte, then the bytes as characters. For
  /// the bytes that can be read and for a null pointer see `awr8p_parse_evt`.
  void awr8p_dump_bin(awrEvtHdr_s* node);

 private:
  int summaryTaken_;
};

}  // namespace Pegasus

#endif
