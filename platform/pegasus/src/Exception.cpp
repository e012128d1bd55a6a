#include <Pegasus/Common/Exception.h>
#include <Pegasus/Provider/ProviderException.h>

#include "NullPointer.h"

namespace Pegasus {

Exception::Exception() = default;
Exception::Exception(const String& message) : message_(message) {}
Exception::Exception(const Exception& other) = default;
Exception& Exception::operator=(const Exception& other) = default;
Exception::~Exception() = default;
const String& Exception::getMessage() const { return message_; }

NullPointer::NullPointer() : Exception("null pointer") {}
NullPointer::~NullPointer() = default;

IndexOutOfBoundsException::IndexOutOfBoundsException() : Exception("index out of bounds") {}
IndexOutOfBoundsException::~IndexOutOfBoundsException() = default;

CIMException::CIMException(CIMStatusCode code, const String& message)
    : Exception(message), code_(code) {}
CIMException::CIMException(const CIMException& other) = default;
CIMException& CIMException::operator=(const CIMException& other) = default;
CIMException::~CIMException() = default;
CIMStatusCode CIMException::getCode() const { return code_; }

CIMOperationFailedException::CIMOperationFailedException(const String& message)
    : CIMException(CIM_ERR_FAILED, message) {}
CIMOperationFailedException::CIMOperationFailedException(CIMStatusCode code, const String& message)
    : CIMException(code, message) {}
CIMOperationFailedException::CIMOperationFailedException(const CIMOperationFailedException& other) =
    default;
CIMOperationFailedException& CIMOperationFailedException::operator=(
    const CIMOperationFailedException& other) = default;
CIMOperationFailedException::~CIMOperationFailedException() = default;

}  // namespace Pegasus
