#include "decoders/awr/dump.h"

#include <array>
#include <cstddef>
#include <cstring>

#include "event/HexDigits.h"
#include "event/Numbers.h"
#include "event/Tags.h"
#include "event/Text.h"

namespace mpuevent::awr {

namespace {

constexpr std::size_t lineSize = 16;
constexpr std::size_t middle = 8;

/// What stands for each byte in the column of characters, but for "<" and ">".
constexpr auto shownCharacters = [] {
  std::array<char, 256> shown{};
  shown.fill('.');
  for (char character = ' '; character <= '~'; ++character) {
    if (character != ';' && character != '=') {
      shown[static_cast<unsigned char>(character)] = character;
    }
  }
  return shown;
}();

char* putHexColumn(char* place, std::string_view line) {
  constexpr char lowerCase = 'a' ^ 'A';  // which digits have, too
  for (std::size_t i = 0; i < line.size(); ++i) {
    const std::array<char, 2>& pair = hexPairs[static_cast<unsigned char>(line[i])];
    *place++ = static_cast<char>(pair[0] | lowerCase);
    *place++ = static_cast<char>(pair[1] | lowerCase);
    *place++ = ' ';
    if (i + 1 == middle) *place++ = ' ';
  }
  // A byte takes three characters, but a missing one four: a short line is the wider one.
  const std::size_t missing = 4 * (lineSize - line.size()) + (line.size() < middle ? 1 : 0);
  std::memset(place, ' ', missing);
  return place + missing;
}

char* putCharacterColumn(char* place, std::string_view line) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] == '<') {
      place = putLiteral(place, "&lt;");
    } else if (line[i] == '>') {
      place = putLiteral(place, "&gt;");
    } else {
      *place++ = shownCharacters[static_cast<unsigned char>(line[i])];
    }
    if (i + 1 == middle) *place++ = '|';
  }
  return place;
}

}  // namespace

void writeDump(BodyWriter& entries, std::string_view bytes) {
  constexpr std::size_t widestLine = lineSize * (4 + 4) + 3;
  char key[1 + 2 * longestNumber] = "_";
  ElementRun elements(entries);
  for (std::size_t start = 0; start < bytes.size(); start += lineSize) {
    const std::string_view line = bytes.substr(start, lineSize);
    const KeyTags tags{
        {key, putHexDigits(key + 1, start, 4, Letters::small)}
    };
    char* const value = elements.open(tags, widestLine);
    char* const end = putCharacterColumn(putHexColumn(value, line), line);
    repairLoneBackslash(value, end);
    elements.close(tags, end);
  }
}

}  // namespace mpuevent::awr
