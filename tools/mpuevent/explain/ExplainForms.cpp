#include "explain/ExplainForms.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "forms/FactKey.h"
#include "forms/JsonWriter.h"
#include "forms/Numbers.h"
#include "forms/Utf8.h"

namespace mpuevent::tool {

namespace {

using Bytes = std::span<const unsigned char>;

constexpr std::size_t kPerLine = 8;
constexpr std::array<std::string_view, 3> kPartNames = {"message", "header", "payload"};
constexpr std::array<std::string_view, 3> kHeadings = {"Message header", "Record header",
                                                       "Payload"};

Bytes bytesOf(const log::LogUnit& unit, const ByteRun& run) {
  if (run.part == Part::message) {
    return {unit.header + log::messageHeaderSize + run.offset, run.length};
  }
  return unit.record.subspan(static_cast<std::size_t>(run.offset), run.length);
}

/// The dump, a line after another.
class Dump {
 public:
  explicit Dump(TextBuffer& to) : to_(to) {}

  void heading(Part part, std::size_t length) {
    to_ += kHeadings[static_cast<std::size_t>(part)];
    to_ += ", ";
    appendDecimal(to_, length);
    to_ += " bytes:\n";
  }

  void run(const ByteRun& run, Bytes bytes) {
    bool repeating = false;
    for (std::size_t at = 0; at < bytes.size(); at += kPerLine) {
      const Bytes line = bytes.subspan(at, std::min(kPerLine, bytes.size() - at));
      const bool repeats = at != 0 && line.size() == kPerLine && at + kPerLine < bytes.size() &&
                           std::equal(line.begin(), line.end(),
                                      bytes.begin() + static_cast<std::ptrdiff_t>(at - kPerLine));
      if (!repeats) {
        this->line(run.offset + static_cast<std::ptrdiff_t>(at), line, run);
      } else if (!repeating) {
        to_ += "  *\n";
      }
      repeating = repeats;
    }
  }

 private:
  // "  0098  00 02 00 06              |....|      Socket"
  void line(std::ptrdiff_t offset, Bytes bytes, const ByteRun& run) {
    to_ += offset < 0 ? " -" : "  ";
    const auto distance = static_cast<std::size_t>(std::abs(offset));
    const std::array<unsigned char, 3> digits = {static_cast<unsigned char>(distance >> 16),
                                                 static_cast<unsigned char>(distance >> 8),
                                                 static_cast<unsigned char>(distance)};
    appendHexBytes(to_, Bytes(digits).subspan(digits[0] == 0 ? 1 : 0));
    to_ += ' ';
    for (std::size_t i = 0; i < kPerLine; ++i) {
      to_ += ' ';
      if (i < bytes.size()) {
        appendHexBytes(to_, bytes.subspan(i, 1));
      } else {
        to_.fill(2, ' ');
      }
    }
    to_ += "  |";
    for (const unsigned char byte : bytes) {
      to_ += byte >= 0x20 && byte < 0x7F ? static_cast<char>(byte) : '.';
    }
    to_ += '|';
    to_.fill(kPerLine - bytes.size() + 2, ' ');
    appendVisible(to_, run.field);
    if (run.sampled) to_ += " (sampled)";
    to_ += '\n';
  }

  TextBuffer& to_;
};

}  // namespace

void appendExplainedDump(TextBuffer& to, const log::LogUnit& unit, std::span<const ByteRun> runs) {
  Dump dump(to);
  const ByteRun* last = nullptr;
  bool sampled = false;
  for (const ByteRun& run : runs) {
    if (last == nullptr || run.part != last->part) {
      std::size_t length = 0;
      for (const ByteRun& other : runs) length += other.part == run.part ? other.length : 0;
      dump.heading(run.part, length);
    }
    dump.run(run, bytesOf(unit, run));
    last = &run;
    sampled = sampled || run.sampled;
  }
  if (sampled) {
    to += "\nThe record is long: not every byte was changed, or not in every way (sampled).\n";
  }
}

void appendExplainedJson(TextBuffer& to, const log::LogUnit& unit, std::span<const ByteRun> runs) {
  bool first = true;
  for (const ByteRun& run : runs) {
    to += first ? "[\n" : ",\n";
    first = false;
    JsonWriter json(to);
    json.beginObject();
    json.key("offset"_key);
    json.signedNumber(run.offset);
    json.key("length"_key);
    json.number(run.length);
    json.key("bytes"_key);
    json.hex(bytesOf(unit, run));
    json.key("part"_key);
    json.text(kPartNames[static_cast<std::size_t>(run.part)]);
    json.key("field"_key);
    json.text(std::string_view(run.field));
    if (run.sampled) {
      json.key("sampled"_key);
      json.boolean(true);
    }
    json.endObject();
  }
  to += "\n]\n";
}

}  // namespace mpuevent::tool
