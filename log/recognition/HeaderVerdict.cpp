#include "log/recognition/HeaderVerdict.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace mpuevent::log {

namespace {

constexpr unsigned kLastSource = 33;
constexpr unsigned kLastType = 3;
constexpr unsigned kLastCategory = 13;
constexpr unsigned kManySlots = 256;

enum class Serial { empty, text, strange };

bool isAllZero(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == '\0'; });
}

// Text begins with an ASCII character, has no control characters, and is padded with NULs, of which
// there is at least one.
Serial kindOf(std::string_view field) {
  const std::size_t length = field.find('\0');
  if (length == std::string_view::npos || !isAllZero(field.substr(length))) return Serial::strange;
  if (length == 0) return Serial::empty;
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; };
  const std::string_view text = field.substr(0, length);
  const auto first = static_cast<unsigned char>(text.front());
  return first > ' ' && first < 0x7F && std::none_of(text.begin(), text.end(), isControl)
             ? Serial::text
             : Serial::strange;
}

bool sourceIsKnown(unsigned source) { return source <= kLastSource; }
bool typeIsKnown(unsigned type) { return type - 1 < kLastType; }
bool categoryIsKnown(unsigned category) { return category - 1 < kLastCategory; }

}  // namespace

bool isBlank(const unsigned char* bytes, std::size_t size) {
  return size == 0 ||
         ((bytes[0] == 0 || bytes[0] == 0xFF) && std::memcmp(bytes, bytes + 1, size - 1) == 0);
}

bool serialsAreAPattern(const Record& record) {
  constexpr std::size_t longestPeriod = 16;
  for (std::size_t period = 1; period <= longestPeriod; ++period) {
    if (std::memcmp(record.data(), record.data() + period, serialsSize - period) == 0) return true;
  }
  return false;
}

int knownCodes(const Record& record) {
  return (sourceIsKnown(record.source()) ? 1 : 0) + (typeIsKnown(record.type()) ? 1 : 0) +
         (categoryIsKnown(record.category()) ? 1 : 0);
}

bool hasSmallNumbers(const Record& record) {
  return knownCodes(record) == 3 && record.controllerSlot() < kManySlots;
}

Verdict judgeHeader(const Record& record, const LogProfile& profile) {
  if (isOfKnownWriter(record, profile)) return Verdict::sound;
  const int codes = knownCodes(record);
  const Serial enclosure =
      kindOf(record.bytes(Record::enclosureSerialNumberAt, Record::serialSize));
  const Serial controller =
      kindOf(record.bytes(Record::controllerSerialNumberAt, Record::serialSize));
  const bool empty = enclosure == Serial::empty && controller == Serial::empty;
  if (enclosure == Serial::text && controller == Serial::text) {
    const bool slotIsSmall = record.controllerSlot() < kManySlots;
    return codes + (slotIsSmall ? 1 : 0) >= 3 ? Verdict::sound : Verdict::byText;
  }
  const bool strange = enclosure == Serial::strange || controller == Serial::strange;
  if (codes == 3) {
    if (empty) return profile.knowsSerials(record) ? Verdict::byText : Verdict::byCodes;
    if (!strange) return Verdict::byText;
    if (!serialsAreAPattern(record)) return Verdict::byCodes;
    return Verdict::none;
  }
  const bool text = enclosure == Serial::text || controller == Serial::text;
  const bool hasCodes = record.type() != 0 || record.category() != 0;
  return hasCodes && (codes == 2 || text) ? Verdict::possible : Verdict::none;
}

bool mayBeHeader(const unsigned char* bytes, const LogProfile& profile) {
  const bool codes = typeIsKnown(bytes[Record::typeAt]) &&
                     categoryIsKnown(bytes[Record::categoryAt]) &&
                     sourceIsKnown(bytes[Record::sourceAt]);
  // A text in each field ends with a NUL, at the latest in its last byte.
  const bool texts = bytes[0] > ' ' && bytes[Record::controllerSerialNumberAt] > ' ' &&
                     bytes[Record::controllerSerialNumberAt - 1] == 0 &&
                     bytes[serialsSize - 1] == 0;
  return codes || texts || profile.mayKnowSerials(bytes);
}

}  // namespace mpuevent::log
