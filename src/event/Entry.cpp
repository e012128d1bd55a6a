#include "event/Entry.h"

#include "event/Text.h"
#include "event/Utf8.h"

namespace mpuevent {

namespace {

void writeLatin1(BodyWriter& entries, std::string_view bytes) {
  entries.note(bytes);
  char* end = entries.reserve(2 * bytes.size());
  for (const char byte : bytes) end = writeUtf8(end, static_cast<unsigned char>(byte));
  entries.endAt(end);
}

}  // namespace

void writeEntry(BodyWriter& entries, std::string_view key, std::string_view value) {
  const bool utf8 = isUtf8(value);
  if (utf8 && !value.ends_with('\\')) return entries.element(key, value);
  entries.openElement(key);
  const std::size_t valueStart = entries.size();
  if (utf8) {
    entries.text(value);
  } else {
    writeLatin1(entries, value);
  }
  char* const end = entries.claim(0);
  repairLoneBackslash(end - (entries.size() - valueStart), end);
  entries.closeElement(key);
}

void appendEntries(Pegasus::QuarnEvent& event, BodyWriter& entries) {
  entries.tellElements();
  entries.character('\0');
  event.appendBody(const_cast<char*>(entries.view().data()));  // which only reads it
}

}  // namespace mpuevent
