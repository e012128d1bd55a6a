#include <MPUEvent/StringFormat.h>

#include <MPUEvent/XmlString.h>
#include <string>

#include "event/BodyWriter.h"

namespace Pegasus {

namespace {

constexpr unsigned int hexElementDigits = 8;

}  // namespace

XmlString::XmlString() = default;

std::string XmlString::addStringElement(std::string key, std::string value) {
  mpuevent::BodyBuffer element(mpuevent::Separator::none);
  element.note(key);
  element.element(key, value);
  element.tellElements();
  return std::string(element.view());
}

std::string XmlString::addDecimalElement(std::string key, unsigned int value) {
  return addStringElement(key, StringFormat::decimal(value));
}

std::string XmlString::addHexElement(std::string key, unsigned int value) {
  return addStringElement(key, StringFormat::hex(value, hexElementDigits));
}

std::string XmlString::addHexElement(std::string key, unsigned int high, unsigned int low) {
  return addStringElement(key, StringFormat::hex(high, low, hexElementDigits));
}

void XmlString::append(const std::string& elements) { text_ += elements; }
const std::string& XmlString::text() const { return text_; }

}  // namespace Pegasus
