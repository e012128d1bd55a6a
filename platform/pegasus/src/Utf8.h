#ifndef Pegasus_Utf8_h
#define Pegasus_Utf8_h

#include <Pegasus/Common/Char16.h>

#include <cstddef>

// The stand-in has code of its own for this: it is built and installed as a library by itself, and
// what it makes of bytes and units that are no text is what OpenPegasus makes of them.
namespace Pegasus::utf8 {

/// Writes the text of `count` bytes to `units`, which has room for `count`; returns how many units
/// there are. Throws Exception, naming the place, for bytes that are no UTF-8.
Uint32 decode(const char* bytes, Uint32 count, Char16* units);

/// No unit takes more bytes than this.
constexpr Uint32 maxBytesPerUnit = 3;

/// Writes the text of `count` units to `bytes`, which has room for maxBytesPerUnit each; returns
/// how many bytes there are.
std::size_t encode(const Char16* units, Uint32 count, char* bytes);

}  // namespace Pegasus::utf8

#endif
