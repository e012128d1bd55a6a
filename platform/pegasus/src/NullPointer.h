#ifndef Pegasus_NullPointer_h
#define Pegasus_NullPointer_h

#include <Pegasus/Common/Exception.h>

namespace Pegasus {

/// "null pointer". Programs have no header with it and catch it as Exception, but its name shows.
class PEGASUS_COMMON_LINKAGE NullPointer : public Exception {
 public:
  NullPointer();
  ~NullPointer() override;
};

}  // namespace Pegasus

#endif
