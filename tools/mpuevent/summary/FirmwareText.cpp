#include "summary/FirmwareText.h"

#include "forms/Utf8.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kLongest = 1000;

// Nothing depends on the field today: what is to be kept from readers would.
std::string shown(FirmwareField /*field*/, std::string_view utf8) {
  if (utf8.size() <= kLongest) return std::string(utf8);
  std::size_t end = kLongest;
  while (end > 0 && (static_cast<unsigned char>(utf8[end]) & 0xC0) == 0x80) --end;
  return std::string(utf8.substr(0, end)) + "...";
}

}  // namespace

std::string firmwareText(FirmwareField field, const Pegasus::String& text) {
  Utf8Text utf8;
  return shown(field, utf8.assign(text));
}

std::string firmwareText(FirmwareField field, std::string_view bytes) {
  Utf8Text utf8;
  return shown(field, utf8.assignBytes(bytes));
}

}  // namespace mpuevent::tool
