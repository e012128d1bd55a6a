#ifndef CMAP_CMAPErrorCodes_h
#define CMAP_CMAPErrorCodes_h

#include <Pegasus/Common/String.h>

#include <array>

namespace Pegasus {

/// The error codes of the CMAP library and their texts; read-only, for any number of threads.
class PEGASUS_EXPORT CMAPErrorCodes {
 public:
  struct Entry {
    Uint32 code;
    Uint32 text;  ///< which text the entry has; the numbering is the library's own
  };
  static_assert(sizeof(Entry) == 8, "an entry is two 32-bit words on every host");

  enum : Uint32 { entryCount = 172 };

  /// Entry 28 stands for a failed read, entry 30 for a short read.
  static const std::array<Entry, entryCount> _errorCodeArray;

  /// The code's place in the array; entryCount for a code that is not in it.
  static Uint32 getIndex(Uint32 code);

  /// A one-line text, never empty; "Unknown CMAP error" for an index past the array.
  static String getTextForIndex(Uint32 index);
};

}  // namespace Pegasus

#endif
