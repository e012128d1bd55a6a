#include "log/choosing/Choice.h"

#include <algorithm>
#include <string_view>

#include "log/choosing/RecordBytes.h"

namespace mpuevent::log {

namespace {

std::uint32_t numberOf(const Record& record, HeaderNumber number) {
  switch (number) {
    case HeaderNumber::timestamp:
      return record.timestamp();
    case HeaderNumber::type:
      return record.type();
    case HeaderNumber::source:
      return record.source();
    case HeaderNumber::category:
      return record.category();
    case HeaderNumber::code:
      return record.id();
    case HeaderNumber::slot:
      return record.controllerSlot();
    case HeaderNumber::logInstance:
      return record.logInstance();
    case HeaderNumber::sequenceId:
      return record.sequenceId();
  }
  return 0;
}

std::string_view textOf(const Record& record, HeaderText text) {
  return text == HeaderText::enclosureSerial ? record.enclosureSerialNumber()
                                             : record.controllerSerialNumber();
}

bool holds(const Choice::NumberTest& test, const Record& record) {
  const std::uint32_t number = numberOf(record, test.number);
  for (const NumberRange range : test.ranges) {
    if (number >= range.first && number <= range.last) return !test.negated;
  }
  return test.negated;
}

bool holds(const Choice::TextTest& test, const Record& record) {
  const std::string_view text = textOf(record, test.text);
  return test.negated !=
         (std::find(test.texts.begin(), test.texts.end(), text) != test.texts.end());
}

}  // namespace

// Asked of every record that is read: plain loops, as most often there are one or two tests.
bool Choice::allHold(std::span<const unsigned char> bytes) const {
  const Record record = headerOf(bytes);
  for (const NumberTest& test : numbers_) {
    if (!holds(test, record)) return false;
  }
  for (const TextTest& test : texts_) {
    if (!holds(test, record)) return false;
  }
  return true;
}

}  // namespace mpuevent::log
