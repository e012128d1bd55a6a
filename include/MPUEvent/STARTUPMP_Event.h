#ifndef MPUEVENT_STARTUPMP_EVENT_H
#define MPUEVENT_STARTUPMP_EVENT_H

#include <MPUEvent/ArcRegisters.h>
#include <MPUEvent/Quarn_Event.h>

namespace Pegasus {

/// Events of the start-up management process: its messages, management messages that it could not
/// handle, and what is left of a crash - the signal that an application died of, the registers of
/// an R5600 chip in an invalid state, its stack. The EventID is a title in words.
class MPUEVENT_API STARTUPMP_Event : public Quarn_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event.
  MPUEVENT_PEGASUS_ABI STARTUPMP_Event(EmpEvLogMsg_s* record, int length);
  ~STARTUPMP_Event() override;
};

// Bodies of the kinds of events, whatever event id the record has. The record must be as long as
// its `evStructLength` says; a null record gives an empty text.

/// Start-up messages, line by line: a line with '=' as `<Values>`, each value in an element named
/// after its key, any other line as `<Text1>`, `<Text2>` and so on.
MPUEVENT_API String get_STARTUPMP_MSG_STRING(EmpEvLogMsg_s const* record);

/// A text, and the header of the management message that start-up did not know.
MPUEVENT_API String get_STARTUPMP_MSG_MMCH(EmpEvLogMsg_s const* record);

/// The same for a message that was cut short: only the fields that it still has.
MPUEVENT_API String get_STARTUPMP_MSG_PARTIAL_MMSG(EmpEvLogMsg_s const* record);

/// The registers of the chip's processor core as `rtTavo4ArcRegsNames` lists them, but for those
/// without a name of their own ("REG_6"), each with its bit fields. At most 32,768 bytes.
MPUEVENT_API String get_R5600_INVALID_STATE_MMSG(EmpEvLogMsg_s const* record);

/// The stack pointer and the stack's words, each in an element named after its address. At most
/// 32,768 bytes; words that are left out are told by a trace line.
MPUEVENT_API String get_R5600_stack_dump(EmpEvLogMsg_s const* record);

/// The fatal signal of a management application, its cause in words, the PowerPC registers and
/// the memory layout of the process.
MPUEVENT_API String get_SignalInfo(EmpEvLogMsg_s const* record);

}  // namespace Pegasus

#endif
