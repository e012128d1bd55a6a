#include <CMAP/Quarn_istream.h>

#include <algorithm>
#include <cstring>

namespace Pegasus {

Quarn_istream::~Quarn_istream() = default;

Quarn_imemstream::Quarn_imemstream(const void* bytes, int count)
    : next_(static_cast<const char*>(bytes)), left_(std::max(count, 0)), delivered_(0) {}

Quarn_imemstream::~Quarn_imemstream() = default;

Quarn_imemstream& Quarn_imemstream::read(char* buffer, int count) {
  if (count < 0 || (count > 0 && buffer == nullptr)) {
    delivered_ = -1;
    return *this;
  }
  delivered_ = std::min(count, left_);
  if (delivered_ > 0) {
    std::memcpy(buffer, next_, static_cast<std::size_t>(delivered_));
    next_ += delivered_;
    left_ -= delivered_;
  }
  return *this;
}

int Quarn_imemstream::gcount() const { return delivered_; }

}  // namespace Pegasus
