#ifndef MPUEVENT_STRINGFORMAT_H
#define MPUEVENT_STRINGFORMAT_H

#include <MPUEvent/Export.h>

#include <string>

namespace Pegasus {

/// Numbers as texts. A pair of words stands for the 64-bit number high * 2^32 + low.
class MPUEVENT_API StringFormat {
 public:
  static std::string decimal(unsigned long long value);
  static std::string decimal(unsigned int high, unsigned int low);
  /// "0x" and lower-case digits, filled up with zeros to at least `width` digits.
  static std::string hex(unsigned long long value, unsigned int width);
  static std::string hex(unsigned int high, unsigned int low, unsigned int width);
};

}  // namespace Pegasus

#endif
