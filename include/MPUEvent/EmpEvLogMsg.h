#ifndef MPUEVENT_EMPEVLOGMSG_H
#define MPUEVENT_EMPEVLOGMSG_H

namespace Pegasus {

/// A raw event-log record as the firmware writes it: a 152-byte big-endian header, followed by
/// `evStructLength` bytes of payload. The type is never defined: a pointer to it is a pointer to
/// the record's first byte, of any alignment, and the library alone takes the bytes apart.
///
/// | offset | width | field                      |
/// |--------|-------|----------------------------|
/// | 0      | 64    | `evEnclosureSerialNumber`  |
/// | 64     | 64    | `evControllerSerialNumber` |
/// | 128    | 4     | `evControllerSlot`         |
/// | 132    | 4     | `evLogInstance`            |
/// | 136    | 4     | `evSequenceId`             |
/// | 140    | 4     | `evTimestamp`              |
/// | 144    | 2     | `evStructLength`           |
/// | 146    | 1     | `evSource`                 |
/// | 147    | 1     | `evType`                   |
/// | 148    | 1     | `evCategory`               |
/// | 149    | 1     | `evIdVersion`              |
/// | 150    | 2     | `evId`                     |
/// | 152    | ...   | `evStruct`, the payload    |
struct EmpEvLogMsg_s;

}  // namespace Pegasus

#endif
