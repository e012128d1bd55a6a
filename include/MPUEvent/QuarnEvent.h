#ifndef MPUEVENT_QUARNEVENT_H
#define MPUEVENT_QUARNEVENT_H

#include <MPUEvent/Quarn_Event.h>

namespace Pegasus {

/// An event whose Body is a long list of elements, appended one by one.
class MPUEVENT_API QuarnEvent : public Quarn_Event {
 public:
  /// As `Quarn_Event`: a null record gives an empty event. The list starts empty.
  MPUEVENT_PEGASUS_ABI QuarnEvent(EmpEvLogMsg_s* record, int length);
  ~QuarnEvent() override;

  /// Appends "<key>value</key>" to the Body; the value is the printf-style expansion of `format`
  /// and of the arguments behind it. Nothing is escaped, but a key or value that ends in a lone
  /// backslash gets a period in its place: the key's is overwritten in the caller's buffer.
  virtual void addEntry(char* key, char* format, ...) __attribute__((format(printf, 3, 4)));

  /// Appends a NUL-terminated text to the Body, which grows ahead of need.
  virtual void appendBody(char* text);

 private:
  unsigned int bodyLength_;
  unsigned int bodyCapacity_;
};

}  // namespace Pegasus

#endif
