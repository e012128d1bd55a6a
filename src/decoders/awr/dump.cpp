#include "decoders/awr/dump.h"

#include <cstddef>

#include "event/Entry.h"

namespace mpuevent::awr {

namespace {

constexpr std::size_t lineSize = 16;
constexpr std::size_t middle = 8;

void writeHexColumn(BodyWriter& entries, std::string_view line) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    entries.hexDigits(static_cast<unsigned char>(line[i]), 2, false);
    entries.character(' ');
    if (i + 1 == middle) entries.character(' ');
  }
  // A byte takes three characters, but a missing one four: a short line is the wider one.
  for (std::size_t missing = line.size(); missing < lineSize; ++missing) entries.text("    ");
  if (line.size() < middle) entries.character(' ');
}

void writeCharacterColumn(BodyWriter& entries, std::string_view line) {
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char byte = line[i];
    const bool printable = byte >= ' ' && byte <= '~';
    if (byte == '<') {
      entries.text("&lt;");
    } else if (byte == '>') {
      entries.text("&gt;");
    } else if (!printable || byte == ';' || byte == '=') {
      entries.character('.');
    } else {
      entries.character(byte);
    }
    if (i + 1 == middle) entries.character('|');
  }
}

}  // namespace

void writeDump(BodyWriter& entries, std::string_view bytes) {
  LineBuffer key(Separator::none);
  for (std::size_t start = 0; start < bytes.size(); start += lineSize) {
    const std::string_view line = bytes.substr(start, lineSize);
    key.cut(0);
    key.character('_');
    key.hexDigits(start, 4, false);
    entries.openElement(key.view());
    const std::size_t valueStart = entries.size();
    writeHexColumn(entries, line);
    writeCharacterColumn(entries, line);
    repairEnd(entries, valueStart);
    entries.closeElement(key.view());
  }
}

}  // namespace mpuevent::awr
