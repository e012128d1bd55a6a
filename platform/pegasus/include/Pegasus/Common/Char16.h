#ifndef Pegasus_Char16_h
#define Pegasus_Char16_h

#include <Pegasus/Common/Config.h>

namespace Pegasus {

// NOLINTBEGIN(google-explicit-constructor): callers rely on the conversions.

/// One UTF-16 code unit. A plain char above 0x7F comes in sign-extended where char is signed: cast
/// it to Uint8 first.
class PEGASUS_COMMON_LINKAGE Char16 {
 public:
  constexpr Char16() : unit_(0) {}
  constexpr Char16(Uint16 unit) : unit_(unit) {}

  constexpr operator Uint16() const { return unit_; }

 private:
  Uint16 unit_;
};

// The char forms keep `text[0] == 'a'` from being ambiguous with the built-in comparison.
inline Boolean operator==(const Char16& a, const Char16& b) { return Uint16(a) == Uint16(b); }
inline Boolean operator==(const Char16& a, char b) { return Uint16(a) == Uint16(b); }
inline Boolean operator==(char a, const Char16& b) { return Uint16(a) == Uint16(b); }
inline Boolean operator!=(const Char16& a, const Char16& b) { return Uint16(a) != Uint16(b); }
inline Boolean operator!=(const Char16& a, char b) { return Uint16(a) != Uint16(b); }
inline Boolean operator!=(char a, const Char16& b) { return Uint16(a) != Uint16(b); }

// NOLINTEND(google-explicit-constructor)

}  // namespace Pegasus

#endif
