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

}  // namespace

bool Choice::chooses(std::span<const unsigned char> bytes) const {
  const Record record = recordOf(bytes);
  return std::all_of(numbers_.begin(), numbers_.end(),
                     [&record](const NumberTest& test) {
                       const std::uint32_t number = numberOf(record, test.number);
                       return test.negated != std::any_of(test.ranges.begin(), test.ranges.end(),
                                                          [number](const NumberRange& range) {
                                                            return number >= range.first &&
                                                                   number <= range.last;
                                                          });
                     }) &&
         std::all_of(texts_.begin(), texts_.end(), [&record](const TextTest& test) {
           const std::string_view text = textOf(record, test.text);
           return test.negated !=
                  (std::find(test.texts.begin(), test.texts.end(), text) != test.texts.end());
         });
}

}  // namespace mpuevent::log
