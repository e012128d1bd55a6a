#include <MPUEvent/QuarnEvent.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <vector>

#include "event/Recording.h"
#include "event/Text.h"

namespace Pegasus {

namespace {

constexpr std::size_t localSize = 2048;
constexpr unsigned int firstCapacity = 2048;

unsigned int roundedUp(unsigned int value) { return (value + 15) / 16 * 16; }

/// Tells what records of an element that is about to become a part of the Body.
void tellElement(const char* element, const char* key) {
  if (mpuevent::Recording* recording = mpuevent::recording()) {
    recording->addElement(mpuevent::toString(element), mpuevent::toString(key).size());
  }
}

/// Writes the element into `size` bytes as far as it fits. Returns the length of the whole.
std::size_t formatElement(char* element, std::size_t size, const char* key, const char* format,
                          va_list arguments) {
  std::size_t length = 0;
  const auto place = [&] { return length < size ? element + length : nullptr; };
  const auto room = [&] { return length < size ? size - length : 0; };
  const auto advance = [&](int written) {
    if (written > 0) length += static_cast<std::size_t>(written);
  };
  advance(std::snprintf(place(), room(), "<%s>", key));
  const std::size_t valueStart = length;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
  advance(std::vsnprintf(place(), room(), format, arguments));
#pragma GCC diagnostic pop
  if (length < size) mpuevent::repairLoneBackslash(element + valueStart, element + length);
  advance(std::snprintf(place(), room(), "</%s>", key));
  return length;
}

}  // namespace

QuarnEvent::QuarnEvent(EmpEvLogMsg_s* record, int length)
    : Quarn_Event(record, static_cast<unsigned int>(length)), bodyLength_(0), bodyCapacity_(0) {}

QuarnEvent::~QuarnEvent() = default;

void QuarnEvent::addEntry(char* key, char* format, ...) {
  if (key == nullptr || format == nullptr) return;
  mpuevent::repairLoneBackslash(key, key + std::strlen(key));

  va_list arguments;
  va_start(arguments, format);
  va_list again;
  va_copy(again, arguments);
  char local[localSize];
  const std::size_t length = formatElement(local, sizeof local, key, format, arguments);
  if (length < sizeof local - 1) {
    tellElement(local, key);
    appendBody(local);
  } else {
    std::vector<char> element(length + 1);
    formatElement(element.data(), element.size(), key, format, again);
    tellElement(element.data(), key);
    appendBody(element.data());
  }
  va_end(again);
  va_end(arguments);
}

void QuarnEvent::appendBody(char* text) {
  if (text == nullptr) return;
  const auto length = static_cast<unsigned int>(std::strlen(text));
  const String added = mpuevent::toString({text, length});
  if (mpuevent::Recording* recording = mpuevent::recording()) {
    recording->bodyAppended(this, Body.size(), added);
  }
  if (Body.size() == 0) {
    bodyLength_ += length;
    Body = added;
    return;
  }
  if (bodyCapacity_ == 0) {
    bodyCapacity_ = std::max(roundedUp(2 * length), firstCapacity);
    Body.reserveCapacity(bodyCapacity_);
  }
  bodyLength_ += length;
  if (bodyLength_ >= bodyCapacity_) {
    bodyCapacity_ = roundedUp(2 * bodyLength_);
    Body.reserveCapacity(bodyCapacity_);
  }
  Body.append(added);
}

}  // namespace Pegasus
