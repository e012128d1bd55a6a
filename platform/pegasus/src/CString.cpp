#include <Pegasus/Common/String.h>

#include <cstring>
#include <utility>

#include "Utf8.h"

namespace Pegasus {

CString::CString(const CString& other) : bytes_(nullptr) {
  if (other.bytes_ != nullptr) {
    const std::size_t size = std::strlen(other.bytes_) + 1;
    bytes_ = new char[size];
    std::memcpy(bytes_, other.bytes_, size);
  }
}

CString& CString::operator=(const CString& other) {
  CString copy(other);
  std::swap(bytes_, copy.bytes_);
  return *this;
}

CString::~CString() { delete[] bytes_; }

CString String::getCString() const {
  const std::size_t most = std::size_t{size()} * utf8::maxBytesPerUnit;
  char* bytes = new char[most + 1];
  bytes[utf8::encode(getChar16Data(), size(), bytes)] = '\0';
  return CString(bytes);
}

}  // namespace Pegasus
