#ifndef MPUEVENT_TOOL_JSONELEMENTS_H
#define MPUEVENT_TOOL_JSONELEMENTS_H

#include "BodyFields.h"
#include "JsonWriter.h"

namespace mpuevent::tool {

/// Writes the elements of a Body where there is elementsRoom() for them; returns the end.
inline char* putElements(char* to, const BodyFields& fields) {
  const auto endArray = [](char* end) {
    if (end[-1] == ',') --end;
    *end = ']';
    return end + 1;
  };
  *to++ = '[';
  fields.forEach([&](const BodyField& field) {
    // Each element has a comma behind it, of which the end of the array takes the place.
    switch (field.kind) {
      case BodyField::value:
        to = copyJsonText(putMarks(to, "{\"key\":\""), field.key);
        to = copyJsonText(putMarks(to, "\",\"value\":\""), field.text);
        to = putMarks(to, "\"},");
        break;
      case BodyField::groupBegin:
        to = copyJsonText(putMarks(to, "{\"key\":\""), field.key);
        to = putMarks(to, "\",\"fields\":[");
        break;
      case BodyField::groupEnd:
        to = putMarks(endArray(to), "},");
        break;
    }
  });
  return endArray(to);
}

inline std::size_t elementsRoom(const BodyFields& fields) {
  constexpr std::size_t marks = 24;  // around the texts of an element
  return jsonRoom(fields.textSize()) + marks * (fields.size() + 1);
}

/// The elements of a Body as an array of `{"key":...,"value":...}` and
/// `{"key":...,"fields":[...]}`.
inline void writeElements(JsonWriter& writer, const BodyFields& fields) {
  writer.value(elementsRoom(fields), [&](char* to) { return putElements(to, fields); });
}

inline void appendElements(TextBuffer& to, const BodyFields& fields) {
  JsonWriter writer(to);
  writeElements(writer, fields);
}

}  // namespace mpuevent::tool

#endif
