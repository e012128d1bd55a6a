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

template <std::size_t size>
std::string_view nameOf(const char (&name)[size]) {
  return {name, strnlen(name, size)};
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
    place =
        putHexDigits(place, (value & field->mask) >> field->lowestBit, digits, Letters::capital);
  }
  return place;
}

void writeRegister(BodyWriter& body, std::string_view key, std::uint32_t value,
                   const ArcRegisterField* fields) {
  constexpr std::size_t mostFields = 32;  // of a bit each
  constexpr std::size_t longestField = sizeof fields->name + longestNumber;
  writeElement(body, key, mostFields * longestField, [&](char* place) {
    place = putLiteral(putHexWord(place, value, 8, Letters::capital), " ");
    return fields == nullptr ? place : putFieldTexts(place, fields, value);
  });
}

/// Writes the instances of a register, each from the word at its own offset. Returns false if the
/// report ends here: the words are used up, or there is no room for one more.
bool writeInstances(BodyWriter& body, RecordView words, const ArcRegister& row) {
  const std::string_view name = nameOf(row.name);
  NumberedKey numbered(name);
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
    const std::size_t before = body.size();
    writeRegister(body, row.instanceCount > 1 ? numbered(i) : name, words.u32(at), row.fields);
    if (body.size() > bodyLimit) {
      body.cut(before);
      trace({traceFile, 812}, {"There is not enough space to process the data(invalid state)\n"});
      return false;
    }
  }
  return true;
}

constexpr Field stackFields[] = {
    {"arc_index", 0, Width::u32, Format::bareHexLower},
    {"SP",        4, Width::u32, Format::bareHexLower},
};
constexpr std::size_t stackWords = 8;
static_assert(endWithin(stackWords, stackFields));

}  // namespace

String registersBody(const Record& record) {
  const RecordView words = record.payload().from(0, record.structLength());
  BodyBuffer body;
  for (const ArcRegister* row = Pegasus::rtTavo4ArcRegsNames; row->offset >= 0; ++row) {
    if (!isHidden(*row) && !writeInstances(body, words, *row)) break;
  }
  return body.string();
}

String stackBody(const Record& record) {
  const RecordView payload = record.payload();
  BodyBuffer body;
  writeFields(body, payload, packed<stackFields>);

  // Wraps for a payload of less than two words: then the end of the bytes held ends the list.
  const std::uint32_t count = record.structLength() / 4U - 2U;
  // A word has four bytes, but the addresses begin only twice the number of words below the stack
  // pointer: the output wants it so.
  const std::uint32_t base = payload.u32(4) - 2 * count;
  NumberedKey addressKey("S");
  forEachEntry(payload, {stackWords, wordSize, count}, [&](RecordView word, std::uint32_t index) {
    if (!word.holds(0, wordSize)) return false;
    const std::string_view key = addressKey(base + 4 * index, 16);
    if (body.size() + 16 + 2 * key.size() + 16 > bodyLimit) {
      trace({traceFile, 903}, {"There is not enough space to dump the stack data\n"});
      return false;
    }
    body.element(key, Format::bareHexLower, word.u32(0));
    return true;
  });
  return body.string();
}

}  // namespace mpuevent::startup
