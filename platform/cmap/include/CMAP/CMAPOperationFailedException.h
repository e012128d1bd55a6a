#ifndef CMAP_CMAPOperationFailedException_h
#define CMAP_CMAPOperationFailedException_h

#include <Pegasus/Provider/ProviderException.h>

namespace Pegasus {

/// A CMAP operation failed; its CIM status code is CIM_ERR_FAILED.
class PEGASUS_PROVIDER_LINKAGE CMAPOperationFailedException : public CIMOperationFailedException {
 public:
  /// `code` is a code of CMAPErrorCodes, `text` its message.
  CMAPOperationFailedException(unsigned int code, const String& text);
  ~CMAPOperationFailedException() override;

  unsigned int getErrorCode() const { return errorCode_; }

 private:
  Uint32 errorCode_;
};

}  // namespace Pegasus

#endif
