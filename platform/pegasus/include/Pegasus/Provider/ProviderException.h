#ifndef Pegasus_ProviderException_h
#define Pegasus_ProviderException_h

#include <Pegasus/Common/Exception.h>

namespace Pegasus {

// NOLINTBEGIN(google-explicit-constructor): callers rely on the conversions.

class PEGASUS_PROVIDER_LINKAGE CIMOperationFailedException : public CIMException {
 public:
  /// The code is CIM_ERR_FAILED.
  CIMOperationFailedException(const String& message);
  CIMOperationFailedException(const CIMOperationFailedException& other);
  CIMOperationFailedException& operator=(const CIMOperationFailedException& other);
  ~CIMOperationFailedException() override;

 protected:
  CIMOperationFailedException(CIMStatusCode code, const String& message);
};

// NOLINTEND(google-explicit-constructor)

}  // namespace Pegasus

#endif
