#include <MPUEvent/StringFormat.h>

#include <cstdint>

#include "event/BodyWriter.h"

namespace Pegasus {

using mpuevent::LineBuffer;
using mpuevent::Separator;

namespace {

unsigned long long joined(unsigned int high, unsigned int low) {
  return static_cast<unsigned long long>(high) << 32 | low;
}

}  // namespace

std::string StringFormat::decimal(unsigned long long value) {
  LineBuffer text(Separator::none);
  text.decimal(std::uint64_t{value});
  return std::string(text.view());
}

std::string StringFormat::decimal(unsigned int high, unsigned int low) {
  return decimal(joined(high, low));
}

std::string StringFormat::hex(unsigned long long value, unsigned int width) {
  LineBuffer text(Separator::none);
  text.text("0x");
  text.hexDigits(value, width, false);
  return std::string(text.view());
}

std::string StringFormat::hex(unsigned int high, unsigned int low, unsigned int width) {
  return hex(joined(high, low), width);
}

}  // namespace Pegasus
