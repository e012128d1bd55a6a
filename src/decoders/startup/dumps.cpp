#include <MPUEvent/ArcRegisters.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <span>
#include <string_view>

#include "decoders/startup/bodies.h"
#include "event/BodyWriter.h"
#include "event/Fields.h"
#include "event/Lists.h"
#include "event/NumberedKey.h"
#include "event/Tags.h"
#include "event/Trace.h"

namespace mpuevent::startup {

using Pegasus::ArcRegister;
using Pegasus::ArcRegisterField;
using Pegasus::String;

namespace {

constexpr const char* traceFile = "STARTUPMP_Event";
constexpr std::size_t wordSize = 4;

/// A name that is filled up with NULs: all of it is looked at, as the place of the first could not
/// be foreseen.
template <std::size_t size>
std::string_view nameOf(const char (&name)[size]) {
  std::uint8_t length = 0;
  for (const char character : name) length = static_cast<std::uint8_t>(length + (character != 0));
  return {name, length};
}

bool isHidden(const ArcRegister& row) {
  return std::memcmp(row.name, "rsvd", 4) == 0 || std::memcmp(row.name, "REG", 3) == 0;
}

/// "Z is 01, N is 00, PC is 2A3C4". How many digits a field has at least goes by its width.
char* putFieldTexts(char* place, const ArcRegisterField* field, std::uint32_t value) {
  for (bool first = true; field->lowestBit >= 0; ++field, first = false) {
    if (!first) place = putLiteral(place, ", ");
    std::memcpy(place, field->name, sizeof field->name);
    place = putLiteral(place + nameOf(field->name).size(), " is ");
    const unsigned digits = field->widthInBits == 16 ? 4 : field->widthInBits == 32 ? 8 : 2;
    const std::uint32_t bits = (value & field->mask) >> field->lowestBit;
    place = digits == 2 && bits <= 0xFF ? writeHexByte(place, static_cast<unsigned char>(bits))
                                        : putHexDigits(place, bits, digits, Letters::capital);
  }
  return place;
}

/// Writes the word of a register, and its fields.
char* putRegister(char* place, std::uint32_t value, const ArcRegisterField* fields) {
  place = putLiteral(putEightHexDigits(place, value, Letters::capital), " ");
  return fields == nullptr ? place : putFieldTexts(place, fields, value);
}

constexpr std::size_t mostFields = 32;  // of a bit each
constexpr std::size_t longestRegister =
    mostFields * (sizeof(ArcRegisterField::name) + longestNumber);

/// Writes the instances of a register, each from the word at its own offset. Returns false if the
/// report ends here: the words are used up, or there is no room for one more.
bool writeInstances(ElementRun& elements, RecordView words, const ArcRegister& row) {
  const std::string_view name = nameOf(row.name);
  NumberedKey numbered(row.instanceCount > 1 ? name : std::string_view{});
  const std::size_t longest = row.fields == nullptr ? longestNumber : longestRegister;
  const std::size_t size = wordSize * ((row.widthInBits + 31) / 32);
  for (std::uint32_t i = 0; i < row.instanceCount; ++i) {
    const std::size_t at = static_cast<std::size_t>(row.offset) + size * i;
    if (!words.holds(at, wordSize)) return false;
    // Every register of today's table is one word wide, so this cannot happen yet.
    if (!words.holds(at, size)) {
      trace({traceFile, 785}, {"out of boundary data\n"});
      return false;
    }
    // Today's table never reaches the limit either.
    const std::size_t before = elements.bodySize();
    const KeyTags tags{row.instanceCount > 1 ? numbered(i) : name};
    char* const value = elements.open(tags, longest);
    elements.close(tags, putRegister(value, words.u32(at), row.fields));
    if (elements.bodySize() > bodyLimit) {
      elements.cut(before);
      trace({traceFile, 812}, {"There is not enough space to process the data(invalid state)\n"});
      return false;
    }
  }
  return true;
}

void writeRegisters(BodyWriter& body, RecordView words) {
  ElementRun elements(body);
  for (const ArcRegister* row = Pegasus::rtTavo4ArcRegsNames; row->offset >= 0; ++row) {
    if (!isHidden(*row) && !writeInstances(elements, words, *row)) break;
  }
}

constexpr Field stackFields[] = {
    {"arc_index", 0, Width::u32, Format::bareHexLower},
    {"SP",        4, Width::u32, Format::bareHexLower},
};
constexpr std::size_t stackWords = 8;
static_assert(endWithin(stackWords, stackFields));

void writeStack(BodyWriter& body, RecordView payload, std::uint32_t count) {
  // A word has four bytes, but the addresses begin only twice the number of words below the stack
  // pointer: the output wants it so.
  const std::uint32_t base = payload.u32(4) - 2 * count;
  NumberedKey addressKey("S");
  ElementRun elements(body);
  forEachEntry(payload, {stackWords, wordSize, count}, [&](RecordView word, std::uint32_t index) {
    if (!word.holds(0, wordSize)) return false;
    const KeyTags tags{addressKey(base + 4 * index, Format::bareHexLower)};
    if (elements.bodySize() + 16 + 2 * tags.keySize() + 16 > bodyLimit) {
      trace({traceFile, 903}, {"There is not enough space to dump the stack data\n"});
      return false;
    }
    char* const value = elements.open(tags, longestNumber);
    elements.close(tags, putNumber(value, Format::bareHexLower, word.u32(0)));
    return true;
  });
}

}  // namespace

String registersBody(const Record& record) {
  const RecordView words = record.payload().from(0, record.structLength());
  BodyBuffer body;
  writeRegisters(body, words);
  return body.string();
}

String stackBody(const Record& record) {
  const RecordView payload = record.payload();
  BodyBuffer body;
  writeFields(body, payload, packed<stackFields>);

  // Wraps for a payload of less than two words: then the end of the bytes held ends the list.
  writeStack(body, payload, record.structLength() / 4U - 2U);
  return body.string();
}

}  // namespace mpuevent::startup
