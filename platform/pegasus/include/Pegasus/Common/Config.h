#ifndef Pegasus_Config_h
#define Pegasus_Config_h

#include <Pegasus/Common/Linkage.h>

// One build serves every platform: a PEGASUS_PLATFORM_... definition is accepted and changes
// nothing.

#define PEGASUS_NAMESPACE_BEGIN namespace Pegasus {
#define PEGASUS_NAMESPACE_END }
#define PEGASUS_NAMESPACE(X) Pegasus::X
#define PEGASUS_STD(X) std::X
#define PEGASUS_USING_PEGASUS using namespace Pegasus
#define PEGASUS_USING_STD using namespace std

/// Printf length modifier of Uint64 and Sint64.
#define PEGASUS_64BIT_CONVERSION_WIDTH "ll"

/// "No such position", and as a count "up to the end".
#define PEG_NOT_FOUND Pegasus::Uint32(-1)

namespace Pegasus {

using Boolean = bool;
using Uint8 = unsigned char;
using Sint8 = signed char;
using Uint16 = unsigned short;
using Sint16 = short;
using Uint32 = unsigned int;
using Sint32 = int;
using Uint64 = unsigned long long;  // never uint64_t: overloads on the two differ
using Sint64 = long long;
using Real32 = float;
using Real64 = double;

}  // namespace Pegasus

#endif
