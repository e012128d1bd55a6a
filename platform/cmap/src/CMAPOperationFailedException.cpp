#include <CMAP/CMAPOperationFailedException.h>

namespace Pegasus {

CMAPOperationFailedException::CMAPOperationFailedException(unsigned int code, const String& text)
    : CIMOperationFailedException(text), errorCode_(code) {}

CMAPOperationFailedException::~CMAPOperationFailedException() = default;

}  // namespace Pegasus
