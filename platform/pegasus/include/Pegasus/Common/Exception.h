#ifndef Pegasus_Exception_h
#define Pegasus_Exception_h

#include <Pegasus/Common/CIMStatusCode.h>
#include <Pegasus/Common/String.h>

namespace Pegasus {

// NOLINTBEGIN(google-explicit-constructor): callers rely on the conversions.

/// Base of the exception classes; not a std::exception.
class PEGASUS_COMMON_LINKAGE Exception {
 public:
  Exception(const String& message);
  Exception(const Exception& other);
  Exception& operator=(const Exception& other);
  virtual ~Exception();

  /// Exactly the text given at construction.
  virtual const String& getMessage() const;

 protected:
  Exception();

 private:
  String message_;
};

/// "index out of bounds".
class PEGASUS_COMMON_LINKAGE IndexOutOfBoundsException : public Exception {
 public:
  IndexOutOfBoundsException();
  ~IndexOutOfBoundsException() override;
};

class PEGASUS_COMMON_LINKAGE CIMException : public Exception {
 public:
  CIMException(CIMStatusCode code = CIM_ERR_SUCCESS, const String& message = String::EMPTY);
  CIMException(const CIMException& other);
  CIMException& operator=(const CIMException& other);
  ~CIMException() override;

  CIMStatusCode getCode() const;

 private:
  CIMStatusCode code_;
};

// NOLINTEND(google-explicit-constructor)

}  // namespace Pegasus

#endif
