#ifndef Pegasus_String_h
#define Pegasus_String_h

#include <Pegasus/Common/Char16.h>
#include <Pegasus/Common/Config.h>

#include <iosfwd>

namespace Pegasus {

class PEGASUS_COMMON_LINKAGE String;

// NOLINTBEGIN(google-explicit-constructor): callers rely on the conversions.

/// NUL-terminated bytes that a String was turned into; owns them.
class PEGASUS_COMMON_LINKAGE CString {
 public:
  CString() : bytes_(nullptr) {}
  CString(const CString& other);
  CString& operator=(const CString& other);
  ~CString();

  /// Valid while this object lives; null when default-constructed.
  operator const char*() const { return bytes_; }

 private:
  friend class String;
  explicit CString(char* owned) : bytes_(owned) {}

  char* bytes_;
};

/// Text as UTF-16 code units; every count and index is in units.
///
/// Copies share one buffer until one of them is changed. Distinct objects may be used by distinct
/// threads even while they share; one object must not be changed while another thread uses it.
///
/// Bytes come in as UTF-8, and bytes that are none throw Exception; encoded surrogates, U+FFFE and
/// U+FFFF become U+FFFD. An index past the end throws IndexOutOfBoundsException, a null pointer
/// NullPointer, which is to be caught as Exception; more than 0x3FFFFFFF units throw
/// std::bad_alloc. An operation that throws leaves its object unchanged.
class PEGASUS_COMMON_LINKAGE String {
 public:
  /// The empty text, constant-initialised: usable by static initialisers anywhere.
  static const String EMPTY;

  constexpr String() : buffer_(nullptr) {}
  String(const String& other);
  /// Leaves the other text empty.
  String(String&& other) noexcept : buffer_(other.buffer_) { other.buffer_ = nullptr; }
  /// The first `count` units of `other`; throws when there are fewer.
  String(const String& other, Uint32 count);
  String(const Char16* units);
  String(const Char16* units, Uint32 count);
  String(const char* utf8);
  /// Exactly `count` bytes; a NUL among them is kept.
  String(const char* utf8, Uint32 count);
#if __cplusplus >= 202002L
  constexpr  // so that EMPTY needs no destruction at exit
#endif
      ~String() {
    if (buffer_ != nullptr) {
      release(buffer_);  // NOLINT(clang-analyzer-cplusplus.NewDelete): it is counted
    }
  }

  String& operator=(const String& other);
  String& operator=(String&& other) noexcept {
    Buffer* const buffer = buffer_;
    buffer_ = other.buffer_;
    other.buffer_ = buffer;
    return *this;
  }
  String& assign(const String& other);
  String& assign(const Char16* units);
  String& assign(const Char16* units, Uint32 count);
  String& assign(const char* utf8);
  String& assign(const char* utf8, Uint32 count);

  String& append(const Char16& unit);
  /// The units may lie in this text itself.
  String& append(const Char16* units, Uint32 count);
  String& append(const String& other);
  /// Appends what printf would write, read as UTF-8.
  void appendPrintf(const char* format, ...) __attribute__((format(printf, 2, 3)));

  void clear();
  /// Makes room for `capacity` units, to the next power of two; never shrinks.
  void reserveCapacity(Uint32 capacity);
  /// Removes `count` units, by default all, from `index` on; throws when there are fewer.
  void remove(Uint32 index, Uint32 count = PEG_NOT_FOUND);
  /// ASCII letters only.
  void toLower();

  Uint32 size() const;
  /// NUL-terminated; valid until this object is changed or destroyed.
  const Char16* getChar16Data() const;
  /// The text in UTF-8. A high surrogate at the end of the text is left out; any other lone
  /// surrogate gives three bytes that are no valid UTF-8.
  CString getCString() const;

  /// The unit at size() is a readable NUL. A kept reference writes through to later copies.
  Char16& operator[](Uint32 index);
  const Char16 operator[](Uint32 index) const;

  /// Clipped to what the text has.
  String subString(Uint32 index, Uint32 count = PEG_NOT_FOUND) const;
  Uint32 find(Char16 unit) const;
  /// The first place at or after `index`, which may be size().
  Uint32 find(Uint32 index, Char16 unit) const;
  /// The empty text is found nowhere.
  Uint32 find(const String& text) const;
  Uint32 reverseFind(Char16 unit) const;

  /// Below, at or above zero, by code unit; the comparison ends at a NUL in the texts.
  static int compare(const String& a, const String& b);
  static int compare(const String& a, const String& b, Uint32 count);
  /// As compare, with ASCII letters of either case alike.
  static int compareNoCase(const String& a, const String& b);
  /// Unlike compare, NULs count as any other unit.
  static Boolean equal(const String& a, const String& b);
  static Boolean equalNoCase(const String& a, const String& b);

 private:
  struct Buffer;

  static void release(Buffer* buffer);
  String makeRoom(Uint32 capacity);

  Buffer* buffer_;  // null for the empty text
};

PEGASUS_COMMON_LINKAGE Boolean operator==(const String& a, const String& b);
PEGASUS_COMMON_LINKAGE Boolean operator==(const String& a, const char* b);
PEGASUS_COMMON_LINKAGE Boolean operator==(const char* a, const String& b);
PEGASUS_COMMON_LINKAGE Boolean operator!=(const String& a, const String& b);
PEGASUS_COMMON_LINKAGE Boolean operator<(const String& a, const String& b);
PEGASUS_COMMON_LINKAGE Boolean operator<=(const String& a, const String& b);
PEGASUS_COMMON_LINKAGE Boolean operator>(const String& a, const String& b);
PEGASUS_COMMON_LINKAGE Boolean operator>=(const String& a, const String& b);
PEGASUS_COMMON_LINKAGE String operator+(const String& a, const String& b);

/// Writes U+0001..U+00FF as one byte each (Latin-1, not UTF-8), any other unit as \xHHHH. A field
/// width applies to the first character alone.
PEGASUS_COMMON_LINKAGE std::ostream& operator<<(std::ostream& stream, const String& text);

// NOLINTEND(google-explicit-constructor)

}  // namespace Pegasus

#endif
