#ifndef MPUEVENT_ARCREGISTERS_H
#define MPUEVENT_ARCREGISTERS_H

#include <MPUEvent/Export.h>

#include <cstdint>

namespace Pegasus {

/// A bit field of a register.
struct ArcRegisterField {
  char name[24];             ///< filled up with NULs; empty in the row behind a table's last
  std::uint32_t mask;        ///< `width` one-bits, shifted to `lowestBit`
  std::int32_t lowestBit;    ///< 0 to 31; -1 in the row behind a table's last
  std::int32_t widthInBits;  ///< 1 to 32; 0 in the row behind a table's last
};

/// A register of the R5600 controller chip's processor core, or a run of registers of one name.
struct ArcRegister {
  char name[20];                ///< filled up with NULs; empty in the row behind the last
  std::int32_t offset;          ///< of the first instance, in bytes; -1 in the row behind the last
  std::uint32_t instanceCount;  ///< one behind the other; may reach into the next row's registers
  std::uint32_t widthInBits;    ///< of one instance: 32
  const ArcRegisterField* fields;  ///< most significant first; null for a register without fields
};

// Constant data, for any number of threads; unmangled symbols, so that a debugger or a dump
// reader finds them by name. Each table has one more row behind its last, as told above.
extern "C" {

extern MPUEVENT_API const ArcRegister rtTavo4ArcRegsNames[159];

extern MPUEVENT_API const ArcRegisterField rtTavo4ArcSTATUSFields[10];
extern MPUEVENT_API const ArcRegisterField rtTavo4ArcIDENTITYFields[5];
extern MPUEVENT_API const ArcRegisterField rtTavo4ArcVECBASEADRFields[3];
extern MPUEVENT_API const ArcRegisterField rtTavo4IRQ_LEVFields[5];
extern MPUEVENT_API const ArcRegisterField rtTavo4IRQ_HINTFields[3];
extern MPUEVENT_API const ArcRegisterField rtTavo4ARC_CTLFields[15];
extern MPUEVENT_API const ArcRegisterField rtTavo4ERR_STAFields[10];
extern MPUEVENT_API const ArcRegisterField rtTavo4ERR_INT_ENFields[10];
extern MPUEVENT_API const ArcRegisterField rtTavo4SYS_PE_STAFields[4];

}  // extern "C"

}  // namespace Pegasus

#endif
