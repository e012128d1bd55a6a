#include "summary/FirmwareText.h"

#include "forms/Utf8.h"

namespace mpuevent::tool {

namespace {

constexpr std::size_t kLongest = 1000;

}  // namespace

std::string FirmwareText::shown(std::string_view utf8) const {
  std::string text = redaction_ != nullptr ? redaction_->named(utf8) : std::string(utf8);
  if (text.size() <= kLongest) return text;
  std::size_t end = kLongest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  text.resize(end);
  return text + "...";
}

std::string FirmwareText::operator()(const Pegasus::String& text) const {
  Utf8Text utf8;
  return shown(utf8.assign(text));
}

std::string FirmwareText::operator()(std::string_view bytes) const {
  Utf8Text utf8;
  return shown(utf8.assignBytes(bytes));
}

}  // namespace mpuevent::tool
