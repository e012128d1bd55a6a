#ifndef CMAP_CMAPMessageHeader_h
#define CMAP_CMAPMessageHeader_h

#include <Pegasus/Common/String.h>

#include <atomic>

namespace Pegasus {

/// The 64-byte header of one CMAP message, kept as its wire bytes; integers are big-endian.
class PEGASUS_EXPORT CMAPMessageHeader {
 public:
  enum : Uint32 { wireSize = 64 };

  /// The handle that the next default-constructed header gets. Headers may be made on several
  /// threads at once; no two get the same handle until the counter wraps.
  static std::atomic<Uint32> nextHandleValue;

  /// All zero but for a handle of its own, drawn from nextHandleValue.
  CMAPMessageHeader();
  /// Copies `wireSize` bytes, the handle among them; draws none. Copying a header draws none
  /// either.
  explicit CMAPMessageHeader(const unsigned char* wire);

  /// Bytes of the whole message, these 64 included.
  Uint16 getTotalLength() const;
  void setTotalLength(Uint16 length);

  /// `wireSize` bytes, valid while this object lives.
  const unsigned char* getWireBytes() const { return wire_; }

  /// One readable line, without a line end.
  String str() const;

 private:
  unsigned char wire_[wireSize];
};

}  // namespace Pegasus

#endif
