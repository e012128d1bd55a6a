#include "event/Numbers.h"

#include <charconv>

namespace mpuevent {

namespace {

char* putWord(char* place, std::uint32_t word) {
  return putEightHexDigits(place, word, Letters::capital);
}

}  // namespace

char* putLongDecimal(char* place, std::uint64_t value) {
  return std::to_chars(place, place + longestNumber, value).ptr;
}

char* putOtherNumber(char* place, Format format, std::uint64_t value) {
  switch (format) {
    case Format::markedPair:
      place = putWord(putLiteral(place, "("), static_cast<std::uint32_t>(value >> 32));
      place = putWord(putLiteral(place, ", "), static_cast<std::uint32_t>(value));
      return putLiteral(place, ") (hex)");
    case Format::trueFalse:
      return value != 0 ? putLiteral(place, "TRUE") : putLiteral(place, "FALSE");
    case Format::yesNo:
      return value != 0 ? putLiteral(place, "Yes") : putLiteral(place, "No");
    case Format::pointer0x:
      place = putLiteral(place, "0x");
      [[fallthrough]];
    case Format::pointer:
      return value == 0 ? putLiteral(place, "(nil)") : putNumber(place, Format::hexLower, value);
    default:
      return putLiteral(putDecimal(place, static_cast<std::int32_t>(value)), " seconds");
  }
}

}  // namespace mpuevent
