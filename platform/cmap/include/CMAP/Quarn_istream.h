#ifndef CMAP_Quarn_istream_h
#define CMAP_Quarn_istream_h

#include <Pegasus/Common/Config.h>

namespace Pegasus {

/// Input stream over the body of a received message. One thread at a time.
class PEGASUS_EXPORT Quarn_istream {
 public:
  virtual ~Quarn_istream();

  /// Reads up to `count` bytes into the caller's `buffer`; gcount() tells what came of it.
  virtual Quarn_istream& read(char* buffer, int count) = 0;

  /// Bytes that the last read delivered, 0 before the first; negative when the read failed.
  virtual int gcount() const = 0;
};

/// Stream over bytes in memory. They stay the caller's, unchanged for as long as the stream is
/// read.
class PEGASUS_EXPORT Quarn_imemstream : public Quarn_istream {
 public:
  /// A negative `count` counts as 0; `bytes` may be null when there are none.
  Quarn_imemstream(const void* bytes, int count);
  ~Quarn_imemstream() override;

  /// Delivers at most what is left. Fails, with gcount() -1 and the position kept, for a negative
  /// `count` and for a null `buffer` that is to take bytes.
  Quarn_imemstream& read(char* buffer, int count) override;
  int gcount() const override;

 private:
  const char* next_;
  int left_;
  int delivered_;
};

}  // namespace Pegasus

#endif
