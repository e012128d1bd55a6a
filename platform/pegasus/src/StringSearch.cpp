#include <Pegasus/Common/Exception.h>
#include <Pegasus/Common/String.h>

#include <algorithm>

namespace Pegasus {
namespace {

Uint16 asIs(Uint16 unit) { return unit; }
Uint16 lowered(Uint16 unit) {
  return unit >= 'A' && unit <= 'Z' ? static_cast<Uint16>(unit - 'A' + 'a') : unit;
}

template <typename Fold>
int compareUnits(const String& a, const String& b, Uint32 count, Fold fold) {
  const Char16* left = a.getChar16Data();
  const Char16* right = b.getChar16Data();
  for (Uint32 i = 0; i < count; ++i) {
    const Uint16 x = fold(left[i]);
    const Uint16 y = fold(right[i]);
    if (x != y) return x < y ? -1 : 1;
    if (x == 0) break;
  }
  return 0;
}

template <typename Fold>
bool equalUnits(const String& a, const String& b, Fold fold) {
  const Char16* left = a.getChar16Data();
  return a.size() == b.size() &&
         std::equal(left, left + a.size(), b.getChar16Data(),
                    [fold](Char16 x, Char16 y) { return fold(x) == fold(y); });
}

}  // namespace

int String::compare(const String& a, const String& b) {
  return compareUnits(a, b, PEG_NOT_FOUND, asIs);
}

int String::compare(const String& a, const String& b, Uint32 count) {
  return compareUnits(a, b, count, asIs);
}

int String::compareNoCase(const String& a, const String& b) {
  return compareUnits(a, b, PEG_NOT_FOUND, lowered);
}

Boolean String::equal(const String& a, const String& b) { return equalUnits(a, b, asIs); }
Boolean String::equalNoCase(const String& a, const String& b) { return equalUnits(a, b, lowered); }

void String::toLower() {
  for (Uint32 i = 0; i < size(); ++i) (*this)[i] = lowered((*this)[i]);
}

Uint32 String::find(Char16 unit) const { return find(0, unit); }

Uint32 String::find(Uint32 index, Char16 unit) const {
  if (index > size()) throw IndexOutOfBoundsException();
  for (const Char16* units = getChar16Data(); index < size(); ++index) {
    if (units[index] == unit) return index;
  }
  return PEG_NOT_FOUND;
}

Uint32 String::find(const String& text) const {
  const Char16* begin = getChar16Data();
  const Char16* end = begin + size();
  const Char16* wanted = text.getChar16Data();
  const Char16* found = std::search(begin, end, wanted, wanted + text.size());
  return text.size() == 0 || found == end ? PEG_NOT_FOUND : static_cast<Uint32>(found - begin);
}

Uint32 String::reverseFind(Char16 unit) const {
  const Char16* units = getChar16Data();
  for (Uint32 i = size(); i > 0; --i) {
    if (units[i - 1] == unit) return i - 1;
  }
  return PEG_NOT_FOUND;
}

Boolean operator==(const String& a, const String& b) { return String::equal(a, b); }
Boolean operator==(const String& a, const char* b) { return String::equal(a, String(b)); }
Boolean operator==(const char* a, const String& b) { return String::equal(String(a), b); }
Boolean operator!=(const String& a, const String& b) { return !String::equal(a, b); }
Boolean operator<(const String& a, const String& b) { return String::compare(a, b) < 0; }
Boolean operator<=(const String& a, const String& b) { return String::compare(a, b) <= 0; }
Boolean operator>(const String& a, const String& b) { return String::compare(a, b) > 0; }
Boolean operator>=(const String& a, const String& b) { return String::compare(a, b) >= 0; }

}  // namespace Pegasus
