#include "decoders/awr/dump.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "event/HexDigits.h"
#include "event/Numbers.h"
#include "event/Tags.h"
#include "event/Text.h"

namespace mpuevent::awr {

namespace {

constexpr std::size_t lineSize = 16;
constexpr std::size_t middle = 8;

/// The two lower-case digits of each byte, and two blanks: all are copied, one blank counts.
constexpr auto hexCells = [] {
  constexpr char lowerCase = 'a' ^ 'A';  // which digits have, too
  std::array<std::array<char, 4>, 256> cells{};
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const auto [high, low] = hexPairs[i];
    cells[i] = {static_cast<char>(high | lowerCase), static_cast<char>(low | lowerCase), ' ', ' '};
  }
  return cells;
}();

char* putCells(char* place, std::string_view bytes) {
  for (const char byte : bytes) {
    const std::array<char, 4>& cell = hexCells[static_cast<unsigned char>(byte)];
    std::memcpy(place, cell.data(), cell.size());
    place += cell.size() - 1;
  }
  return place;
}

char* putHexColumn(char* place, std::string_view line) {
  if (line.size() == lineSize) {
    place = putCells(place, {line.data(), middle});
    return putCells(place + 1, {line.data() + middle, middle});  // behind both blanks
  }
  place = putCells(place, line.substr(0, middle));
  if (line.size() >= middle) place = putCells(place + 1, line.substr(middle));
  // A byte takes three characters, but a missing one four: a short line is the wider one.
  const std::size_t missing = 4 * (lineSize - line.size()) + (line.size() < middle ? 1 : 0);
  std::memset(place, ' ', missing);
  return place + missing;
}

/// What stands for a byte in the column of characters, but for "<" and ">".
constexpr char shown(char byte) {
  return byte < ' ' || byte > '~' || byte == ';' || byte == '=' ? '.' : byte;
}

/// Eight bytes at once. Which of them is the lowest does not matter.
class EightBytes {
 public:
  explicit EightBytes(const char* bytes) { std::memcpy(&bytes_, bytes, sizeof bytes_); }

  bool hasBrackets() const { return (unlike('<') & unlike('>')) != highBits; }

  void putShown(char* place) const {
    // The highest bit of each byte is what tells. Nothing is carried from one byte to the next.
    const std::uint64_t isBlankOrAbove = low() + each * (0x80 - ' ');
    const std::uint64_t isDelete = low() + each;
    const std::uint64_t shown =
        isBlankOrAbove & ~isDelete & ~bytes_ & unlike(';') & unlike('=') & highBits;
    const std::uint64_t all = (shown >> 7) * 0xFF;
    const std::uint64_t characters = (bytes_ & all) | (each * '.' & ~all);
    std::memcpy(place, &characters, sizeof characters);
  }

 private:
  static constexpr std::uint64_t each = 0x0101010101010101;
  static constexpr std::uint64_t highBits = each * 0x80;

  std::uint64_t low() const { return bytes_ & ~highBits; }
  /// The high bit of each byte that is not this character.
  std::uint64_t unlike(unsigned char character) const {
    return (((low() ^ each * character) + each * 0x7F) | bytes_) & highBits;
  }

  std::uint64_t bytes_ = 0;
};

char* putCharacters(char* place, std::string_view bytes) {
  if (bytes.size() == middle) {
    const EightBytes eight(bytes.data());
    if (!eight.hasBrackets()) {
      eight.putShown(place);
      return place + middle;
    }
  }
  for (const char byte : bytes) {
    if (byte == '<') {
      place = putLiteral(place, "&lt;");
    } else if (byte == '>') {
      place = putLiteral(place, "&gt;");
    } else {
      *place++ = shown(byte);
    }
  }
  return place;
}

char* putCharacterColumn(char* place, std::string_view line) {
  place = putCharacters(place, line.substr(0, middle));
  if (line.size() < middle) return place;
  *place++ = '|';
  return putCharacters(place, line.substr(middle));
}

/// The tags of a line: the key is "_" and the digits of its offset. They are written apart from the
/// "_": a processor waits for what is read in one piece after it was written in two.
struct LineTags {
  std::string_view digits;

  std::size_t keySize() const { return 1 + digits.size(); }
  std::size_t size() const { return tagSize(keySize()); }
  char* putOpening(char* place) const {
    place = putText(putLiteral(place, "<_"), digits);
    return putLiteral(place, ">");
  }
  char* putClosing(char* place, Separator) const {
    place = putText(putLiteral(place, "</_"), digits);
    return putLiteral(place, ">");
  }
};

}  // namespace

void writeDump(BodyWriter& entries, std::string_view bytes) {
  constexpr std::size_t widestLine = lineSize * (4 + 4) + 3;
  char digits[2 * longestNumber];
  ElementRun elements(entries);
  for (std::size_t start = 0; start < bytes.size(); start += lineSize) {
    const std::string_view line = bytes.substr(start, lineSize);
    const LineTags tags{
        {digits, putHexDigits(digits, start, 4, Letters::small)}
    };
    char* const value = elements.open(tags, widestLine);
    char* const end = putCharacterColumn(putHexColumn(value, line), line);
    if (line.back() == '\\') repairLoneBackslash(value, end);
    elements.close(tags, end);
  }
}

}  // namespace mpuevent::awr
