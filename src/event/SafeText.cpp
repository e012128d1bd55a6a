#include "event/SafeText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "event/TagFinder.h"
#include "event/Text.h"

namespace mpuevent {

namespace {

/// Whether a character stays as it is.
constexpr std::array<bool, 256> isKept = [] {
  std::array<bool, 256> table{};
  const std::string_view kept =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789 \t\n.:,()-\"/_#'";
  for (const char character : kept) table[static_cast<unsigned char>(character)] = true;
  return table;
}();

/// How many characters of the text stay as they are before the first that does not.
std::size_t keptLength(std::string_view text) {
  std::size_t length = 0;
  while (length < text.size() && isKept[static_cast<unsigned char>(text[length])]) ++length;
  return length;
}

void writeSafe(BodyWriter& out, std::string_view text, const Tags& tags) {
  std::size_t done = 0;
  for (const Range tag : tags) {
    writeEscaped(out, text.substr(done, tag.begin - done));
    out.text(text.substr(tag.begin, tag.end - tag.begin));
    done = tag.end;
  }
  writeEscaped(out, text.substr(done));
}

/// Where `writeSafe` has each character, or the escape before it, and the end.
std::vector<Pegasus::Uint32> safePositions(std::string_view text, const Tags& tags) {
  std::vector<Pegasus::Uint32> positions;
  positions.reserve(text.size() + 1);
  Pegasus::Uint32 position = 0;
  auto tag = tags.begin();
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (tag != tags.end() && at == tag->end) ++tag;
    positions.push_back(position);
    const bool inTag = tag != tags.end() && at >= tag->begin;
    position += inTag || isKept[static_cast<unsigned char>(text[at])] ? 1U : 2U;
  }
  positions.push_back(position);
  return positions;
}

}  // namespace

void writeEscaped(BodyWriter& out, std::string_view text) {
  out.note(text);
  char* place = out.reserve(2 * text.size());
  for (;;) {
    const std::size_t kept = keptLength(text);
    place = std::copy_n(text.data(), kept, place);
    text.remove_prefix(kept);
    if (text.empty()) break;
    const bool equals = text.front() == '=';
    *place++ = equals ? ':' : '\\';
    *place++ = equals ? ' ' : text.front();
    text.remove_prefix(1);
  }
  out.endAt(place);
}

void writeSafe(BodyWriter& out, std::string_view text) {
  if (!mayHaveTags(text)) return writeEscaped(out, text);
  Tags tags;
  findTags(text, tags);
  writeSafe(out, text, tags);
}

std::string safeBytes(std::string_view text) {
  BodyBuffer safe(Separator::none);
  writeSafe(safe, text);
  return std::string(safe.view());
}

Pegasus::String safeString(std::string_view text) {
  if (keptLength(text) == text.size()) return toString(text);
  BodyBuffer safe(Separator::none);
  writeSafe(safe, text);
  return safe.string();
}

Pegasus::String safeString(BodyWriter& raw) {
  Tags tags;
  findTags(raw.view(), tags);
  BodyBuffer safe(Separator::none);
  writeSafe(safe, raw.view(), tags);
  if (raw.hasMarks()) safe.takeMarks(raw, safePositions(raw.view(), tags));
  return safe.string();
}

}  // namespace mpuevent
